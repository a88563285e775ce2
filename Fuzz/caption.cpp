// The markup in which a caption carries its size and colour.
#include "Core/caption_markup.h"
#include "Core/utf8.h"
#include "input.h"
#include "require.h"

#include <algorithm>

using namespace vireonix::core;
using namespace vireonix::fuzz;
using slider::Caption;

namespace {

bool isPlain(const std::optional<std::string>& value) {
  constexpr auto kSpecial = "<&\"\r\n\t";
  return value && value->find_first_of(kSpecial) == std::string::npos &&
         value->find("]]>") == std::string::npos;
}

// Values that need no escaping come back as they were written.
void checkWriting(const Caption& caption) {
  if (!isPlain(caption.text) || !isPlain(caption.size) || !isPlain(caption.color))
    return;
  const std::string markup = slider::captionMarkup(caption.text, caption.size, caption.color);
  const auto again = slider::parseCaption(markup);
  const bool blank = caption.text->find_first_not_of(' ') == std::string::npos;
  require(again && again->size == caption.size && again->color == caption.color,
          "size and colour of a caption come back");
  require(again->text == caption.text || blank, "the text of a caption comes back");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view markup = textOf(data, size);
  const auto caption = slider::parseCaption(markup);
  // A line feed behind the element changes nothing, and is not for the reader of the written form.
  require(caption == slider::parseCaption(std::string(markup) + "\n"),
          "both readers of captions answer the same");
  if (!caption)
    return 0;
  for (const auto& value : {caption->text, caption->size, caption->color})
    require(!value || isWellFormedUtf8(*value), "what a caption holds is UTF-8");
  checkWriting(*caption);
  return 0;
}
