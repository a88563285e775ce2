#include "nature.h"
#include "paintings.h"

#include <vector>

namespace vireonix::painting {

namespace {

constexpr int kWidth = 1200;
constexpr int kHeight = 750;
constexpr float kHorizon = 470;

void paintSky(Canvas& picture) {
  const Gradient sky = {{0, hex(0x070B26)},
                        {0.45F, hex(0x18204E)},
                        {0.75F, hex(0x43386C)},
                        {0.92F, hex(0x7C4F78)},
                        {1, hex(0xA96A78)}};
  const Noise clouds(5);
  const Noise dust(6);
  picture.shade([&](float x, float y, Rgb) {
    // The Milky Way rises from the lower left, split by lanes of dust.
    const float along = 0.62F * x - 0.78F * y;
    const float across = (0.78F * x + 0.62F * y - 640) / 120 + 0.5F * dust.at(along / 220, 1);
    const float band = std::exp(-across * across);
    const float stuff = 0.62F + 0.7F * clouds.fractal(along / 150, across * 1.1F, 5);
    const float lane = std::exp(-7 * (across - 0.1F) * (across - 0.1F));
    const float dark = lane * smooth(-0.25F, 0.5F, dust.fractal(along / 90, across * 1.6F, 4));
    const float light = band * std::clamp(stuff, 0.0F, 1.2F) * (1 - 0.75F * dark);
    const Rgb tone = mix(hex(0x8F9CE8), hex(0xF0C7C0), smooth(-0.3F, 0.5F, across));
    return screen(sky.at(y / kHorizon), tone * (0.42F * light));
  });
  Dice dice(14);
  scatterStars(picture, dice, 1500, kHorizon);
  for (int star = 0; star < 7; ++star) {
    const Place place = {dice.between(60, kWidth - 60), dice.between(30, 260)};
    picture.glow(place, dice.between(9, 17), hex(0xDDE6FF), 0.9F);
  }
}

struct Dune {
  std::vector<Place> peaks; // with one beyond either edge of the picture
  float sag;                // how deep the crest hangs between two peaks
  Rgb light;
  Rgb shade;
  float haze;
  std::uint32_t seed;
};

float crestAt(const Dune& dune, float x) {
  for (std::size_t i = 1; i < dune.peaks.size(); ++i) {
    const Place& right = dune.peaks[i];
    const Place& left = dune.peaks[i - 1];
    if (x <= right.x) {
      const float part = (x - left.x) / (right.x - left.x);
      const float bow = 4 * part * (1 - part);
      // Steep in the lee of the left peak, gentle up to the right one.
      return std::lerp(left.y, right.y, smooth(0, 1, part)) + dune.sag * std::pow(bow, 0.8F);
    }
  }
  return dune.peaks.back().y;
}

/// How far a place lies in the moon's shadow: 1 on the slip faces, which begin at an edge that
/// winds down from each peak and end at the foot of the next dune.
float shadowAt(const Dune& dune, const Noise& sand, float x, float y) {
  float shadow = 0;
  for (std::size_t i = 0; i + 1 < dune.peaks.size(); ++i) {
    const Place& peak = dune.peaks[i];
    const float valley = (peak.x + dune.peaks[i + 1].x) / 2;
    const float down = y - peak.y;
    const float under = y - crestAt(dune, valley);
    const float bend = 0.42F * down + 30 * std::sin(down / 58) + 22 * sand.at(down / 90, peak.x);
    const float edge = peak.x + bend;
    const float foot = valley + 40 - 1.5F * under - 30 * std::sin(under / 70);
    const float soft = 2.5F + 0.1F * std::max(0.0F, down);
    const float face = smooth(-soft, soft, x - edge) * smooth(-18, 18, foot - x);
    shadow = std::max(shadow, face);
  }
  return shadow;
}

void paintDune(Canvas& picture, const Dune& dune) {
  const Noise sand(dune.seed);
  const auto crest = [&](float x) { return crestAt(dune, x); };
  picture.shadeBelow(crest, [&](float x, float y, float depth, Rgb) {
    const float lit = 1 - shadowAt(dune, sand, x, y);
    const float wave =
        std::sin((y + 0.18F * x + 26 * sand.fractal(x / 150, y / 70, 2)) / (1.8F + 0.009F * depth));
    const float ripple = 0.03F * wave * smooth(0, 60, depth) * (0.4F + lit);
    const float sheen = 0.66F + 0.34F * std::exp(-depth / 90);
    const Rgb tone = mix(dune.shade, dune.light, lit * sheen);
    const Rgb body = tone * (1 + ripple + 0.05F * sand.fractal(x / 60, y / 26, 3));
    return mix(body, hex(0x8E5F7C), dune.haze);
  });
}

/// A tent with a lamp inside, and someone in front of it who looks at the sky.
void paintCamp(Canvas& picture) {
  const Place camp = {828, 610};
  picture.glow({camp.x + 6, camp.y - 6}, 150, hex(0xFFB25E), 0.55F);
  Layer sheet = picture.sheet();
  cairo_t* pen = sheet.pen();
  cairo_pattern_t* cloth =
      cairo_pattern_create_radial(camp.x + 8, camp.y - 8, 4, camp.x, camp.y - 10, 62);
  cairo_pattern_add_color_stop_rgb(cloth, 0, 1, 0.91, 0.62);
  cairo_pattern_add_color_stop_rgb(cloth, 0.5, 0.95, 0.62, 0.3);
  cairo_pattern_add_color_stop_rgb(cloth, 1, 0.48, 0.22, 0.22);
  cairo_set_source(pen, cloth);
  cairo_pattern_destroy(cloth);
  cairo_move_to(pen, camp.x, camp.y - 50);
  cairo_curve_to(pen, camp.x - 16, camp.y - 24, camp.x - 34, camp.y - 6, camp.x - 52, camp.y + 6);
  cairo_line_to(pen, camp.x + 50, camp.y + 6);
  cairo_curve_to(pen, camp.x + 34, camp.y - 8, camp.x + 16, camp.y - 26, camp.x, camp.y - 50);
  cairo_fill(pen);
  sheet.use(hex(0x3A1B2B));
  cairo_move_to(pen, camp.x, camp.y - 40);
  cairo_line_to(pen, camp.x + 13, camp.y + 6);
  cairo_line_to(pen, camp.x - 9, camp.y + 6);
  cairo_fill(pen);
  const float x = camp.x - 92;
  cairo_arc(pen, x - 1, camp.y - 27, 4.6, 0, 6.2832);
  cairo_fill(pen);
  cairo_set_line_width(pen, 8);
  cairo_move_to(pen, x, camp.y - 18);
  cairo_line_to(pen, x, camp.y - 8);
  cairo_stroke(pen);
  cairo_set_line_width(pen, 3.4);
  cairo_move_to(pen, x - 2, camp.y - 6);
  cairo_line_to(pen, x - 2.5F, camp.y + 8);
  cairo_move_to(pen, x + 2, camp.y - 6);
  cairo_line_to(pen, x + 2.5F, camp.y + 8);
  cairo_stroke(pen);
  picture.lay(sheet);
}

} // namespace

Canvas paintDunes() {
  Canvas picture(kWidth, kHeight);
  paintSky(picture);
  paintDune(picture, {{{-180, 470}, {150, 438}, {520, 452}, {860, 430}, {1180, 446}, {1420, 470}},
                      22,
                      hex(0x9A7296),
                      hex(0x4E3D6E),
                      0.35F,
                      3});
  paintDune(picture, {{{-260, 540}, {330, 452}, {760, 506}, {1090, 468}, {1500, 540}},
                      40,
                      hex(0xA97C92),
                      hex(0x3A2E5C),
                      0.16F,
                      4});
  paintDune(picture, {{{-220, 480}, {40, 500}, {620, 548}, {1330, 500}, {1600, 560}},
                      62,
                      hex(0xB58690),
                      hex(0x2D2450),
                      0.06F,
                      7});
  paintCamp(picture);
  paintDune(picture, {{{-420, 700}, {380, 604}, {1010, 676}, {1640, 600}},
                      46,
                      hex(0xA4747F),
                      hex(0x1E193C),
                      0,
                      9});
  picture.vignette(0.3F);
  return picture;
}

} // namespace vireonix::painting
