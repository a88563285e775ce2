#include "shape.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>
#include <utility>

namespace vireonix::movie {

namespace {

constexpr std::uint8_t kSolid = 0x00;
constexpr std::uint8_t kLinear = 0x10;
constexpr std::uint8_t kRadial = 0x12;
// Gradients are drawn in a square that reaches this far from the origin, then transformed.
constexpr double kGradientReach = 16384.0 / 20;

void writeMove(BitWriter& out, Point to) {
  const std::int32_t x = twips(to.x);
  const std::int32_t y = twips(to.y);
  const int width = signedWidth({x, y});
  out.bits(static_cast<std::uint32_t>(width), 5);
  out.signedBits(x, width);
  out.signedBits(y, width);
}

/// The width of an edge's numbers, which is stored less two.
int edgeWidth(std::initializer_list<std::int32_t> values) {
  return std::max(2, signedWidth(values));
}

void writeLine(BitWriter& out, Point from, Point to) {
  const std::int32_t x = twips(to.x) - twips(from.x);
  const std::int32_t y = twips(to.y) - twips(from.y);
  const int width = edgeWidth({x, y});
  out.bits(0b11, 2);
  out.bits(static_cast<std::uint32_t>(width - 2), 4);
  out.flag(true); // both differences follow
  out.signedBits(x, width);
  out.signedBits(y, width);
}

void writeCurve(BitWriter& out, Point from, Point control, Point to) {
  const std::array<std::int32_t, 4> deltas = {
      twips(control.x) - twips(from.x), twips(control.y) - twips(from.y),
      twips(to.x) - twips(control.x), twips(to.y) - twips(control.y)};
  const int width = edgeWidth({deltas[0], deltas[1], deltas[2], deltas[3]});
  out.bits(0b10, 2);
  out.bits(static_cast<std::uint32_t>(width - 2), 4);
  for (const std::int32_t delta : deltas) {
    out.signedBits(delta, width);
  }
}

} // namespace

Shape::Fill Shape::addFill(FillStyle style) {
  fills_.push_back(std::move(style));
  return static_cast<Fill>(fills_.size());
}

Shape::Fill Shape::solid(Colour colour) {
  return addFill({kSolid, {}, {{0, colour}}});
}

Shape::Fill Shape::linear(Point from, Point to, std::vector<GradientStop> stops) {
  const Point half = {(to.x - from.x) / 2, (to.y - from.y) / 2};
  const double a = half.x / kGradientReach;
  const double b = half.y / kGradientReach;
  const Matrix matrix = {a, a, -b, b, {from.x + half.x, from.y + half.y}};
  return addFill({kLinear, matrix, std::move(stops)});
}

Shape::Fill Shape::radial(Point centre, double radius, std::vector<GradientStop> stops) {
  return addFill({kRadial, Matrix::scaling(radius / kGradientReach, centre), std::move(stops)});
}

void Shape::begin(Fill fill, Point start) {
  steps_.push_back({Kind::Begin, fill, start, start});
}

void Shape::lineTo(Point end) {
  steps_.push_back({Kind::Line, 0, end, end});
}

void Shape::curveTo(Point control, Point end) {
  steps_.push_back({Kind::Curve, 0, control, end});
}

void Shape::polygon(Fill fill, std::span<const Point> corners) {
  begin(fill, corners.front());
  for (const Point& corner : corners.subspan(1)) {
    lineTo(corner);
  }
  lineTo(corners.front());
}

void Shape::rectangle(Fill fill, const Bounds& bounds) {
  const auto& [low, high] = bounds;
  polygon(fill, std::array<Point, 4>{low, {high.x, low.y}, high, {low.x, high.y}});
}

void Shape::roundedRectangle(Fill fill, const Bounds& bounds, double radius) {
  const auto& [low, high] = bounds;
  begin(fill, {low.x + radius, low.y});
  lineTo({high.x - radius, low.y});
  curveTo({high.x, low.y}, {high.x, low.y + radius});
  lineTo({high.x, high.y - radius});
  curveTo(high, {high.x - radius, high.y});
  lineTo({low.x + radius, high.y});
  curveTo({low.x, high.y}, {low.x, high.y - radius});
  lineTo({low.x, low.y + radius});
  curveTo(low, {low.x + radius, low.y});
}

void Shape::circle(Fill fill, Point centre, double radius) {
  constexpr int kArcs = 8; // within 0.03 % of the circle
  constexpr double kHalfArc = std::numbers::pi / kArcs;
  const auto at = [centre](double reach, double angle) {
    return Point{centre.x + reach * std::cos(angle), centre.y + reach * std::sin(angle)};
  };
  begin(fill, at(radius, 0));
  for (int arc = 0; arc < kArcs; ++arc) {
    const double middle = (2 * arc + 1) * kHalfArc;
    const Point end = arc + 1 == kArcs ? at(radius, 0) : at(radius, middle + kHalfArc);
    curveTo(at(radius / std::cos(kHalfArc), middle), end);
  }
}

Bounds Shape::bounds() const {
  constexpr double kFar = std::numeric_limits<double>::max();
  Bounds box = {{kFar, kFar}, {-kFar, -kFar}};
  for (const Step& step : steps_) {
    for (const Point& point : {step.control, step.end}) {
      box.low = {std::min(box.low.x, point.x), std::min(box.low.y, point.y)};
      box.high = {std::max(box.high.x, point.x), std::max(box.high.y, point.y)};
    }
  }
  return steps_.empty() ? Bounds{} : box;
}

void Shape::writeFills(BitWriter& out) const {
  out.u8(static_cast<std::uint8_t>(fills_.size()));
  for (const FillStyle& fill : fills_) {
    out.u8(fill.type);
    if (fill.type == kSolid) {
      writeColour(out, fill.stops.front().colour);
      continue;
    }
    writeMatrix(out, fill.matrix);
    out.bits(static_cast<std::uint32_t>(fill.stops.size()), 8); // padded spread, plain RGB
    for (const GradientStop& stop : fill.stops) {
      out.u8(static_cast<std::uint8_t>(std::lround(stop.place * 255)));
      writeColour(out, stop.colour);
    }
  }
  out.u8(0); // no line styles
}

void Shape::writeStep(BitWriter& out, const Step& step, Point from, int fillWidth) {
  if (step.kind == Kind::Line) {
    writeLine(out, from, step.end);
  } else if (step.kind == Kind::Curve) {
    writeCurve(out, from, step.control, step.end);
  } else {
    out.bits(0b000101, 6); // a style change: the fill on the right-hand side, and a move
    writeMove(out, step.end);
    out.bits(static_cast<std::uint32_t>(step.fill), fillWidth);
  }
}

void Shape::write(BitWriter& out, std::uint16_t character) const {
  out.u16(character);
  writeRect(out, bounds());
  writeFills(out);
  const int fillWidth = unsignedWidth(static_cast<std::uint32_t>(fills_.size()));
  out.bits(static_cast<std::uint32_t>(fillWidth), 4);
  out.bits(0, 4);
  Point from;
  for (const Step& step : steps_) {
    writeStep(out, step, from, fillWidth);
    from = step.end;
  }
  out.bits(0, 6); // the end of the shape
  out.align();
}

} // namespace vireonix::movie
