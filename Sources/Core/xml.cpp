#include "xml.h"

#include <algorithm>
#include <utility>

namespace vireonix::core::xml {
namespace {

void appendCharacters(const Node& node, std::string& out) {
  for (const Node& child : node.children) {
    if (child.isElement())
      appendCharacters(child, out);
    else if (child.kind == NodeKind::Text || child.kind == NodeKind::CData)
      out += child.content;
  }
}

template <class Condition> const Node* firstChild(const Node& node, Condition condition) {
  const auto found = std::ranges::find_if(node.children, condition);
  return found != node.children.end() ? &*found : nullptr;
}

} // namespace

const std::string* Node::attribute(std::string_view name) const {
  const auto found = std::ranges::find(attributes, name, &Attribute::name);
  return found != attributes.end() ? &found->value : nullptr;
}

const Node* Node::firstElement() const {
  return firstChild(*this, [](const Node& child) { return child.isElement(); });
}

const Node* Node::firstElement(std::string_view name) const {
  return firstChild(*this, [name](const Node& child) { return child.isElement(name); });
}

std::string Node::stringValue() const {
  if (!isElement())
    return content;
  std::string out;
  appendCharacters(*this, out);
  return out;
}

Node element(std::string name) {
  return {.kind = NodeKind::Element, .content = std::move(name), .attributes = {}, .children = {}};
}

Node text(std::string characters) {
  return {
      .kind = NodeKind::Text, .content = std::move(characters), .attributes = {}, .children = {}};
}

Node cdata(std::string characters) {
  return {
      .kind = NodeKind::CData, .content = std::move(characters), .attributes = {}, .children = {}};
}

} // namespace vireonix::core::xml
