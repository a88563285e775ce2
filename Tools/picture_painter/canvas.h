// A picture while it is painted: colours in full precision, painted from back to front. Places are
// in pixels; y grows downwards.
#pragma once

#include "colour.h"
#include "layer.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

namespace vireonix::painting {

struct Place {
  float x = 0;
  float y = 0;
};

class Canvas {
public:
  Canvas(int width, int height)
      : width_(width), height_(height), pixels_(static_cast<std::size_t>(width) * height) {}

  [[nodiscard]] int width() const { return width_; }
  [[nodiscard]] int height() const { return height_; }

  [[nodiscard]] Rgb& at(int x, int y) { return pixels_[static_cast<std::size_t>(y) * width_ + x]; }
  [[nodiscard]] const Rgb& at(int x, int y) const {
    return pixels_[static_cast<std::size_t>(y) * width_ + x];
  }

  /// The colour between pixels; places outside take the nearest edge.
  [[nodiscard]] Rgb sample(float x, float y) const;

  /// A transparent sheet of this size.
  [[nodiscard]] Layer sheet() const { return {width_, height_}; }

  /// Gives each pixel of the rows from `top` to before `bottom` the answer of colour(x, y, under),
  /// with x and y as float.
  template <class Colour> void shade(int top, int bottom, Colour colour) {
    for (int y = std::max(0, top); y < std::min(height_, bottom); ++y) {
      for (int x = 0; x < width_; ++x) {
        Rgb& pixel = at(x, y);
        pixel = colour(static_cast<float>(x), static_cast<float>(y), pixel);
      }
    }
  }
  template <class Colour> void shade(Colour colour) { shade(0, height_, colour); }

  /// Everything below the line crest(x) takes colour(x, y, depth below the line, under).
  template <class Crest, class Colour> void shadeBelow(Crest crest, Colour colour) {
    for (int x = 0; x < width_; ++x) {
      const auto column = static_cast<float>(x);
      const float top = crest(column);
      for (int y = std::max(0, static_cast<int>(std::floor(top))); y < height_; ++y) {
        Rgb& pixel = at(x, y);
        const auto row = static_cast<float>(y);
        const float cover = std::clamp(row + 1 - top, 0.0F, 1.0F);
        pixel = mix(pixel, colour(column, row, std::max(0.0F, row - top), pixel), cover);
      }
    }
  }

  /// Where the sheet is covered, the picture takes colour(x, y, under) instead of the sheet's own.
  template <class Colour> void fill(const Layer& sheet, Colour colour) {
    sheet.flush();
    for (int y = 0; y < height_; ++y) {
      for (int x = 0; x < width_; ++x) {
        if (const float cover = sheet.opacityAt(x, y); cover > 0) {
          Rgb& pixel = at(x, y);
          pixel = mix(pixel, colour(static_cast<float>(x), static_cast<float>(y), pixel), cover);
        }
      }
    }
  }

  /// Lays a sheet over the picture.
  void lay(const Layer& sheet);

  /// Lets a sheet shine on the picture.
  void shine(const Layer& sheet, float strength = 1);

  /// A round light that fades out towards its radius.
  void glow(Place centre, float radius, Rgb colour, float strength);

  /// Darkens the corners.
  void vignette(float strength);

private:
  int width_;
  int height_;
  std::vector<Rgb> pixels_;
};

} // namespace vireonix::painting
