#include "nature.h"
#include "paintings.h"
#include "water.h"

namespace vireonix::painting {

namespace {

constexpr int kWidth = 1600;
constexpr int kHeight = 1000;
constexpr float kHorizon = 570;
constexpr Place kSun = {720, 508};

Rgb skyAt(const Gradient& sky, float x, float y) {
  const float away = std::abs(x - kSun.x) / kWidth;
  return mix(sky.at(y / kHorizon), hex(0x4A2A5E), 0.75F * away * away + 0.25F * away);
}

void paintSky(Canvas& picture) {
  const Gradient sky = {{0, hex(0x2A2556)},     {0.28F, hex(0x6B3C78)}, {0.52F, hex(0xC4576F)},
                        {0.75F, hex(0xF3854F)}, {0.92F, hex(0xFDBC63)}, {1, hex(0xFFDB93)}};
  picture.shade([&](float x, float y, Rgb) { return skyAt(sky, x, y); });
  picture.glow(kSun, 760, hex(0xFFB45E), 0.62F);
  picture.glow(kSun, 230, hex(0xFFE7B0), 0.8F);
}

/// Banks of cloud, dark above and lit from the low sun.
void paintClouds(Canvas& picture) {
  const Noise billows(7);
  const Noise drift(8);
  const auto density = [&](float x, float y) {
    const float bend = 70 * drift.fractal(x / 420, y / 160, 2);
    return billows.fractal((x + bend) / 340, (y + bend * 0.4F) / 74, 6);
  };
  picture.shade(0, static_cast<int>(kHorizon), [&](float x, float y, Rgb under) {
    const float place = y / kHorizon;
    const float thick = density(x, y) + 0.12F - 0.3F * std::abs(place - 0.4F);
    const float cover = smooth(0.02F, 0.4F, thick) * (1 - smooth(0.8F, 0.98F, place));
    if (cover <= 0) {
      return under;
    }
    const float away = std::hypot(kSun.x - x, kSun.y - y) + 1;
    const float toward = density(x + (kSun.x - x) / away * 22, y + (kSun.y - y) / away * 22);
    const float lit = smooth(-0.12F, 0.3F, thick - 0.12F - toward);
    const float warmth = std::exp(-away / 620);
    const Rgb body = mix(hex(0x54305F), hex(0xB4526A), warmth);
    const Rgb edge = mix(hex(0xE87A78), hex(0xFFD58A), warmth);
    return mix(under, mix(body, edge, lit), 0.88F * cover);
  });
}

void paintSun(Canvas& picture) {
  picture.shade([&](float x, float y, Rgb under) {
    const float edge = std::hypot(x - kSun.x, y - kSun.y);
    return mix(under, hex(0xFFF6D8), 1 - smooth(44, 47, edge));
  });
}

/// The road of light below the sun.
void paintGlitter(Canvas& picture) {
  const Noise ripples(29);
  picture.shade(static_cast<int>(kHorizon), kHeight, [&](float x, float y, Rgb under) {
    const float near = (y - kHorizon) / (kHeight - kHorizon);
    const float row = 900 / (near + 0.04F);
    const float wave = ripples.fractal(x / (16 + 150 * near), row / 26, 3);
    const float reach = 36 + 330 * near;
    const float off = (x - kSun.x) / reach;
    const float road = std::exp(-off * off);
    const float spark = smooth(0.5F - 0.62F * road, 0.75F - 0.5F * road, wave);
    const Rgb light = mix(hex(0xFFDB94), hex(0xFF8E55), std::min(1.0F, std::abs(off) * 0.7F));
    return screen(under, light * (spark * (0.16F + 0.84F * road) * (0.95F - 0.45F * near)));
  });
}

void paintHeadland(Canvas& picture) {
  const Noise rock(41);
  const auto crest = [&](float x) {
    const float rise = smooth(1120, 1420, x);
    const float cliff = 10 * rock.fractal(x / 40, 3.3F, 4) + 24 * rock.fractal(x / 150, 9, 3);
    return kHorizon + 22 - rise * (128 + 26 * smooth(1420, 1600, x)) - cliff * rise;
  };
  const auto foot = [&](float x) { return kHorizon + 12 + 20 * smooth(1120, 1600, x); };
  picture.shadeBelow(crest, [&](float x, float y, float depth, Rgb under) {
    const float facets = 0.5F + rock.fractal((x - 0.8F * y) / 70, (y + 0.3F * x) / 34, 5);
    const Rgb stone = mix(hex(0x281934), hex(0x5E3552), smooth(-0.2F, 1.3F, facets));
    const Rgb lit = mix(stone, hex(0xF08A5A), 0.6F * std::exp(-depth / 9));
    return mix(lit, under, smooth(-3, 3, y - foot(x) - 4 * rock.at(x / 18, 1)));
  });
}

void paintLighthouse(Canvas& picture) {
  Layer beams = picture.sheet();
  const Place lamp = {1430, 276};
  for (const float side : {-1.0F, 1.0F}) {
    cairo_pattern_t* fade = cairo_pattern_create_linear(lamp.x, 0, lamp.x + side * 700, 0);
    cairo_pattern_add_color_stop_rgba(fade, 0, 1, 0.92, 0.7, 0.5);
    cairo_pattern_add_color_stop_rgba(fade, 1, 1, 0.92, 0.7, 0);
    cairo_set_source(beams.pen(), fade);
    cairo_pattern_destroy(fade);
    cairo_move_to(beams.pen(), lamp.x, lamp.y);
    cairo_line_to(beams.pen(), lamp.x + side * 820, lamp.y - 92);
    cairo_line_to(beams.pen(), lamp.x + side * 820, lamp.y + 14);
    cairo_fill(beams.pen());
  }
  beams.blur(10);
  picture.shine(beams, 0.7F);

  Layer sheet = picture.sheet();
  cairo_t* pen = sheet.pen();
  for (int band = 0; band < 5; ++band) {
    const double top = lamp.y + 22 + band * 35.0;
    const double wide = 15 + band * 1.9;
    sheet.use(band % 2 == 0 ? hex(0xC08F86) : hex(0x7E2C40));
    cairo_move_to(pen, lamp.x - wide, top);
    cairo_line_to(pen, lamp.x + wide, top);
    cairo_line_to(pen, lamp.x + wide + 1.9, top + 36);
    cairo_line_to(pen, lamp.x - wide - 1.9, top + 36);
    cairo_fill(pen);
  }
  sheet.use(hex(0x2B1B38), 0.5F); // the side away from the sun
  cairo_rectangle(pen, lamp.x + 4, lamp.y + 22, 19, 176);
  cairo_fill(pen);
  sheet.use(hex(0x2B1B38));
  cairo_rectangle(pen, lamp.x - 21, lamp.y + 14, 42, 8);
  cairo_rectangle(pen, lamp.x - 12, lamp.y - 14, 24, 4);
  cairo_move_to(pen, lamp.x - 15, lamp.y - 12);
  cairo_line_to(pen, lamp.x, lamp.y - 34);
  cairo_line_to(pen, lamp.x + 15, lamp.y - 12);
  cairo_fill(pen);
  sheet.use(hex(0xFFF3C8));
  cairo_rectangle(pen, lamp.x - 10, lamp.y - 10, 20, 24);
  cairo_fill(pen);
  picture.lay(sheet);
  picture.glow(lamp, 120, hex(0xFFE3A0), 0.9F);
}

void drawBoat(Layer& sheet, Place at, float size, float flip) {
  cairo_t* pen = sheet.pen();
  cairo_save(pen);
  cairo_translate(pen, at.x, at.y);
  cairo_scale(pen, size, size * flip);
  sheet.use(hex(0x2A1836), flip > 0 ? 1 : 0.5F);
  cairo_move_to(pen, -52, -12);
  cairo_curve_to(pen, -40, 6, 30, 8, 56, -14);
  cairo_line_to(pen, -52, -12);
  cairo_rectangle(pen, -3, -150, 3, 142);
  cairo_fill(pen);
  sheet.use(hex(0x5B2C50), flip > 0 ? 0.96F : 0.4F);
  cairo_move_to(pen, 2, -148);
  cairo_curve_to(pen, 34, -96, 50, -52, 52, -22);
  cairo_line_to(pen, 2, -20);
  cairo_fill(pen);
  sheet.use(hex(0xA84E62), flip > 0 ? 0.96F : 0.4F);
  cairo_move_to(pen, -6, -136);
  cairo_curve_to(pen, -16, -84, -32, -46, -48, -22);
  cairo_line_to(pen, -6, -20);
  cairo_fill(pen);
  cairo_restore(pen);
}

} // namespace

Canvas paintSea() {
  Canvas picture(kWidth, kHeight);
  paintSky(picture);
  paintSun(picture);
  paintClouds(picture);
  paintWater(picture, Noise(23),
             {kHorizon, 2.4F, 60, 0.74F, hex(0x2B1E48), 0.55F, hex(0xFFC98A), 0.25F});
  paintGlitter(picture);
  paintHeadland(picture);
  paintLighthouse(picture);
  Layer boats = picture.sheet();
  drawBoat(boats, {398, 664}, 1.05F, 1);
  drawBoat(boats, {398, 666}, 1.05F, -0.55F);
  drawBoat(boats, {962, 594}, 0.3F, 1);
  boats.use(hex(0x35203F));
  for (const Place bird : {Place{520, 262}, {562, 240}, {486, 236}, {610, 268}}) {
    drawBird(boats, bird, 34, -0.1F);
  }
  picture.lay(boats);
  picture.vignette(0.3F);
  return picture;
}

} // namespace vireonix::painting
