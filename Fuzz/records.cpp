// Slides and captions that hold anything: every other caption survives.
#include "Core/slider_document.h"
#include "Core/xml.h"
#include "input.h"
#include "require.h"

#include <algorithm>
#include <array>

using namespace vireonix::core;
using namespace vireonix::fuzz;
using namespace vireonix::core::slider;

namespace {

constexpr std::array<std::string_view, 5> kKeys = {kText, kSize, kColor, kStyle, kInTime};

TextObject innocent() {
  return {{kText, "Good morning"}, {kSize, "24"}, {kColor, "#FF0000"}, {kStyle, "Fade"}};
}

// Each value reaches to the next zero byte of the input.
TextObject hostile(std::string_view input, std::optional<std::string>& image) {
  TextObject record;
  for (const std::string_view key : kKeys) {
    const std::size_t end = std::min(input.find('\0'), input.size());
    record.set(key, input.substr(0, end));
    input.remove_prefix(std::min(end + 1, input.size()));
  }
  image = std::string(input);
  return record;
}

void checkSurvivors(const Slide& slide) {
  require(slide.textObjects.size() == 3, "no caption is lost");
  for (const std::size_t at : {std::size_t{0}, std::size_t{2}}) {
    const TextObject& record = slide.textObjects[at];
    require(record.find(kSize) == "24", "a size survives");
    require(record.find(kStyle) == "Fade", "a style survives");
    require(record.find(kText) == "Good morning", "a text survives");
  }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Slide slide;
  slide.textObjects = {innocent(), hostile(textOf(data, size), slide.backgroundImage), innocent()};
  const std::string document = writeDocument({slide, slide}, {});
  const auto root = xml::parse(document, xml::Mode::Strict);
  require(root != nullptr, "a document is well-formed whatever its captions hold");
  const Document again = readDocument(*root);
  require(again.slides && again.slides->size() == 2, "no slide is lost");
  for (const Slide& each : *again.slides)
    checkSurvivors(each);
  return 0;
}
