#include "motion.h"
#include "scenes.h"

#include <array>
#include <numbers>

namespace vireonix::movie {

namespace {

constexpr Point kStage = {550, 400};
constexpr int kFrames = 72;
constexpr Point kSpine = {275, 292}; // the foot of the book's middle
constexpr double kPageWidth = 172;
constexpr double kPageHeight = 214;
constexpr double kArch = 15; // how far a page rises towards its middle

enum Depth : std::uint16_t {
  BackdropDepth = 1,
  LightConeDepth,
  FirstMoteDepth,
  ShadowDepth = 40,
  CoverDepth,
  LeftPageDepth,
  RightPageDepth,
  TurningPageDepth,
  GutterDepth,
};

struct Mote {
  Point place;
  double size;
  double phase;
  double strength;
};

constexpr std::array<Mote, 12> kMotes = {{{{70, 90}, 46, 0.00, 0.20},
                                          {{162, 52}, 22, 0.35, 0.32},
                                          {{258, 34}, 12, 0.60, 0.55},
                                          {{352, 62}, 34, 0.10, 0.24},
                                          {{452, 96}, 56, 0.75, 0.18},
                                          {{506, 214}, 26, 0.45, 0.28},
                                          {{40, 236}, 30, 0.85, 0.24},
                                          {{112, 342}, 18, 0.20, 0.32},
                                          {{402, 26}, 9, 0.50, 0.65},
                                          {{214, 96}, 7, 0.15, 0.70},
                                          {{318, 112}, 6, 0.95, 0.75},
                                          {{474, 322}, 14, 0.65, 0.38}}};

Shape backdrop() {
  Shape shape;
  shape.rectangle(shape.linear({0, 0}, {0, kStage.y},
                               {{0, {16, 32, 58}}, {0.6, {32, 84, 112}}, {1, {72, 138, 146}}}),
                  {{}, kStage});
  return shape;
}

Shape glow(double radius, Colour core) {
  const auto faded = [core](std::uint8_t alpha) {
    return Colour{core.red, core.green, core.blue, alpha};
  };
  Shape shape;
  shape.circle(shape.radial({}, radius, {{0, core}, {0.45, faded(core.alpha / 3)}, {1, faded(0)}}),
               {}, radius);
  return shape;
}

Shape mote() {
  Shape shape;
  shape.circle(
      shape.radial(
          {}, 1, {{0, {255, 240, 205, 150}}, {0.8, {255, 236, 190, 190}}, {1, {255, 236, 190, 0}}}),
      {}, 1);
  return shape;
}

/// The outline of a page (or of what lies under it) from the spine to one side.
void pageOutline(Shape& shape, Shape::Fill fill, double side, double margin) {
  const double outer = side * (kPageWidth + margin);
  const double middle = side * kPageWidth * 0.45;
  shape.begin(fill, {0, margin});
  shape.curveTo({middle, margin - 2 * kArch}, {outer, margin});
  shape.lineTo({outer, -kPageHeight - margin});
  shape.curveTo({middle, -kPageHeight - margin - 2 * kArch}, {0, -kPageHeight - margin});
  shape.lineTo({0, margin});
}

/// A bar that follows the curve of a page, as a line of text does.
void textLine(Shape& shape, Shape::Fill fill, double side, double height, double from, double to) {
  const auto lift = [](double place) { return 4 * kArch * place * (1 - place) * 0.9; };
  const auto at = [&](double place, double down) {
    return Point{side * kPageWidth * place, -kPageHeight + height - lift(place) + down};
  };
  constexpr double kThickness = 4;
  constexpr int kPieces = 6;
  shape.begin(fill, at(from, 0));
  for (int piece = 1; piece <= kPieces; ++piece) {
    shape.lineTo(at(from + (to - from) * piece / kPieces, 0));
  }
  for (int piece = kPieces; piece >= 0; --piece) {
    shape.lineTo(at(from + (to - from) * piece / kPieces, kThickness));
  }
  shape.lineTo(at(from, 0));
}

Shape::Fill paper(Shape& shape, double side) {
  return shape.linear({0, 0}, {side * kPageWidth, 0},
                      {{0, {206, 194, 170}},
                       {0.12, {243, 235, 216}},
                       {0.5, {255, 251, 240}},
                       {1, {240, 231, 210}}});
}

Shape leftPage() {
  Shape shape;
  pageOutline(shape, paper(shape, -1), -1, 0);
  const Shape::Fill ink = shape.solid({72, 84, 100, 120});
  const std::array<double, 8> ends = {0.86, 0.86, 0.86, 0.55, 0.86, 0.86, 0.86, 0.4};
  for (std::size_t line = 0; line < ends.size(); ++line) {
    // The lines of a left page begin at its outer edge.
    textLine(shape, ink, -1, 38 + 20 * static_cast<double>(line), 1 - ends.at(line), 0.86);
  }
  return shape;
}

/// The small landscape on the right page.
void picture(Shape& shape) {
  const double top = -kPageHeight + 12;
  shape.rectangle(
      shape.linear({0, top}, {0, top + 92}, {{0, {250, 196, 140}}, {1, {252, 232, 200}}}),
      {{26, top}, {146, top + 92}});
  shape.circle(shape.solid({255, 246, 214}), {110, top + 34}, 13);
  const std::array<Point, 6> far = {{{26, top + 92},
                                     {26, top + 62},
                                     {58, top + 36},
                                     {92, top + 66},
                                     {124, top + 50},
                                     {146, top + 92}}};
  shape.polygon(shape.solid({120, 140, 168}), far);
  shape.begin(shape.solid({52, 92, 104}), {26, top + 92});
  shape.lineTo({26, top + 78});
  shape.curveTo({66, top + 56}, {96, top + 78});
  shape.curveTo({124, top + 88}, {146, top + 70});
  shape.lineTo({146, top + 92});
  shape.lineTo({26, top + 92});
}

Shape rightPage() {
  Shape shape;
  pageOutline(shape, paper(shape, 1), 1, 0);
  picture(shape);
  const Shape::Fill ink = shape.solid({72, 84, 100, 120});
  const std::array<double, 4> ends = {0.86, 0.86, 0.86, 0.5};
  for (std::size_t line = 0; line < ends.size(); ++line) {
    textLine(shape, ink, 1, 134 + 20 * static_cast<double>(line), 0.14, ends.at(line));
  }
  return shape;
}

Shape cover() {
  Shape shape;
  const Shape::Fill leather =
      shape.linear({0, -kPageHeight}, {0, 0}, {{0, {142, 62, 52}}, {1, {92, 34, 36}}});
  pageOutline(shape, leather, -1, 7);
  pageOutline(shape, leather, 1, 7);
  return shape;
}

Shape gutter() {
  constexpr double kReach = 26;
  Shape shape;
  shape.rectangle(
      shape.linear({-kReach, 0}, {kReach, 0},
                   {{0, {60, 40, 20, 0}}, {0.5, {60, 40, 20, 110}}, {1, {60, 40, 20, 0}}}),
      {{-kReach, -kPageHeight + 1}, {kReach, -1}});
  return shape;
}

class BookScene {
public:
  BookScene()
      : movie_(kStage, 24, {16, 32, 58}), mote_(movie_.define(mote())),
        left_(movie_.define(leftPage())), right_(movie_.define(rightPage())),
        glow_(movie_.define(glow(260, {255, 226, 170, 150}))) {
    movie_.place(BackdropDepth, movie_.define(backdrop()), {});
    movie_.place(ShadowDepth, movie_.define(glow(1, {6, 16, 28, 235})),
                 {235, 30, 0, 0, {kSpine.x, kSpine.y + 16}});
    const Matrix book = Matrix::translation(kSpine);
    movie_.place(CoverDepth, movie_.define(cover()), book);
    movie_.place(LeftPageDepth, left_, book);
    movie_.place(RightPageDepth, right_, book);
    movie_.place(GutterDepth, movie_.define(gutter()), book);
  }

