#include "nib_localizer/xib_document.h"

#include "nib_localizer/xml_tree.h"

#include <libxml/parser.h>

#include <algorithm>
#include <array>

namespace vireonix::nibs {
namespace {

constexpr std::array kVisibleAttributes = {"title",   "alternateTitle", "placeholderString",
                                           "toolTip", "headerToolTip",  "label"};

// A document that is XML but no XIB is refused; so is anything that would need the network.
xmlDoc* accepted(xmlDoc* document) {
  const xmlNode* root = document != nullptr ? xmlDocGetRootElement(document) : nullptr;
  if (root != nullptr && nameOf(root) == "document" &&
      attribute(root, "type").value_or("").starts_with("com.apple.InterfaceBuilder3."))
    return document;
  xmlFreeDoc(document);
  return nullptr;
}

bool isAsciiLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool needsTranslation(const std::string& text) {
  return std::ranges::any_of(text, isAsciiLetter);
}

// Cells that only serve as patterns are never shown with the title they have here.
bool isPattern(const xmlNode* element) {
  const auto key = attribute(element, "key");
  return key == "prototype" || key == "dataCell";
}

bool isVisibleString(const xmlNode* element) {
  if (nameOf(element) != "string")
    return false;
  if (element->parent != nullptr && nameOf(element->parent) == "objectValues")
    return true;
  const auto key = attribute(element, "key");
  return key && std::ranges::any_of(kVisibleAttributes,
                                    [&](std::string_view name) { return *key == name; });
}

using Replace = std::function<std::optional<std::string>(const std::string& text)>;

// Calls `replace` with each visible text of the element itself and stores what it answers.
void replaceTexts(xmlNode* element, const Replace& replace) {
  if (isPattern(element))
    return;
  for (const char* name : kVisibleAttributes) {
    const auto text = attribute(element, name);
    if (!text || !needsTranslation(*text))
      continue;
    if (const auto replacement = replace(*text))
      setAttribute(element, name, *replacement);
  }
  if (!isVisibleString(element))
    return;
  const std::string text = textOf(element);
  if (!needsTranslation(text))
    return;
  if (const auto replacement = replace(text))
    setText(element, *replacement);
}

} // namespace

void XibDocument::Free::operator()(_xmlDoc* document) const {
  xmlFreeDoc(document);
}

std::optional<XibDocument> XibDocument::read(const std::filesystem::path& file) {
  xmlDoc* document = accepted(xmlReadFile(
      file.c_str(), nullptr, XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING));
  if (document == nullptr)
    return std::nullopt;
  return XibDocument(document);
}

std::optional<XibDocument> XibDocument::parse(std::string_view xml) {
  xmlDoc* document =
      accepted(xmlReadMemory(xml.data(), static_cast<int>(xml.size()), nullptr, nullptr,
                             XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING));
  if (document == nullptr)
    return std::nullopt;
  return XibDocument(document);
}

void XibDocument::translate(const Translate& translation) {
  forEachElement(xmlDocGetRootElement(document_.get()),
                 [&](xmlNode* element) { replaceTexts(element, translation); });
}

std::vector<std::string> XibDocument::texts() const {
  std::vector<std::string> found;
  const Replace collect = [&](const std::string& text) {
    found.push_back(text);
    return std::nullopt;
  };
  forEachElement(xmlDocGetRootElement(document_.get()),
                 [&](xmlNode* element) { replaceTexts(element, collect); });
  return found;
}

std::string XibDocument::xml() const {
  xmlChar* bytes = nullptr;
  int size = 0;
  xmlDocDumpMemoryEnc(document_.get(), &bytes, &size, "UTF-8");
  std::string text(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(size));
  xmlFree(bytes);
  return text;
}

} // namespace vireonix::nibs
