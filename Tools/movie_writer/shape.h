// A filled vector shape of a Flash movie, in pixels from its own origin.
#pragma once

#include "records.h"

#include <cstdint>
#include <span>
#include <vector>

namespace vireonix::movie {

/// A colour at a place of a gradient: 0 its start (or centre), 1 its end (or rim).
struct GradientStop {
  double place = 0;
  Colour colour;
};

class Shape {
public:
  /// Names a fill of this shape; fills are painted in the order of their outlines.
  using Fill = int;

  Fill solid(Colour colour);
  /// A gradient from one point to the other; 2 to 15 stops in rising order.
  Fill linear(Point from, Point to, std::vector<GradientStop> stops);
  Fill radial(Point centre, double radius, std::vector<GradientStop> stops);

  // Closed outlines. Within one shape outlines of the same fill that overlap cut holes.
  void polygon(Fill fill, std::span<const Point> corners);
  void rectangle(Fill fill, const Bounds& bounds);
  void roundedRectangle(Fill fill, const Bounds& bounds, double radius);
  void circle(Fill fill, Point centre, double radius);

  // An outline by hand: begin, then lines and quadratic curves back to the start.
  void begin(Fill fill, Point start);
  void lineTo(Point end);
  void curveTo(Point control, Point end);

  /// The smallest box around all end and control points.
  [[nodiscard]] Bounds bounds() const;

  /// Writes the body of a DefineShape3 tag.
  void write(BitWriter& out, std::uint16_t character) const;

private:
  enum class Kind : std::uint8_t { Begin, Line, Curve };
  struct Step {
    Kind kind;
    Fill fill;
    Point control;
    Point end;
  };
  struct FillStyle {
    std::uint8_t type;
    Matrix matrix;
    std::vector<GradientStop> stops;
  };

  Fill addFill(FillStyle style);
  void writeFills(BitWriter& out) const;
  static void writeStep(BitWriter& out, const Step& step, Point from, int fillWidth);

  std::vector<FillStyle> fills_;
  std::vector<Step> steps_;
};

} // namespace vireonix::movie
