// The small records that the tags of a Flash movie are made of. Lengths are in pixels here; a movie
// stores twentieths of them ("twips").
#pragma once

#include "bit_writer.h"

#include <cstdint>

namespace vireonix::movie {

struct Point {
  double x = 0;
  double y = 0;
};

struct Bounds {
  Point low;
  Point high;
};

struct Colour {
  std::uint8_t red = 0;
  std::uint8_t green = 0;
  std::uint8_t blue = 0;
  std::uint8_t alpha = 255;
};

/// x' = x·scaleX + y·skewX + move.x and y' = x·skewY + y·scaleY + move.y.
struct Matrix {
  double scaleX = 1;
  double scaleY = 1;
  double skewX = 0;
  double skewY = 0;
  Point move;

  static Matrix translation(Point to) { return {1, 1, 0, 0, to}; }
  static Matrix scaling(double factor, Point to) { return {factor, factor, 0, 0, to}; }
};

/// Factors for the colour and the opacity of what is shown, each 0 to 1.
struct Tint {
  double brightness = 1;
  double opacity = 1;
};

/// The nearest number of twips.
std::int32_t twips(double pixels);

void writeRect(BitWriter& out, const Bounds& bounds);
void writeMatrix(BitWriter& out, const Matrix& matrix);
void writeTint(BitWriter& out, const Tint& tint);
void writeOpaqueColour(BitWriter& out, const Colour& colour);
void writeColour(BitWriter& out, const Colour& colour);

} // namespace vireonix::movie
