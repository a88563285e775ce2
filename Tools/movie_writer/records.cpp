#include "records.h"

#include <cmath>

namespace vireonix::movie {

namespace {

constexpr double kTwipsPerPixel = 20;

std::int32_t rounded(double value) {
  return static_cast<std::int32_t>(std::lround(value));
}

/// A pair of 16.16 numbers behind its width.
void writeFixedPair(BitWriter& out, double first, double second) {
  constexpr double kOne = 65536;
  const std::int32_t a = rounded(first * kOne);
  const std::int32_t b = rounded(second * kOne);
  const int width = signedWidth({a, b});
  out.bits(static_cast<std::uint32_t>(width), 5);
  out.signedBits(a, width);
  out.signedBits(b, width);
}

} // namespace

std::int32_t twips(double pixels) {
  return rounded(pixels * kTwipsPerPixel);
}

void writeRect(BitWriter& out, const Bounds& bounds) {
  const std::int32_t left = twips(bounds.low.x);
  const std::int32_t right = twips(bounds.high.x);
  const std::int32_t top = twips(bounds.low.y);
  const std::int32_t bottom = twips(bounds.high.y);
  const int width = signedWidth({left, right, top, bottom});
  out.align();
  out.bits(static_cast<std::uint32_t>(width), 5);
  for (const std::int32_t edge : {left, right, top, bottom}) {
    out.signedBits(edge, width);
  }
  out.align();
}

void writeMatrix(BitWriter& out, const Matrix& matrix) {
  out.align();
  const bool isScaled = matrix.scaleX != 1 || matrix.scaleY != 1;
  out.flag(isScaled);
  if (isScaled) {
    writeFixedPair(out, matrix.scaleX, matrix.scaleY);
  }
  const bool isSkewed = matrix.skewX != 0 || matrix.skewY != 0;
  out.flag(isSkewed);
  if (isSkewed) {
    writeFixedPair(out, matrix.skewY, matrix.skewX);
  }
  const std::int32_t x = twips(matrix.move.x);
  const std::int32_t y = twips(matrix.move.y);
  const int width = signedWidth({x, y});
  out.bits(static_cast<std::uint32_t>(width), 5);
  out.signedBits(x, width);
  out.signedBits(y, width);
  out.align();
}

void writeTint(BitWriter& out, const Tint& tint) {
  constexpr double kOne = 256;
  const std::int32_t colour = rounded(tint.brightness * kOne);
  const std::int32_t alpha = rounded(tint.opacity * kOne);
  const int width = signedWidth({colour, alpha});
  out.align();
  out.flag(false); // no terms to add
  out.flag(true);
  out.bits(static_cast<std::uint32_t>(width), 4);
  for (const std::int32_t factor : {colour, colour, colour, alpha}) {
    out.signedBits(factor, width);
  }
  out.align();
}

void writeOpaqueColour(BitWriter& out, const Colour& colour) {
  out.u8(colour.red);
  out.u8(colour.green);
  out.u8(colour.blue);
}

void writeColour(BitWriter& out, const Colour& colour) {
  writeOpaqueColour(out, colour);
  out.u8(colour.alpha);
}

} // namespace vireonix::movie
