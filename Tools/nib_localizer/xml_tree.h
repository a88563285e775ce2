// Short names for what the tool does with libxml2 trees.
#pragma once

#include <libxml/tree.h>

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace vireonix::nibs {

std::string_view nameOf(const xmlNode* element);

/// The attribute's value, or nothing when the element has no such attribute.
std::optional<std::string> attribute(const xmlNode* element, const char* name);
void setAttribute(xmlNode* element, const char* name, const std::string& value);
void removeAttribute(xmlNode* element, const char* name);

std::string textOf(const xmlNode* element);
void setText(xmlNode* element, const std::string& text);

/// Visits the element and all elements below it in document order.
void forEachElement(xmlNode* element, const std::function<void(xmlNode*)>& visit);

/// The first child element of that name and with that `key` attribute, or null.
xmlNode* childWithKey(xmlNode* element, std::string_view name, std::string_view key);

} // namespace vireonix::nibs
