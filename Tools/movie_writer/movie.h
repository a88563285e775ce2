// A Flash movie without scripts: shapes that are placed, moved and faded frame by frame
// (Adobe, "SWF File Format", version 19; the movie declares version 8).
#pragma once

#include "shape.h"

#include <cstdint>
#include <map>
#include <span>
#include <vector>

namespace vireonix::movie {

enum class Packing : std::uint8_t { Plain, Zlib };

class Movie {
public:
  /// The stage in pixels, its colour, and the frames a second (a multiple of 1/256).
  Movie(Point stageSize, double framesPerSecond, Colour background);

  /// Adds a shape to the movie's dictionary; answers its number.
  std::uint16_t define(const Shape& shape);

  /// Shows a defined shape at a depth from the current frame on; larger depths lie above. What
  /// another call placed at that depth is moved, or gives way when it is another shape.
  void place(std::uint16_t depth, std::uint16_t character, const Matrix& matrix, Tint tint = {});

  /// Takes away what the depth shows.
  void remove(std::uint16_t depth);

  void showFrame();

  /// The whole file. A compressed body takes zlib's best level; when zlib fails, which it does only
  /// without memory, the body is stored plain.
  [[nodiscard]] std::vector<std::uint8_t> file(Packing packing) const;

private:
  void tag(std::uint16_t code, std::span<const std::uint8_t> body);

  Point stageSize_;
  double framesPerSecond_;
  BitWriter tags_;
  std::map<std::uint16_t, std::uint16_t> shown_; // character by depth
  std::uint16_t characters_ = 0;
  std::uint16_t frames_ = 0;
};

} // namespace vireonix::movie
