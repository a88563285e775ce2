// The few colours of an indexed picture.
#pragma once

#include "canvas.h"

#include <array>
#include <cstdint>
#include <vector>

namespace vireonix::painting {

class Palette {
public:
  /// No colour: keeps what the frame before showed.
  static constexpr std::uint8_t kTransparent = 255;

  /// Up to 255 colours that stand for those of all frames, chosen by halving the fullest boxes of
  /// the colour space ("median cut").
  explicit Palette(const std::vector<Canvas>& frames);

  [[nodiscard]] std::size_t size() const { return colours_.size(); }
  [[nodiscard]] std::array<std::uint8_t, 3> colour(std::size_t index) const;

  /// The index of the nearest colour for each pixel, row by row.
  [[nodiscard]] std::vector<std::uint8_t> indexes(const Canvas& frame) const;

private:
  [[nodiscard]] std::uint8_t nearest(Rgb colour) const;

  std::vector<Rgb> colours_;
};

} // namespace vireonix::painting
