#include "Core/text_template.h"

namespace vireonix::core {
namespace {

// Takes the text up to `mark` away, and the mark itself; all of the text when the mark is missing.
std::u16string_view takeUpTo(std::u16string_view& text, std::u16string_view mark) {
  const size_t end = text.find(mark);
  const std::u16string_view taken = text.substr(0, end);
  text.remove_prefix(end == std::u16string_view::npos ? text.size() : end + mark.size());
  return taken;
}

} // namespace

std::u16string fillTemplate(std::u16string_view text, const PlaceholderValue& valueOf) {
  std::u16string filled;
  while (!text.empty()) {
    filled += takeUpTo(text, u"${");
    const std::u16string_view key = takeUpTo(text, u"}");
    if (!key.empty())
      filled += valueOf(key);
  }
  return filled;
}

} // namespace vireonix::core
