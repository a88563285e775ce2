#include "nature.h"
#include "paintings.h"
#include "water.h"

namespace vireonix::painting {

namespace {

constexpr int kWidth = 1600;
constexpr int kHeight = 1000;
constexpr float kShore = 600;
constexpr Rgb kHaze = hex(0xF3DCC2);

struct Range {
  float foot;    // the row in which it stands
  float height;  // of its highest crests
  float stretch; // pixels from crest to crest
  std::uint32_t seed;
  Rgb light;
  Rgb shade;
  float haze;
  float snow; // the part of its height above which snow lies; 1 for none
};

void paintSky(Canvas& picture) {
  const Gradient sky = {{0, hex(0x4E769F)},
                        {0.32F, hex(0x84A8C4)},
                        {0.6F, hex(0xD6C9C4)},
                        {0.8F, hex(0xF6D3AC)},
                        {1, hex(0xFCE8C8)}};
  const Noise clouds(11);
  picture.shade([&](float x, float y, Rgb) {
    const float place = y / kShore;
    const float bend = 60 * clouds.at(x / 500, y / 300);
    const float wisps = clouds.fractal(x / 380, (y + bend) / 58, 6);
    const float cover =
        smooth(0.02F, 0.62F, wisps) * smooth(0.02F, 0.3F, place) * (1 - smooth(0.55F, 0.9F, place));
    const Rgb lit = mix(hex(0xF9D9CB), hex(0xFFF3DF), smooth(0.1F, 0.7F, wisps));
    return mix(sky.at(place), lit, 0.8F * cover);
  });
  picture.glow({1060, 540}, 820, hex(0xFFD79A), 0.75F);
  picture.glow({1060, 540}, 260, hex(0xFFF2CF), 0.7F);
}

void paintRange(Canvas& picture, const Range& range) {
  const Noise shape(range.seed);
  const Noise relief(range.seed + 1);
  const auto crest = [&](float x) {
    const float broad = shape.ridged(x / range.stretch, 0.5F, 6);
    const float fine = shape.fractal(x / 26, 7.5F, 3) * range.height * 0.018F;
    return range.foot - range.height * (0.2F + 0.95F * broad) - fine;
  };
  picture.shadeBelow(crest, [&](float x, float y, float depth, Rgb) {
    // Gullies run down from the crest; the morning light comes from the right.
    const float u = (x + 0.35F * depth) / 110;
    const float v = y / 190;
    const float slope = relief.ridged(u, v, 5) - relief.ridged(u + 0.13F, v - 0.05F, 5);
    const float lit = smooth(-0.22F, 0.22F, slope);
    Rgb rock = mix(range.shade, range.light, lit);
    const float high = (range.foot - y) / range.height;
    const float snowline = range.snow + 0.22F * relief.fractal(x / 60, y / 60, 4);
    const Rgb snow = mix(hex(0x93A6C4), hex(0xFFF0E2), lit);
    rock = mix(rock, snow, range.snow < 1 ? smooth(snowline - 0.05F, snowline + 0.05F, high) : 0);
    const float low = 1 - std::clamp(high, 0.0F, 1.0F);
    return mix(rock, kHaze, std::clamp(range.haze + 0.6F * low * low, 0.0F, 1.0F));
  });
}

/// A wooded bank: firs along a line, darker the nearer they stand.
void paintWoods(Canvas& picture, std::uint32_t seed, float rise, float tall, Rgb colour,
                float haze) {
  const Noise ground(seed);
  Dice dice(seed);
  const auto bank = [&](float x) {
    const float middle = std::abs(x - 820) / 800; // low in the middle, where the water opens
    return kShore - rise * (0.08F + std::pow(middle, 1.6F)) - 12 * ground.fractal(x / 160, 1.5F, 3);
  };
  Layer sheet = picture.sheet();
  sheet.use(hex(0x000000));
  walk(
      -20, kWidth + 20, [&](float) { return dice.between(3, 9); },
      [&](float x) {
        const float size =
            tall * dice.between(0.5F, 1.15F) * (0.55F + 0.5F * std::abs(x - 820) / 800);
        drawFir(sheet, dice, {x, bank(x) + dice.between(6, 18)}, size);
      });
  const auto tone = [&](float x, float y) {
    const float patch = 0.12F * ground.fractal(x / 34, y / 22, 3);
    const float low = smooth(kShore - rise - tall, kShore, y);
    return mix(colour * (1 + patch), kHaze, std::clamp(haze + 0.5F * low * low * low, 0.0F, 1.0F));
  };
  picture.fill(sheet, [&](float x, float y, Rgb) { return tone(x, y); });
  picture.shadeBelow(bank, [&](float x, float y, float, Rgb) { return tone(x, y); });
}

void paintShoreLight(Canvas& picture) {
  picture.shade(static_cast<int>(kShore) - 3, static_cast<int>(kShore) + 5,
                [&](float, float y, Rgb under) {
                  const float line = 1 - std::abs(y - kShore - 1) / 4;
                  return mix(under, hex(0xFFF1DA), 0.5F * std::max(0.0F, line));
                });
}

/// A landing stage that leads out from the lower right.
void paintJetty(Canvas& picture) {
  Layer sheet = picture.sheet();
  cairo_t* pen = sheet.pen();
  Dice dice(5);
  const auto edge = [](float along, float side) {
    const float far = 1 / (1 + 3.4F * along); // perspective: 1 at the viewer
    const float part = (far - 0.2273F) / 0.7727F;
    return Place{std::lerp(700.0F, 1130.0F, part) + side * std::lerp(46.0F, 205.0F, part),
                 std::lerp(742.0F, 1012.0F, part)};
  };
  for (const float along : {1.0F, 0.62F, 0.3F, 0.08F}) { // posts, and their reflections
    for (const float side : {-1.0F, 1.0F}) {
      const Place top = edge(along, side);
      const float scale = 1 / (1 + 3.4F * along);
      sheet.use(hex(0x14242C), 0.55F);
      cairo_rectangle(pen, top.x - 11 * scale, top.y, 22 * scale, 190 * scale);
      cairo_fill(pen);
      sheet.use(hex(0x33281F));
      cairo_rectangle(pen, top.x - 11 * scale, top.y - 70 * scale, 22 * scale, 120 * scale);
      cairo_fill(pen);
      sheet.use(hex(0xB98F63), 0.7F);
      cairo_rectangle(pen, top.x + 5 * scale, top.y - 70 * scale, 5 * scale, 118 * scale);
      cairo_fill(pen);
    }
  }
  constexpr int kPlanks = 34;
  for (int plank = kPlanks - 1; plank >= 0; --plank) {
    const float start = static_cast<float>(plank) / kPlanks;
    const float end = start + 0.95F / kPlanks;
    sheet.use(mix(hex(0x5E4734), hex(0xA98663), dice.between(0.1F, 0.75F) + 0.2F * start));
    const float slip = dice.between(-0.015F, 0.015F);
    for (const Place corner : {edge(start, -1 + slip), edge(end, -1 + slip), edge(end, 1 + slip),
                               edge(start, 1 + slip)}) {
      cairo_line_to(pen, corner.x, corner.y);
    }
    cairo_close_path(pen);
    cairo_fill(pen);
  }
  picture.lay(sheet);
}

/// Reeds in the near corner.
void paintReeds(Canvas& picture) {
  Layer sheet = picture.sheet();
  cairo_t* pen = sheet.pen();
  Dice dice(19);
  for (int blade = 0; blade < 190; ++blade) {
    const float x = 330 * dice.between(0, 1) * dice.between(0.1F, 1) - 20;
    const float tall = dice.between(120, 300) * (1 - x / 620);
    const float bend = dice.between(-50, 80);
    sheet.use(mix(hex(0x10222A), hex(0x4B5A43), dice.between(0, 1)));
    cairo_set_line_width(pen, dice.between(1.6F, 4.2F));
    cairo_move_to(pen, x, 1010);
    cairo_curve_to(pen, x, 1000 - tall * 0.5F, x + bend * 0.3F, 1000 - tall * 0.8F, x + bend,
                   1000 - tall);
    cairo_stroke(pen);
    if (dice.chance(0.13F)) {
      sheet.use(hex(0x4A3326));
      cairo_set_line_width(pen, 9);
      cairo_move_to(pen, x + bend, 1000 - tall);
      cairo_line_to(pen, x + bend * 1.05F, 1000 - tall - 30);
      cairo_stroke(pen);
    }
  }
  picture.lay(sheet);
}

} // namespace

Canvas paintLake() {
  Canvas picture(kWidth, kHeight);
  paintSky(picture);
  paintRange(picture, {590, 330, 420, 21, hex(0xC9B6B4), hex(0x7D8AA8), 0.34F, 0.5F});
  paintRange(picture, {596, 215, 330, 33, hex(0xB79C92), hex(0x5F7391), 0.22F, 0.86F});
  driftMist(picture, Noise(3), 560, 90, hex(0xFFF0DC), 0.55F);
  paintRange(picture, {600, 130, 300, 47, hex(0x8F8A7C), hex(0x47627A), 0.14F, 1});
  paintWoods(picture, 51, 60, 46, hex(0x4C6C76), 0.22F);
  driftMist(picture, Noise(9), 590, 44, hex(0xFFF0DC), 0.65F);
  paintWoods(picture, 57, 112, 96, hex(0x2A4C57), 0.1F);
  paintWoods(picture, 58, 66, 84, hex(0x20404B), 0.05F);
  paintWoods(picture, 59, 28, 66, hex(0x18343F), 0.02F);
  paintWater(picture, Noise(71), {kShore, 1, 0, 0.93F, hex(0x1F4258), 0.5F, hex(0xFDEBD0), 0.45F});
  paintShoreLight(picture);
  driftMist(picture, Noise(15), 606, 26, hex(0xFFEFDC), 0.6F);
  paintJetty(picture);
  paintReeds(picture);
  Layer birds = picture.sheet();
  birds.use(hex(0x32475C), 0.8F);
  for (const Place place : {Place{520, 190}, {560, 168}, {604, 182}, {648, 150}, {486, 216}}) {
    drawBird(birds, place, 24, 0.1F);
  }
  picture.lay(birds);
  picture.vignette(0.22F);
  return picture;
}

} // namespace vireonix::painting
