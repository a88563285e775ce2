// The slider document `intro_asset/data.xml`: the slides with their text objects (captions), as
// values and as XML.
//
//   main                        whatever attributes the file has
//     define_animation_Style    one child with a "Name" for each animation style
//     data
//       slide                   Background_image: the picture or movie
//         text                  the text object's attributes
//           text                the caption markup in a CDATA section
//
// Slides and text objects are written in the shape of a template slide. Any thread.
#pragma once

#include "core_border.h"
#include "xml.h"

#include <cstddef>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vireonix::core::slider {

// The keys of a text object, which are attribute names of the document but for the first three:
// those travel in the caption markup.
inline constexpr std::string_view kText = "text";
inline constexpr std::string_view kSize = "size";
inline constexpr std::string_view kColor = "color";
inline constexpr std::string_view kStyle = "set_animation_style";
inline constexpr std::string_view kAlign = "Align";
inline constexpr std::string_view kInTime = "In_Time";
inline constexpr std::string_view kStayTime = "Stay_Time";
inline constexpr std::string_view kTextAlign = "Text_Align";
inline constexpr std::string_view kTextAnimation = "Text_Animation_LetterByLetter";
inline constexpr std::string_view kStartDirection = "Animation_Start_Direction";
/// Also the key of a slide's own file.
inline constexpr std::string_view kBackgroundImage = "Background_image";

/// A text object: values by key, in the order in which the keys were first set. Keys are few, so
/// looking one up walks them.
class TextObject {
public:
  using Entry = std::pair<std::string, std::string>;

  TextObject() = default;
  TextObject(std::initializer_list<Entry> entries) : entries_(entries) {}

  void set(std::string_view key, std::string value);
  /// Makes room for that many keys.
  void reserve(std::size_t keys) { entries_.reserve(keys); }
  /// The value, or null.
  [[nodiscard]] const std::string* find(std::string_view key) const;

  [[nodiscard]] auto begin() const { return entries_.begin(); }
  [[nodiscard]] auto end() const { return entries_.end(); }
  [[nodiscard]] std::size_t size() const { return entries_.size(); }

  bool operator==(const TextObject&) const = default;

private:
  std::vector<Entry> entries_;
};

struct Slide {
  /// Relative to the workspace; nothing when the document names no file.
  std::optional<std::string> backgroundImage;
  std::vector<TextObject> textObjects;

  bool operator==(const Slide&) const = default;
};

/// What a document holds. `styles` points into the root that was read.
struct Document {
  const xml::Node* styles = nullptr;
  /// Nothing when the document has no slide container.
  std::optional<std::vector<Slide>> slides;
};

/// Reads a document. Of several containers or style definitions the last counts. Every child node
/// of a slide is a text object, but only elements named "text" give it content.
Document readDocument(const xml::Node& root);

/// The style definitions of a template document, the first ones; null when it has none.
const xml::Node* templateStyles(const xml::Node& root);
/// The template slide: the first slide of the first container; null when there is none.
const xml::Node* templateSlide(const xml::Node& root);

/// The names of the animation styles, in document order.
std::vector<std::string> styleNames(const xml::Node& styles);

/// What a new text object starts from: the template slide's first text object. Empty for null.
TextObject textObjectDefaults(const xml::Node* templateSlide);

/// What a document is written with besides its slides; each may be null.
struct DocumentShape {
  /// Its attributes go to the new root.
  const xml::Node* root = nullptr;
  const xml::Node* styles = nullptr;
  const xml::Node* slide = nullptr;
};

/// The whole document as UTF-8. A text object is written with exactly the attributes of the
/// template's first text object; where there is no template, with its own.
std::string writeDocument(const std::vector<Slide>& slides, const DocumentShape& shape);

} // namespace vireonix::core::slider
