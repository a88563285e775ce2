#include "xml.h"
#include "xml_tree_builder.h"

#include <algorithm>

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
  const auto* const found = std::ranges::find_if(node.children, condition);
  return found != node.children.end() ? found : nullptr;
}

void start(TreeBuilder& builder, const Node& node) {
  builder.startElement(node.content);
  for (const Attribute& attribute : node.attributes)
    builder.attribute(attribute.name, attribute.value);
}

void copy(TreeBuilder& builder, const Node& node) {
  if (!node.isElement())
    return builder.add(node.kind, node.content);
  start(builder, node);
  for (const Node& child : node.children)
    copy(builder, child);
  builder.endElement();
}

} // namespace

bool Node::operator==(const Node& other) const {
  return kind == other.kind && content == other.content &&
         std::ranges::equal(attributes, other.attributes) &&
         std::ranges::equal(children, other.children);
}

const std::string_view* Node::attribute(std::string_view name) const {
  const auto* const found = std::ranges::find(attributes, name, &Attribute::name);
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
    return std::string(content);
  std::string out;
  appendCharacters(*this, out);
  return out;
}

Tree copyOf(const Node& node) {
  TreeBuilder builder;
  copy(builder, node);
  return builder.take();
}

Tree copyWithoutChildren(const Node& node) {
  TreeBuilder builder;
  if (node.isElement()) {
    start(builder, node);
    builder.endElement();
  } else {
    builder.add(node.kind, node.content);
  }
  return builder.take();
}

} // namespace vireonix::core::xml
