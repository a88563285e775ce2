#include "xml_tree_builder.h"

#include <algorithm>
#include <type_traits>

namespace vireonix::core::xml {
namespace {

constexpr std::size_t kFirstPiece = 2048;

} // namespace

TreeBuilder::TreeBuilder() : arena_(std::make_shared<Arena>(kFirstPiece)) {}

void TreeBuilder::startElement(std::string_view name) {
  keepAttributes();
  Node node;
  node.content = keptName(name);
  open_.push_back({.node = node, .firstChild = done_.size()});
  ++count_;
}

void TreeBuilder::attribute(std::string_view name, std::string_view value) {
  attributes_.push_back({.name = keptName(name), .value = kept(value)});
  ++count_;
}

void TreeBuilder::endElement() {
  keepAttributes();
  Open open = open_.back();
  open_.pop_back();
  open.node.children = kept(done_, open.firstChild);
  done_.resize(open.firstChild);
  done_.push_back(open.node);
}

void TreeBuilder::add(NodeKind kind, std::string_view content) {
  keepAttributes();
  Node node;
  node.kind = kind;
  node.content = kept(content);
  done_.push_back(node);
  ++count_;
}

Tree TreeBuilder::take() {
  if (done_.empty())
    return nullptr;
  const List<Node> root = kept(done_, 0);
  return {std::move(arena_), root.begin()};
}

void TreeBuilder::keepAttributes() {
  if (attributes_.empty())
    return;
  open_.back().node.attributes = kept(attributes_, 0);
  attributes_.clear();
}

template <class Item>
List<Item> TreeBuilder::kept(const std::vector<Item>& items, std::size_t first) {
  static_assert(std::is_trivially_destructible_v<Item>);
  const std::size_t size = items.size() - first;
  if (size == 0)
    return {};
  auto* const place = static_cast<Item*>(arena_->allocate(size * sizeof(Item), alignof(Item)));
  std::uninitialized_copy_n(items.data() + first, size, place);
  return {place, size};
}

std::string_view TreeBuilder::kept(std::string_view text) {
  if (text.empty())
    return {};
  auto* const place = static_cast<char*>(arena_->allocate(text.size(), 1));
  std::ranges::copy(text, place);
  return {place, text.size()};
}

std::string_view TreeBuilder::keptName(std::string_view name) {
  if (name.empty())
    return {};
  const auto code = [name](std::size_t i) -> std::size_t {
    return static_cast<unsigned char>(name[i]);
  };
  const std::size_t mix = name.size() * 7 + code(0) * 3 + code(name.size() - 1);
  std::string_view& known = names_.at(mix % names_.size());
  if (known != name)
    known = kept(name);
  return known;
}

} // namespace vireonix::core::xml
