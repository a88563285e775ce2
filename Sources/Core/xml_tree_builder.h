// Builds a tree in document order. Internal to the XML reader. Any thread; may throw what running
// out of memory throws.
#pragma once

#include "core_border.h"
#include "xml.h"

#include <array>
#include <memory>
#include <memory_resource>
#include <string_view>
#include <vector>

namespace vireonix::core::xml {

/// Calls nest as the markup does. What is given is copied.
class TreeBuilder {
public:
  TreeBuilder();

  void startElement(std::string_view name);
  /// Only directly after startElement or another attribute.
  void attribute(std::string_view name, std::string_view value);
  /// Ends the innermost open element, of which there must be one.
  void endElement();
  /// A node that is no element.
  void add(NodeKind kind, std::string_view content);

  /// Elements that are open.
  [[nodiscard]] std::size_t depth() const { return open_.size(); }
  /// The name of the innermost open element, of which there must be one.
  [[nodiscard]] std::string_view openName() const { return open_.back().node.content; }
  /// Nodes and attributes so far.
  [[nodiscard]] std::size_t count() const { return count_; }
  /// Whether nothing is open and there is exactly one node outermost.
  [[nodiscard]] bool isWhole() const { return open_.empty() && done_.size() == 1; }

  /// The tree of the first outermost node; null when there is none. The builder is used up.
  [[nodiscard]] Tree take();

private:
  using Arena = std::pmr::monotonic_buffer_resource;

  // An element whose end is still to come; its children so far are at the end of `done_`, its
  // attributes, until something else comes, in `attributes_`.
  struct Open {
    Node node;
    std::size_t firstChild;
  };

  template <class Item> List<Item> kept(const std::vector<Item>& items, std::size_t first);
  std::string_view kept(std::string_view text);
  std::string_view keptName(std::string_view name);
  void keepAttributes();

  std::shared_ptr<Arena> arena_;
  std::vector<Open> open_;
  std::vector<Node> done_;
  std::vector<Attribute> attributes_;
  // Names recur: those met lately, by a few of their characters.
  std::array<std::string_view, 64> names_;
  std::size_t count_ = 0;
};

} // namespace vireonix::core::xml
