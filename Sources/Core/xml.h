// XML as values: a tree of nodes, strict and lenient parsing, and writing.
//
// A tree is immutable and lives in one piece of memory that it shares with nobody: nodes, names and
// characters of a document that is read lie side by side, and go in one step.
//
// Attribute order, white space, CDATA sections, comments and processing instructions are kept.
// What is parsed may be hostile: nothing outside the given bytes is read, a declared entity is
// never expanded, and depth and number of nodes are bounded. Rules: Extensible Markup Language
// (XML) 1.0, fifth edition. Any thread.
#pragma once

#include "core_border.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace vireonix::core::xml {

/// Elements nested deeper make a document unreadable, so that a tree can be walked by plain
/// recursion.
inline constexpr std::size_t kMaxDepth = 256;

/// More nodes and attributes together make a document unreadable; bounds the memory of a parse.
inline constexpr std::size_t kMaxNodes = 10'000'000;

/// About as many different names of elements and attributes make a document unreadable, because the
/// time that an element takes grows with the square of the number of its attributes.
inline constexpr int kMaxNames = 500;

/// Items of a tree that stand side by side, as a view.
template <class Item> class List {
public:
  List() = default;
  List(const Item* first, std::size_t size) : first_(first), size_(size) {}

  [[nodiscard]] const Item* begin() const { return first_; }
  [[nodiscard]] const Item* end() const { return first_ + size_; }
  [[nodiscard]] std::size_t size() const { return size_; }
  [[nodiscard]] bool empty() const { return size_ == 0; }
  [[nodiscard]] const Item& front() const { return *first_; }
  const Item& operator[](std::size_t index) const { return first_[index]; }

private:
  const Item* first_ = nullptr;
  std::size_t size_ = 0;
};

/// An attribute; `name` is the qualified name. Namespace declarations are attributes like others.
struct Attribute {
  std::string_view name;
  std::string_view value;

  bool operator==(const Attribute&) const = default;
};

enum class NodeKind : unsigned char { Element, Text, CData, Comment, ProcessingInstruction };

/// A node with everything below it, valid as long as its tree. All text is UTF-8. Equality is that
/// of everything in it.
struct Node {
  NodeKind kind = NodeKind::Element;
  /// An element's qualified name; the characters of any other node, for a processing instruction
  /// "target data".
  std::string_view content;
  List<Attribute> attributes;
  List<Node> children;

  bool operator==(const Node& other) const;

  [[nodiscard]] bool isElement() const { return kind == NodeKind::Element; }
  [[nodiscard]] bool isElement(std::string_view name) const {
    return isElement() && content == name;
  }

  /// The value of the first attribute of that name, or null.
  [[nodiscard]] const std::string_view* attribute(std::string_view name) const;
  /// The first child that is an element, or null.
  [[nodiscard]] const Node* firstElement() const;
  /// The first child element of that name, or null.
  [[nodiscard]] const Node* firstElement(std::string_view name) const;
  /// The characters of this node; for an element, of all text and CDATA sections below it.
  [[nodiscard]] std::string stringValue() const;
};

/// A tree, by its root element; null for none. A pointer to any node of a tree that shares its
/// ownership keeps the whole tree.
using Tree = std::shared_ptr<const Node>;

/// A tree of its own with the node and everything below it, or only with the node and its
/// attributes.
Tree copyOf(const Node& node);
Tree copyWithoutChildren(const Node& node);

enum class Mode : unsigned char { Strict, Lenient };

/// The root element of a document in any encoding that it declares or marks. Strict answers only
/// for a well-formed document; lenient repairs markup where it can and drops what it cannot read.
/// Null when there is no root element or a bound is exceeded.
Tree parse(std::string_view document, Mode mode);

/// The root element of a file: parsed strictly, else leniently, else null. `path` is bytes for the
/// operating system.
Tree parseFile(const std::string& path);

/// The markup of a node with everything below it, as UTF-8, with no white space added.
///
/// Characters that XML cannot carry are dropped, invalid bytes become U+FFFD, "]]>" in a CDATA
/// section is divided between two sections, and a carriage return where it cannot be escaped
/// becomes a line feed.
std::string write(const Node& node);

/// Builds markup without a tree, under the same rules as `write`. Calls nest as the markup does.
class Writer {
public:
  Writer() = default;
  /// Writes into the memory of `buffer`, whose content is dropped.
  explicit Writer(std::string buffer);

  /// Starts with the XML declaration for UTF-8.
  void declaration();
  void startElement(std::string_view name);
  /// Only directly after startElement or another attribute.
  void attribute(std::string_view name, std::string_view value);
  void endElement(std::string_view name);
  void text(std::string_view characters);
  void cdata(std::string_view characters);
  void node(const Node& node);
  /// Markup of whole nodes that a writer has made.
  void markup(std::string_view made);

  /// Makes room for that many bytes.
  void reserve(std::size_t bytes) { out_.reserve(bytes); }
  /// The markup; leaves the writer empty.
  [[nodiscard]] std::string take();

private:
  void closeStartTag();

  std::string out_;
  bool startTagOpen_ = false;
};

} // namespace vireonix::core::xml
