#include "nature.h"
#include "paintings.h"

#include <array>

namespace vireonix::painting {

namespace {

constexpr int kWidth = 1600;
constexpr int kHeight = 1000;
constexpr Place kSun = {520, 520};
constexpr Rgb kMist = hex(0xFFE9D2);

void paintSky(Canvas& picture) {
  const Gradient sky = {{0, hex(0x5A9DB8)},     {0.28F, hex(0x9CC7CB)}, {0.5F, hex(0xF1DCC0)},
                        {0.66F, hex(0xFCC79E)}, {0.8F, hex(0xF9AE94)},  {1, hex(0xF4A08E)}};
  const Noise clouds(91);
  picture.shade([&](float x, float y, Rgb) {
    const float place = y / 780;
    const float bend = 80 * clouds.at(x / 600, y / 260);
    const float wisps = clouds.fractal(x / 460, (y + bend) / 70, 6);
    const float cover = smooth(0.1F, 0.7F, wisps) * (1 - smooth(0.6F, 0.8F, place));
    return mix(sky.at(place), hex(0xFFF4E4), 0.75F * cover);
  });
  picture.glow(kSun, 900, hex(0xFFE0A6), 0.7F);
  picture.glow(kSun, 220, hex(0xFFF6DA), 0.85F);
  picture.shade([](float x, float y, Rgb under) {
    const float edge = std::hypot(x - kSun.x, y - kSun.y);
    return mix(under, hex(0xFFFBEA), 1 - smooth(50, 54, edge));
  });
}

struct Ridge {
  float level;
  float height;
  float stretch;
  std::uint32_t seed;
  Rgb top;
  float mist;  // how far its foot fades
  float trees; // their height; 0 for bare
};

void paintRidge(Canvas& picture, const Ridge& ridge) {
  const Noise ground(ridge.seed);
  Dice dice(ridge.seed);
  const auto crest = [&](float x) {
    return ridge.level - ridge.height * (0.5F + 0.75F * ground.fractal(x / ridge.stretch, 0.5F, 5));
  };
  const auto tone = [&](float x, float y) {
    const float low = smooth(ridge.level - ridge.height, ridge.level + ridge.height * 1.1F, y);
    const float sunny = 0.3F * std::exp(-std::abs(x - kSun.x) / 420);
    const float patch = 0.06F * ground.fractal(x / 60, y / 34, 3);
    return mix(mix(ridge.top * (1 + patch), hex(0xFFC590), sunny * (1 - low)), kMist,
               ridge.mist * low);
  };
  Layer sheet = picture.sheet();
  sheet.use(hex(0x000000));
  for (float x = -30; ridge.trees > 0 && x < kWidth + 30;
       x += ridge.trees * dice.between(0.1F, 0.4F)) {
    drawFir(sheet, dice, {x, crest(x) + ridge.trees * 0.12F},
            ridge.trees * dice.between(0.5F, 1.15F));
  }
  picture.fill(sheet, [&](float x, float y, Rgb) { return tone(x, y); });
  picture.shadeBelow(crest, [&](float x, float y, float, Rgb) { return tone(x, y); });
}

struct Balloon {
  Place centre; // of its round part
  float size;   // half of its width
  std::array<Rgb, 3> stripes;
  float haze;
};

/// The outline of the bag, narrowed to one part of its width.
void bagOutline(cairo_t* pen, double narrow) {
  cairo_move_to(pen, 0, -1);
  cairo_curve_to(pen, 0.56 * narrow, -1, narrow, -0.56, narrow, 0);
  cairo_curve_to(pen, narrow, 0.5, 0.42 * narrow, 0.92, 0.17 * narrow, 1.24);
  cairo_line_to(pen, -0.17 * narrow, 1.24);
  cairo_curve_to(pen, -0.42 * narrow, 0.92, -narrow, 0.5, -narrow, 0);
  cairo_curve_to(pen, -narrow, -0.56, -0.56 * narrow, -1, 0, -1);
}

void drawBag(Layer& sheet, const Balloon& balloon) {
  cairo_t* pen = sheet.pen();
  constexpr std::array<double, 6> kGores = {1, 0.93, 0.76, 0.54, 0.32, 0.11};
  for (std::size_t gore = 0; gore < kGores.size(); ++gore) {
    bagOutline(pen, kGores.at(gore));
    sheet.use(mix(balloon.stripes.at(gore % balloon.stripes.size()), kMist, balloon.haze));
    cairo_fill(pen);
  }
  // Rounded by light from the side of the sun and shade on the other.
  cairo_pattern_t* round = cairo_pattern_create_radial(-0.42, -0.3, 0.1, 0, 0, 1.3);
  cairo_pattern_add_color_stop_rgba(round, 0, 1, 0.97, 0.85, 0.5);
  cairo_pattern_add_color_stop_rgba(round, 0.45, 1, 0.9, 0.75, 0.05);
  cairo_pattern_add_color_stop_rgba(round, 1, 0.25, 0.08, 0.2, 0.5 * (1 - balloon.haze));
  bagOutline(pen, 1);
  cairo_set_source(pen, round);
  cairo_fill(pen);
  cairo_pattern_destroy(round);
}

void drawBalloon(Layer& sheet, const Balloon& balloon) {
  cairo_t* pen = sheet.pen();
  cairo_save(pen);
  cairo_translate(pen, balloon.centre.x, balloon.centre.y);
  cairo_scale(pen, balloon.size, balloon.size);
  sheet.use(mix(hex(0x4A3433), kMist, balloon.haze));
  cairo_set_line_width(pen, 0.014);
  for (const double side : {-1.0, -0.35, 0.35, 1.0}) {
    cairo_move_to(pen, 0.15 * side, 1.22);
    cairo_line_to(pen, 0.12 * side, 1.54);
  }
  cairo_stroke(pen);
  drawBag(sheet, balloon);
  sheet.use(mix(hex(0x7A4B2E), kMist, balloon.haze));
  cairo_rectangle(pen, -0.135, 1.53, 0.27, 0.2);
  cairo_fill(pen);
  sheet.use(mix(hex(0xB98353), kMist, balloon.haze));
  cairo_rectangle(pen, -0.145, 1.51, 0.29, 0.05);
  cairo_fill(pen);
  cairo_restore(pen);
}

} // namespace

Canvas paintWelcome() {
  Canvas picture(kWidth, kHeight);
  paintSky(picture);
  Layer balloons = picture.sheet();
  drawBalloon(balloons, {{226, 330}, 34, {hex(0xE58A5C), hex(0xFFF1D6), hex(0xC95F55)}, 0.34F});
  drawBalloon(balloons, {{780, 214}, 50, {hex(0x4F8FA8), hex(0xFFF1D6), hex(0xF2B65E)}, 0.2F});
  drawBalloon(balloons, {{1000, 452}, 25, {hex(0x9A6A9C), hex(0xFFF1D6), hex(0xE58A5C)}, 0.42F});
  balloons.use(hex(0x4D5D6E), 0.75F);
  for (const Place bird : {Place{610, 330}, {650, 312}, {574, 346}, {684, 330}}) {
    drawBird(balloons, bird, 26, 0.06F);
  }
  picture.lay(balloons);
  paintRidge(picture, {640, 110, 420, 41, hex(0xD59C96), 0.75F, 0});
  paintRidge(picture, {700, 120, 360, 42, hex(0xB88A92), 0.8F, 0});
  driftMist(picture, Noise(7), 700, 80, kMist, 0.55F);
  paintRidge(picture, {770, 120, 480, 43, hex(0x8B7C90), 0.8F, 18});
  driftMist(picture, Noise(8), 790, 70, kMist, 0.6F);
  paintRidge(picture, {850, 130, 430, 44, hex(0x5B6A80), 0.7F, 40});
  driftMist(picture, Noise(9), 880, 80, kMist, 0.5F);
  paintRidge(picture, {960, 130, 520, 45, hex(0x2B465A), 0.24F, 86});
  Layer nearest = picture.sheet();
  drawBalloon(nearest, {{1262, 352}, 190, {hex(0xD8483F), hex(0xFFF0D0), hex(0xF2A33A)}, 0.02F});
  picture.lay(nearest);
  picture.vignette(0.16F);
  return picture;
}

} // namespace vireonix::painting
