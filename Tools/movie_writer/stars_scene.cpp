#include "motion.h"
#include "scenes.h"

#include <array>
#include <vector>

namespace vireonix::movie {

namespace {

constexpr Point kStage = {640, 400};
constexpr int kFrames = 96;
constexpr int kStars = 90;

enum Depth : std::uint16_t {
  SkyDepth = 1,
  FirstStarDepth,
  MoonDepth = 100,
  FallingStarDepth,
  HillsDepth,
};

struct Star {
  Point place;
  double size;
  double phase;
  int beats; // twinkles a loop
};

/// The same stars on every run: a small linear congruential sequence scatters them.
std::vector<Star> scatteredStars() {
  std::uint32_t state = 20240229;
  const auto next = [&state] {
    state = state * 1664525U + 1013904223U;
    return static_cast<double>(state >> 8U) / (1U << 24U);
  };
  std::vector<Star> stars;
  for (int i = 0; i < kStars; ++i) {
    const double x = next() * kStage.x;
    const double y = next() * next() * 290;
    const double size = 2.0 + 5.0 * next() * next() * next();
    const double phase = next();
    stars.push_back({{x, y}, size, phase, next() < 0.5 ? 1 : 2});
  }
  return stars;
}

Shape sky() {
  Shape shape;
  shape.rectangle(
      shape.linear(
          {0, 0}, {0, kStage.y},
          {{0, {8, 12, 38}}, {0.45, {26, 38, 92}}, {0.75, {86, 80, 140}}, {1, {196, 138, 150}}}),
      {{}, kStage});
  return shape;
}

Shape star() {
  Shape shape;
  shape.circle(shape.radial({}, 1,
                            {{0, {255, 255, 255, 255}},
                             {0.22, {255, 250, 232, 235}},
                             {0.4, {214, 226, 255, 70}},
                             {1, {190, 210, 255, 0}}}),
               {}, 1);
  return shape;
}

Shape moon() {
  Shape shape;
  shape.circle(
      shape.radial(
          {}, 110,
          {{0, {255, 244, 214, 120}}, {0.3, {255, 240, 206, 70}}, {1, {255, 240, 206, 0}}}),
      {}, 110);
  shape.circle(shape.linear({-20, -26}, {24, 28}, {{0, {255, 252, 238}}, {1, {238, 220, 184}}}), {},
               30);
  const Shape::Fill sea = shape.solid({214, 196, 160, 110});
  shape.circle(sea, {-9, -6}, 8);
  shape.circle(sea, {9, 7}, 6);
  shape.circle(sea, {6, -13}, 4);
  return shape;
}

/// A head at the origin with a tail to the upper right.
Shape fallingStar() {
  Shape shape;
  const std::array<Point, 4> tail = {{{-1.6, -1.6}, {120, -62}, {121, -60}, {1.6, 1.6}}};
  shape.polygon(
      shape.linear({0, 0}, {121, -61}, {{0, {255, 255, 255, 230}}, {1, {255, 255, 255, 0}}}), tail);
  shape.circle(shape.radial({}, 6, {{0, {255, 255, 255, 255}}, {1, {220, 232, 255, 0}}}), {}, 6);
  return shape;
}

void hill(Shape& shape, Colour top, Colour foot, std::span<const Point> curve) {
  shape.begin(shape.linear({0, curve.front().y - 40}, {0, kStage.y}, {{0, top}, {1, foot}}),
              {0, kStage.y});
  shape.lineTo(curve.front());
  for (std::size_t i = 1; i + 1 < curve.size(); i += 2) {
    shape.curveTo(curve[i], curve[i + 1]);
  }
  shape.lineTo(kStage);
  shape.lineTo({0, kStage.y});
}

void fir(Shape& shape, Point foot, double height) {
  for (int tier = 0; tier < 3; ++tier) {
    const double top = foot.y - height + tier * height * 0.24;
    const double half = height * (0.13 + 0.07 * tier);
    const std::array<Point, 3> corners = {{{foot.x, top},
                                           {foot.x + half, top + height * 0.46},
                                           {foot.x - half, top + height * 0.46}}};
    // A fill each: outlines of one fill that overlap would cut holes.
    shape.polygon(shape.solid({14, 17, 40}), corners);
  }
}

Shape hills() {
  Shape shape;
  hill(shape, {92, 84, 136}, {70, 66, 116},
       std::array<Point, 7>{
           {{0, 310}, {90, 258}, {190, 304}, {300, 346}, {420, 292}, {520, 250}, {640, 306}}});
  hill(shape, {50, 54, 98}, {36, 40, 78},
       std::array<Point, 5>{{{0, 334}, {150, 296}, {320, 346}, {470, 384}, {640, 330}}});
  hill(shape, {22, 26, 54}, {10, 12, 30},
       std::array<Point, 5>{{{0, 362}, {170, 388}, {330, 370}, {500, 348}, {640, 376}}});
  for (const Point& place : {Point{54, 72}, {92, 48}, {118, 60}, {522, 66}, {560, 86}, {596, 54}}) {
    fir(shape, {place.x, 384}, place.y);
  }
  return shape;
}

} // namespace

Movie starsScene() {
  Movie movie(kStage, 24, {8, 12, 38});
  const std::vector<Star> stars = scatteredStars();
  const std::uint16_t starShape = movie.define(star());
  const std::uint16_t falling = movie.define(fallingStar());
  movie.place(SkyDepth, movie.define(sky()), {});
  movie.place(MoonDepth, movie.define(moon()), Matrix::translation({498, 96}));
  movie.place(HillsDepth, movie.define(hills()), {});
  for (int frame = 0; frame < kFrames; ++frame) {
    const double time = static_cast<double>(frame) / kFrames;
    for (std::size_t i = 0; i < stars.size(); ++i) {
      const Star& one = stars[i];
      const double glow = 0.62 + 0.38 * wave(one.beats * time + one.phase);
      movie.place(static_cast<std::uint16_t>(FirstStarDepth + i), starShape,
                  Matrix::scaling(one.size * (0.85 + 0.15 * glow), one.place), {1, glow});
    }
    const double flight = eased(time, 0.3, 0.62);
    const double shine = eased(time, 0.3, 0.38) * (1 - eased(time, 0.5, 0.62));
    movie.place(FallingStarDepth, falling,
                Matrix::translation({400 - 300 * flight, 30 + 152 * flight}), {1, shine});
    movie.showFrame();
  }
  return movie;
}

} // namespace vireonix::movie
