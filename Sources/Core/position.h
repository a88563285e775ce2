// Where the slider stands on the page: the record, its rectangle, how a drag changes it, and the
// text file that keeps it. All arithmetic is in 32-bit floats. Any thread.
#pragma once

#include "core_border.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace vireonix::core {

/// Margins are distances from the page edge of their name in percent of the page's width or height;
/// the transparency is in percent, the layer a tag. No range is enforced.
struct Position {
  float left = 0;
  float top = 0;
  float right = 0;
  float bottom = 0;
  float transparency = 0;
  int32_t layer = 0;

  friend bool operator==(const Position&, const Position&) = default;
};

/// A rectangle in points, its origin at the lower left.
struct Frame {
  float x = 0;
  float y = 0;
  float width = 0;
  float height = 0;

  /// Whether the rectangle can be shown: it has a positive size, and all of it is finite.
  [[nodiscard]] bool visible() const;

  friend bool operator==(const Frame&, const Frame&) = default;
};

/// The object's rectangle on a page of the given size in points. Not clamped: margins that add up
/// to more than 100 give a negative size.
[[nodiscard]] Frame frameOf(const Position& position, float pageWidth, float pageHeight);

/// The edges that a drag moves, combined by bitwise or; none moves the whole object.
inline constexpr int32_t kLeftEdge = 1;
inline constexpr int32_t kTopEdge = 2;
inline constexpr int32_t kRightEdge = 4;
inline constexpr int32_t kBottomEdge = 8;

/// Width in points of the zone along each edge of the object in which a press grabs that edge.
inline constexpr double kGrabZone = 10.0;

/// The edges grabbed by a press at a point of the object, measured from its lower-left corner, in
/// points. On an object narrower than two zones the left and the bottom edge win.
[[nodiscard]] int32_t edgesAt(double x, double y, double width, double height);

/// One drag step of `dx` and `dy` percent of the page, to the right and up. `edges` as edgesAt
/// answers. A moved object stops at the page's edges and keeps its size; a resized one keeps at
/// least 20 percent of the page in each direction.
void drag(Position& position, int32_t edges, float dx, float dy);

/// The six lines of a position file, without a line end after the last.
[[nodiscard]] std::string positionText(const Position& position);

/// The record of a position file's bytes: all zeros when they are not UTF-8 or hold fewer than six
/// lines; a line that does not begin with a number reads as 0. Carriage returns do not count.
[[nodiscard]] Position positionOfText(std::string_view bytes);

/// Reads a position file of which the first MiB counts, so that time and memory are bounded. A path
/// at which no regular file can be read gives all zeros.
[[nodiscard]] Position readPositionFile(const std::string& path);

/// The position file to load for a workspace folder: "settings.dat" when the folder has an entry of
/// exactly that name, else "defaultsettings.dat", whether it exists or not.
[[nodiscard]] std::string positionFileOf(const std::string& workspace);

} // namespace vireonix::core
