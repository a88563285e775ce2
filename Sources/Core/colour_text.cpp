#include "Core/colour_text.h"

#include "Core/white_space.h"

#include <charconv>
#include <cstdint>
#include <limits>
#include <system_error>

namespace vireonix::core {
namespace {

// The largest float below 256.
constexpr float kSteps = 255.99998F;

uint32_t stepOf(float component) {
  if (!(component > 0))
    return 0;
  return component >= 1 ? 255 : static_cast<uint32_t>(component * kSteps);
}

float componentOf(uint32_t bits, unsigned shift) {
  return static_cast<float>((bits >> shift) & 0xFF) / 255.0F;
}

} // namespace

std::string colourText(const Colour& colour) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string text = "0x";
  for (const float component : {colour.red, colour.green, colour.blue}) {
    const uint32_t step = stepOf(component);
    text += kDigits[step >> 4];
    text += kDigits[step & 0xF];
  }
  return text;
}

Colour colourOfText(std::string_view text) {
  text = skipWhiteSpace(text);
  if (text.starts_with("0x") || text.starts_with("0X"))
    text.remove_prefix(2);
  uint32_t bits = 0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), bits, 16);
  if (result.ec == std::errc::result_out_of_range)
    bits = std::numeric_limits<uint32_t>::max();
  return {componentOf(bits, 16), componentOf(bits, 8), componentOf(bits, 0)};
}

} // namespace vireonix::core
