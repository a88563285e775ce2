#include "noise.h"

#include <algorithm>
#include <cmath>

namespace vireonix::painting {

namespace {

std::uint32_t scrambled(std::uint32_t value) {
  value ^= value >> 16U;
  value *= 0x7FEB352DU;
  value ^= value >> 15U;
  value *= 0x846CA68BU;
  return value ^ value >> 16U;
}

} // namespace

float smooth(float low, float high, float value) {
  const float part = std::clamp((value - low) / (high - low), 0.0F, 1.0F);
  return part * part * (3 - 2 * part);
}

float Noise::corner(std::int32_t column, std::int32_t row, float x, float y) const {
  const std::uint32_t hash =
      scrambled(static_cast<std::uint32_t>(column) * 374761393U +
                static_cast<std::uint32_t>(row) * 668265263U + seed_ * 2246822519U);
  // One of eight directions.
  constexpr float kDiagonal = 0.70710678F;
  const float along = (hash & 1U) != 0 ? x : -x;
  const float across = (hash & 2U) != 0 ? y : -y;
  if ((hash & 4U) != 0) {
    return (along + across) * kDiagonal;
  }
  return (hash & 8U) != 0 ? along : across;
}

float Noise::at(float x, float y) const {
  const float left = std::floor(x);
  const float top = std::floor(y);
  const auto column = static_cast<std::int32_t>(left);
  const auto row = static_cast<std::int32_t>(top);
  const float u = x - left;
  const float v = y - top;
  const float su = u * u * u * (u * (u * 6 - 15) + 10);
  const float sv = v * v * v * (v * (v * 6 - 15) + 10);
  const float upper = std::lerp(corner(column, row, u, v), corner(column + 1, row, u - 1, v), su);
  const float lower =
      std::lerp(corner(column, row + 1, u, v - 1), corner(column + 1, row + 1, u - 1, v - 1), su);
  return std::lerp(upper, lower, sv);
}

float Noise::fractal(float x, float y, int octaves) const {
  float sum = 0;
  float strength = 1;
  for (int octave = 0; octave < octaves; ++octave) {
    sum += strength * at(x, y);
    // Turned a little from octave to octave, so that the grid does not show.
    const float turned = 1.6F * x + 1.2F * y + 17.3F;
    y = 1.6F * y - 1.2F * x + 5.7F;
    x = turned;
    strength /= 2;
  }
  return sum;
}

float Noise::ridged(float x, float y, int octaves) const {
  float sum = 0;
  float strength = 0.5F;
  float weight = 1;
  for (int octave = 0; octave < octaves; ++octave) {
    const float fold = 1 - std::min(1.0F, 1.6F * std::abs(at(x, y)));
    const float crest = fold * fold * weight;
    sum += strength * crest;
    weight = std::clamp(2 * crest, 0.0F, 1.0F);
    x = 2 * x + 11.1F;
    y = 2 * y + 3.7F;
    strength /= 2;
  }
  return sum;
}

float Dice::between(float low, float high) {
  state_ = state_ * 1664525U + 1013904223U;
  const float part = static_cast<float>(scrambled(state_) >> 8U) / 16777216.0F;
  return low + (high - low) * part;
}

} // namespace vireonix::painting
