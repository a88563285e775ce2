// How things move between two frames.
#pragma once

#include <algorithm>
#include <cmath>
#include <numbers>

namespace vireonix::movie {

/// Where the time lies between start and end: 0 before, 1 after, easing in and out between them.
inline double eased(double time, double start, double end) {
  const double part = std::clamp((time - start) / (end - start), 0.0, 1.0);
  return part * part * (3 - 2 * part);
}

/// A sine wave between -1 and 1 that repeats for every whole turn.
inline double wave(double turns) {
  return std::sin(2 * std::numbers::pi * turns);
}

} // namespace vireonix::movie
