// Repeatable randomness: smooth noise over the plane and a sequence of numbers. The same seed gives
// the same numbers on every run.
#pragma once

#include <cstdint>

namespace vireonix::painting {

/// 0 below `low`, 1 above `high`, and a smooth rise between them.
float smooth(float low, float high, float value);

/// Gradient noise: a continuous function of the plane whose features are about one unit wide.
class Noise {
public:
  explicit Noise(std::uint32_t seed) : seed_(seed) {}

  /// About -0.7 to 0.7, 0 in the mean.
  [[nodiscard]] float at(float x, float y) const;

  /// Octaves of noise, each half as wide and half as strong as the one before; about -1 to 1.
  [[nodiscard]] float fractal(float x, float y, int octaves) const;

  /// Like `fractal`, folded into sharp crests; 0 to about 1.
  [[nodiscard]] float ridged(float x, float y, int octaves) const;

private:
  [[nodiscard]] float corner(std::int32_t column, std::int32_t row, float x, float y) const;

  std::uint32_t seed_;
};

/// A sequence of random numbers.
class Dice {
public:
  explicit Dice(std::uint32_t seed) : state_(seed * 2654435769U + 1U) {}

  /// From `low` up to, but not including, `high`.
  float between(float low, float high);
  int below(int count) { return static_cast<int>(between(0, static_cast<float>(count))); }
  bool chance(float probability) { return between(0, 1) < probability; }

private:
  std::uint32_t state_;
};

} // namespace vireonix::painting
