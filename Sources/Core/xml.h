// XML as values: a tree of nodes, strict and lenient parsing, and writing.
//
// Attribute order, white space, CDATA sections, comments and processing instructions are kept.
// What is parsed may be hostile: nothing outside the given bytes is read, a declared entity is
// never expanded, and depth and number of nodes are bounded. Rules: Extensible Markup Language
// (XML) 1.0, fifth edition. Any thread.
#pragma once

#include "core_border.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vireonix::core::xml {

/// Elements nested deeper make a document unreadable, so that a tree can be copied and destroyed by
/// plain recursion.
inline constexpr std::size_t kMaxDepth = 256;

/// More nodes and attributes together make a document unreadable; bounds the memory of a parse.
inline constexpr std::size_t kMaxNodes = 10'000'000;

/// An attribute; `name` is the qualified name. Namespace declarations are attributes like others.
struct Attribute {
  std::string name;
  std::string value;

  bool operator==(const Attribute&) const = default;
};

enum class NodeKind : unsigned char { Element, Text, CData, Comment, ProcessingInstruction };

/// A node with everything below it. All text is UTF-8.
struct Node {
  NodeKind kind = NodeKind::Element;
  /// An element's qualified name; the characters of any other node, for a processing instruction
  /// "target data".
  std::string content;
  std::vector<Attribute> attributes;
  std::vector<Node> children;

  bool operator==(const Node&) const = default;

  [[nodiscard]] bool isElement() const { return kind == NodeKind::Element; }
  [[nodiscard]] bool isElement(std::string_view name) const {
    return isElement() && content == name;
  }

  /// The value of the first attribute of that name, or null.
  [[nodiscard]] const std::string* attribute(std::string_view name) const;
  /// The first child that is an element, or null.
  [[nodiscard]] const Node* firstElement() const;
  /// The first child element of that name, or null.
  [[nodiscard]] const Node* firstElement(std::string_view name) const;
  /// The characters of this node; for an element, of all text and CDATA sections below it.
  [[nodiscard]] std::string stringValue() const;
};

/// The node types by hand: an element, and character data.
Node element(std::string name);
Node text(std::string characters);
Node cdata(std::string characters);

enum class Mode : unsigned char { Strict, Lenient };

/// The root element of a document in any encoding that it declares or marks. Strict answers only
/// for a well-formed document; lenient repairs markup where it can and drops what it cannot read.
/// Nothing when there is no root element or a bound is exceeded.
std::optional<Node> parse(std::string_view document, Mode mode);

/// The root element of a file: parsed strictly, else leniently, else nothing. `path` is bytes for
/// the operating system.
std::optional<Node> parseFile(const std::string& path);

/// The markup of a node with everything below it, as UTF-8, with no white space added.
///
/// Characters that XML cannot carry are dropped, invalid bytes become U+FFFD, "]]>" in a CDATA
/// section is divided between two sections, and a carriage return where it cannot be escaped
/// becomes a line feed.
std::string write(const Node& node);

/// Builds markup without a tree, under the same rules as `write`. Calls nest as the markup does.
class Writer {
public:
  /// Starts with the XML declaration for UTF-8.
  void declaration();
  void startElement(std::string_view name);
  /// Only directly after startElement or another attribute.
  void attribute(std::string_view name, std::string_view value);
  void endElement(std::string_view name);
  void text(std::string_view characters);
  void cdata(std::string_view characters);
  void node(const Node& node);

  /// The markup; leaves the writer empty.
  [[nodiscard]] std::string take();

private:
  void closeStartTag();

  std::string out_;
  bool startTagOpen_ = false;
};

} // namespace vireonix::core::xml
