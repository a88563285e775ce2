// Text with placeholders.
#include "Core/text_template.h"
#include "input.h"
#include "require.h"

using namespace vireonix::core;
using namespace vireonix::fuzz;

namespace {

// Every placeholder replaced by itself: the text again, but for empty keys, which stand for
// nothing, and for the bracket that the last one may lack.
void checkIdentity(const std::u16string& text) {
  bool emptyKey = text.find(u"${}") != std::u16string::npos || text.ends_with(u"${");
  const std::u16string filled = fillTemplate(text, [&emptyKey](std::u16string_view key) {
    emptyKey = emptyKey || key.empty();
    return u"${" + std::u16string(key) + u"}";
  });
  if (!emptyKey)
    require(filled == text || filled == text + u"}", "a placeholder's value takes its place");
}

void checkRemoval(const std::u16string& text) {
  std::size_t placeholders = 0;
  const std::u16string filled = fillTemplate(text, [&placeholders](std::u16string_view key) {
    require(key.find(u'}') == std::u16string_view::npos, "a key ends at the first bracket");
    ++placeholders;
    return std::u16string();
  });
  require(filled.size() <= text.size(), "empty values leave nothing behind");
  if (text.find(u"${") == std::u16string::npos)
    require(placeholders == 0 && filled == text, "text without placeholders stays");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  // Bytes as characters too, so that the brackets are found soon.
  const std::string_view bytes = textOf(data, size);
  for (const auto& text : {std::u16string(bytes.begin(), bytes.end()), wideTextOf(data, size)}) {
    checkIdentity(text);
    checkRemoval(text);
  }
  return 0;
}
