// Colours as text: "0x" and two hexadecimal digits each for red, green and blue. Any thread.
#pragma once

#include "core_border.h"

#include <string>
#include <string_view>

namespace vireonix::core {

/// A colour of the calibrated RGB space, without alpha; components from 0 to 1.
struct Colour {
  float red = 0;
  float green = 0;
  float blue = 0;

  friend bool operator==(const Colour&, const Colour&) = default;
};

/// "0x" and six upper-case digits. Each component is truncated to one of 256 equal steps, so that
/// v/255 gives v; a component out of range gives the nearest end, one that is no number gives 0.
[[nodiscard]] std::string colourText(const Colour& colour);

/// The colour of the lowest 24 bits of the hexadecimal number at the start of UTF-8 text, behind
/// white space and an optional "0x" or "0X". Black when there is none, white when it needs more
/// than 32 bits.
[[nodiscard]] Colour colourOfText(std::string_view text);

} // namespace vireonix::core
