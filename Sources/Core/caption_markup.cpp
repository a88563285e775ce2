#include "caption_markup.h"

#include "utf8.h"
#include "xml.h"

#include <algorithm>

namespace vireonix::core::slider {
namespace {

constexpr std::string_view kBeforeSize = R"(<b><font size=")";
constexpr std::string_view kBeforeColor = R"(" color=")";
constexpr std::string_view kBeforeText = R"(">)";
constexpr std::string_view kAfterText = "</font></b>";

constexpr bool isPlainByte(char c) {
  return (static_cast<unsigned char>(c) >= 0x20 || c == '\n' || c == '\t') && c != '<' && c != '&';
}

// Whether every character stands for itself, in content and between the quotes of an attribute.
bool isPlain(std::string_view text) {
  return std::ranges::all_of(text, isPlainByte) && isWellFormedUtf8(text) &&
         text.find("]]>") == std::string_view::npos &&
         text.find("\xEF\xBF") == std::string_view::npos;
}

bool isPlainValue(std::string_view text) {
  return isPlain(text) && text.find_first_of("\"\n\t") == std::string_view::npos;
}

// Takes what stands before `mark` off `rest`, and the mark.
std::optional<std::string_view> takeUntil(std::string_view& rest, std::string_view mark) {
  const auto at = rest.find(mark);
  if (at == std::string_view::npos)
    return std::nullopt;
  const std::string_view taken = rest.substr(0, at);
  rest.remove_prefix(at + mark.size());
  return taken;
}

// Reads exactly the form that is written, when it holds no further markup: many times faster than
// setting up a parser for each caption.
std::optional<Caption> parseWrittenForm(std::string_view markup) {
  if (!markup.starts_with(kBeforeSize) || !markup.ends_with(kAfterText))
    return std::nullopt;
  markup.remove_prefix(kBeforeSize.size());
  const auto size = takeUntil(markup, kBeforeColor);
  const auto color = takeUntil(markup, kBeforeText);
  if (!size || !color || markup.size() < kAfterText.size())
    return std::nullopt;
  markup.remove_suffix(kAfterText.size());
  if (!isPlainValue(*size) || !isPlainValue(*color) || !isPlain(markup))
    return std::nullopt;
  return Caption{
      .text = std::string(markup), .size = std::string(*size), .color = std::string(*color)};
}

std::optional<std::string> copied(const std::string_view* value) {
  return value != nullptr ? std::optional<std::string>(*value) : std::nullopt;
}

bool isWhiteSpace(const xml::Node& node) {
  return node.kind == xml::NodeKind::Text &&
         node.content.find_first_not_of(" \t\r\n") == std::string::npos;
}

} // namespace

std::optional<Caption> parseCaption(std::string_view markup) {
  if (auto caption = parseWrittenForm(markup))
    return caption;
  const xml::Tree root = xml::parse(markup, xml::Mode::Strict);
  if (!root)
    return std::nullopt;
  const auto* const first = std::ranges::find_if_not(root->children, isWhiteSpace);
  if (first == root->children.end())
    return Caption{};
  return Caption{.text = first->stringValue(),
                 .size = copied(first->attribute("size")),
                 .color = copied(first->attribute("color"))};
}

std::string captionMarkup(std::optional<std::string_view> text,
                          std::optional<std::string_view> size,
                          std::optional<std::string_view> color) {
  std::string markup;
  auto add = [&markup](std::string_view before, std::optional<std::string_view> value) {
    markup += before;
    markup += value.value_or(kNoValue);
  };
  add(kBeforeSize, size);
  add(kBeforeColor, color);
  add(kBeforeText, text);
  markup += kAfterText;
  return markup;
}

} // namespace vireonix::core::slider
