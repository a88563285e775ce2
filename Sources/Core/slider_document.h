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
#include <cstdint>
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
/// looking one up walks them. All characters stand in one string: a document has a hundred thousand
/// keys and values before it has ten thousand captions.
class TextObject {
public:
  using Entry = std::pair<std::string_view, std::string_view>;

  TextObject() = default;
  TextObject(std::initializer_list<Entry> entries);

  /// The key and the value must not be part of this text object.
  void set(std::string_view key, std::string_view value);
  /// Makes room for that many keys, and characters of keys and values together.
  void reserve(std::size_t keys, std::size_t characters);

  // What these answer is valid until the text object is changed.
  /// The value, or nothing.
  [[nodiscard]] std::optional<std::string_view> find(std::string_view key) const;
  /// The key and value at an index below `size`.
  [[nodiscard]] Entry at(std::size_t index) const;
  [[nodiscard]] std::size_t size() const { return places_.size(); }

  bool operator==(const TextObject&) const = default;

private:
  // A key and, behind it, its value.
  struct Place {
    std::uint32_t start;
    std::uint32_t keySize;
    std::uint32_t valueSize;

    bool operator==(const Place&) const = default;
  };

  void replaceValue(std::size_t index, std::string_view value);

  std::string characters_;
  std::vector<Place> places_;
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

/// Writes a document slide by slide, as UTF-8. What the shape points to must outlive the writer.
/// A text object is written with exactly the attributes of the template's first text object; where
/// there is no template, with its own.
class DocumentWriter {
public:
  /// Writes into the memory of `buffer`, whose content is dropped: that of the last document, which
  /// is about as long.
  explicit DocumentWriter(const DocumentShape& shape, std::string buffer = {});

  void startSlide(std::optional<std::string_view> backgroundImage);
  void textObject(const TextObject& record);
  /// A text object as `textObjectMarkup` has made it for the same template slide.
  void textObjectMarkup(std::string_view markup) { out_.markup(markup); }
  void endSlide();
  /// Ends the document; the writer is used up.
  [[nodiscard]] std::string finish();

private:
  xml::Writer out_;
  const xml::Node* slide_;
};

/// The markup of one text object in the shape of a template slide, which may be null.
std::string textObjectMarkup(const TextObject& record, const xml::Node* templateSlide);

/// The whole document of a list of slides.
std::string writeDocument(const std::vector<Slide>& slides, const DocumentShape& shape);

} // namespace vireonix::core::slider
