// The position file, and dragging from whatever it holds.
#include "Core/position.h"
#include "input.h"
#include "require.h"

#include <cmath>

using namespace vireonix::core;
using namespace vireonix::fuzz;

namespace {

// Margins have one decimal place in the file, and 32 bits in memory.
constexpr float kRounding = 0.001F;

bool isInsidePage(const Position& position) {
  return position.left >= -kRounding && position.top >= -kRounding &&
         position.right >= -kRounding && position.bottom >= -kRounding &&
         position.left + position.right <= 100 && position.top + position.bottom <= 100;
}

void checkMove(Position position) {
  const Position before = position;
  for (const float step : {3.0F, -200.0F, 150.0F})
    drag(position, 0, step, -step / 2);
  require(isInsidePage(position), "a moved object stays on the page");
  require(std::abs(position.left + position.right - before.left - before.right) <= kRounding &&
              std::abs(position.top + position.bottom - before.top - before.bottom) <= kRounding,
          "a moved object keeps its size");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const Position position = positionOfText(textOf(data, size));
  const std::string written = positionText(position);
  require(positionText(positionOfText(written)) == written,
          "what was read and written once is written the same from then on");
  if (isInsidePage(position))
    checkMove(position);
  return 0;
}
