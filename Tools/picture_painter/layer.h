// A transparent sheet the size of a picture on which shapes are drawn with cairo.
#pragma once

#include "colour.h"

#include <cairo.h>

#include <cstdint>
#include <memory>

namespace vireonix::painting {

class Layer {
public:
  Layer(int width, int height);

  /// Draws on the sheet; valid while the layer lives.
  [[nodiscard]] cairo_t* pen() const { return pen_.get(); }

  /// Takes the colour for what is drawn next.
  void use(Rgb colour, float opacity = 1) const;

  /// Makes everything on the sheet softer, by about `radius` pixels.
  void blur(int radius);

  /// The colour times its opacity, and the opacity.
  struct Pixel {
    Rgb colour;
    float opacity = 0;
  };
  [[nodiscard]] Pixel at(int x, int y) const;
  [[nodiscard]] float opacityAt(int x, int y) const;

  /// Completes the drawing; call before reading pixels.
  void flush() const { cairo_surface_flush(surface_.get()); }

private:
  struct Release {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
    void operator()(cairo_t* pen) const { cairo_destroy(pen); }
  };

  [[nodiscard]] const std::uint8_t* pixel(int x, int y) const;

  int width_;
  int height_;
  std::unique_ptr<cairo_surface_t, Release> surface_;
  std::unique_ptr<cairo_t, Release> pen_;
};

} // namespace vireonix::painting
