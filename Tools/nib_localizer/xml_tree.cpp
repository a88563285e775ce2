#include "nib_localizer/xml_tree.h"

namespace vireonix::nibs {
namespace {

const xmlChar* xmlText(const char* text) {
  return reinterpret_cast<const xmlChar*>(text);
}

std::string takeText(xmlChar* owned) {
  std::string text = owned != nullptr ? reinterpret_cast<const char*>(owned) : "";
  xmlFree(owned);
  return text;
}

} // namespace

std::string_view nameOf(const xmlNode* element) {
  return reinterpret_cast<const char*>(element->name);
}

std::optional<std::string> attribute(const xmlNode* element, const char* name) {
  if (xmlHasProp(element, xmlText(name)) == nullptr)
    return std::nullopt;
  return takeText(xmlGetProp(element, xmlText(name)));
}

void setAttribute(xmlNode* element, const char* name, const std::string& value) {
  xmlSetProp(element, xmlText(name), xmlText(value.c_str()));
}

void removeAttribute(xmlNode* element, const char* name) {
  xmlUnsetProp(element, xmlText(name));
}

std::string textOf(const xmlNode* element) {
  return takeText(xmlNodeGetContent(element));
}

void setText(xmlNode* element, const std::string& text) {
  // The content of xmlNodeSetContent is markup; a text node escapes by itself.
  xmlNodeSetContent(element, nullptr);
  xmlNodeAddContent(element, xmlText(text.c_str()));
}

void forEachElement(xmlNode* element, const std::function<void(xmlNode*)>& visit) {
  if (element == nullptr || element->type != XML_ELEMENT_NODE)
    return;
  visit(element);
  for (xmlNode* child = element->children; child != nullptr; child = child->next)
    forEachElement(child, visit);
}

xmlNode* childWithKey(xmlNode* element, std::string_view name, std::string_view key) {
  for (xmlNode* child = element->children; child != nullptr; child = child->next) {
    if (child->type == XML_ELEMENT_NODE && nameOf(child) == name && attribute(child, "key") == key)
      return child;
  }
  return nullptr;
}

} // namespace vireonix::nibs
