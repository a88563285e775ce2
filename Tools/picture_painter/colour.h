// Colours as they are shown: three parts, each 0 to 1.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <utility>
#include <vector>

namespace vireonix::painting {

struct Rgb {
  float red = 0;
  float green = 0;
  float blue = 0;
};

/// A colour from 0xRRGGBB.
constexpr Rgb hex(std::uint32_t code) {
  return {static_cast<float>(code >> 16U & 0xFFU) / 255.0F,
          static_cast<float>(code >> 8U & 0xFFU) / 255.0F,
          static_cast<float>(code & 0xFFU) / 255.0F};
}

constexpr Rgb operator*(Rgb colour, float factor) {
  return {colour.red * factor, colour.green * factor, colour.blue * factor};
}

constexpr Rgb operator+(Rgb a, Rgb b) {
  return {a.red + b.red, a.green + b.green, a.blue + b.blue};
}

/// From the first (0) to the second (1).
constexpr Rgb mix(Rgb from, Rgb to, float part) {
  return from * (1 - part) + to * part;
}

/// Light on light: brightens and never exceeds white.
constexpr Rgb screen(Rgb under, Rgb light) {
  return {1 - (1 - under.red) * (1 - light.red), 1 - (1 - under.green) * (1 - light.green),
          1 - (1 - under.blue) * (1 - light.blue)};
}

/// Colours along a line from 0 to 1.
class Gradient {
public:
  /// Places in rising order, at least one.
  Gradient(std::initializer_list<std::pair<float, Rgb>> stops) : stops_(stops) {}

  [[nodiscard]] Rgb at(float place) const {
    if (place <= stops_.front().first) {
      return stops_.front().second;
    }
    for (std::size_t i = 1; i < stops_.size(); ++i) {
      const auto& [end, colour] = stops_[i];
      if (place < end) {
        const auto& [start, before] = stops_[i - 1];
        return mix(before, colour, (place - start) / (end - start));
      }
    }
    return stops_.back().second;
  }

private:
  std::vector<std::pair<float, Rgb>> stops_;
};

} // namespace vireonix::painting