  Movie play() {
    for (int frame = 0; frame < kFrames; ++frame) {
      const double time = static_cast<double>(frame) / kFrames;
      placeLight(time);
      placeTurningPage(time);
      movie_.showFrame();
    }
    return movie_;
  }

private:
  void placeLight(double time) {
    movie_.place(LightConeDepth, glow_,
                 Matrix::scaling(1 + 0.04 * wave(time), {kSpine.x, kSpine.y - 150}),
                 {1, 0.85 + 0.15 * wave(time)});
    for (std::size_t i = 0; i < kMotes.size(); ++i) {
      const Mote& mote = kMotes.at(i);
      const Point drift = {mote.place.x + 7 * wave(time + mote.phase),
                           mote.place.y + 10 * wave(time + mote.phase + 0.25)};
      const double pulse = 0.75 + 0.25 * wave(time + 2 * mote.phase);
      movie_.place(static_cast<std::uint16_t>(FirstMoteDepth + i), mote_,
                   Matrix::scaling(mote.size, drift), {1, mote.strength * pulse});
    }
  }

  /// The page swings about the spine: first its front, then, past the upright, its back.
  void placeTurningPage(double time) {
    const double angle = std::numbers::pi * eased(time, 0.1, 0.8);
    const double reach = std::cos(angle);
    const double lift = std::sin(angle);
    const bool isFront = reach >= 0;
    const double width = std::max(std::abs(reach), 0.004);
    // The free edge rises towards the reader as the page stands up.
    const double rise = (isFront ? -1 : 1) * 0.24 * lift;
    movie_.place(TurningPageDepth, isFront ? right_ : left_,
                 {width, 1 + 0.05 * lift, 0, rise, kSpine}, {1 - 0.22 * lift, 1});
  }

  Movie movie_;
  std::uint16_t mote_;
  std::uint16_t left_;
  std::uint16_t right_;
  std::uint16_t glow_;
};

} // namespace

Movie bookScene() {
  return BookScene().play();
}

} // namespace vireonix::movie
