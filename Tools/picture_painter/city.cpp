#include "nature.h"
#include "paintings.h"
#include "water.h"

namespace vireonix::painting {

namespace {

constexpr int kWidth = 1600;
constexpr int kHeight = 1000;
constexpr float kQuay = 660;

struct Skyline {
  float low; // heights of its houses
  float high;
  float narrow; // and their widths
  float wide;
  Rgb top;
  Rgb foot;
  float lit; // the part of its windows that is lit; 0 for none
  float pane;
  std::uint32_t seed;
};

struct House {
  float left;
  float width;
  float height;
};

void paintSky(Canvas& picture) {
  const Gradient sky = {{0, hex(0x0B1033)},
                        {0.4F, hex(0x1D2459)},
                        {0.7F, hex(0x4A3F7C)},
                        {0.88F, hex(0x8E5A83)},
                        {1, hex(0xD98C7C)}};
  const Noise clouds(17);
  picture.shade([&](float x, float y, Rgb) {
    const float place = y / kQuay;
    const float veil = smooth(0.0F, 0.8F, clouds.fractal(x / 480, y / 90, 5)) * 0.35F;
    return mix(sky.at(place), hex(0x8A6A9C), veil * smooth(0.1F, 0.6F, place));
  });
  Dice dice(3);
  scatterStars(picture, dice, 420, kQuay * 0.75F);
  const Place moon = {330, 150};
  picture.glow(moon, 330, hex(0xB8B6E8), 0.5F);
  const Noise seas(4);
  picture.shade([&](float x, float y, Rgb under) {
    const float away = std::hypot(x - moon.x, y - moon.y);
    const Rgb face = hex(0xFFF6E2) * (0.93F + 0.14F * seas.fractal(x / 22, y / 22, 4));
    return mix(under, face, 1 - smooth(40.5F, 42.5F, away));
  });
}

/// The outline of a house with one of a few kinds of roof.
void drawHouse(Layer& sheet, Dice& dice, const House& house) {
  cairo_t* pen = sheet.pen();
  const float top = kQuay - house.height;
  const float middle = house.left + house.width / 2;
  cairo_rectangle(pen, house.left, top, house.width, house.height + 2);
  const int roof = dice.below(6);
  if (roof == 0) { // stepped
    cairo_rectangle(pen, house.left + house.width * 0.18F, top - 22, house.width * 0.64F, 24);
    cairo_rectangle(pen, house.left + house.width * 0.34F, top - 40, house.width * 0.32F, 20);
  } else if (roof == 1) { // a mast
    cairo_rectangle(pen, middle - house.width * 0.2F, top - 14, house.width * 0.4F, 16);
    cairo_rectangle(pen, middle - 1.5F, top - 74, 3, 62);
  } else if (roof == 2) { // slanted
    cairo_move_to(pen, house.left, top);
    cairo_line_to(pen, house.left + house.width, top - house.width * 0.35F);
    cairo_line_to(pen, house.left + house.width, top);
  } else if (roof == 3) { // plant rooms
    cairo_rectangle(pen, house.left + house.width * 0.12F, top - 10, house.width * 0.25F, 12);
    cairo_rectangle(pen, house.left + house.width * 0.6F, top - 14, house.width * 0.2F, 16);
  }
  cairo_fill(pen);
}

Rgb lampColour(Dice& dice) {
  const float kind = dice.between(0, 1);
  if (kind < 0.62F) {
    return mix(hex(0xFFC873), hex(0xFFE3A8), dice.between(0, 1));
  }
  return kind < 0.86F ? hex(0xFFF4DC) : mix(hex(0x9FC8F2), hex(0xF2A65E), dice.between(0, 1));
}

void drawWindows(Layer& sheet, Dice& dice, const House& house, const Skyline& line) {
  const float across = line.pane * dice.between(1.5F, 2.0F);
  const float down = line.pane * dice.between(1.9F, 2.5F);
  const float busy = line.lit * dice.between(0.4F, 1.5F);
  const auto storey = [&](float y) {
    if (dice.chance(0.12F)) {
      return; // all of it is dark
    }
    const float right = house.left + house.width - 2 - line.pane;
    walk(
        house.left + across * 0.45F, right, [&](float) { return across; },
        [&](float x) {
          if (dice.chance(busy)) {
            sheet.use(lampColour(dice), dice.between(0.45F, 1));
            cairo_rectangle(sheet.pen(), x, y, line.pane, line.pane * 1.25F);
            cairo_fill(sheet.pen());
          }
        });
  };
  walk(
      kQuay - house.height + down * 0.7F, kQuay - 16, [&](float) { return down; }, storey);
}

void paintSkyline(Canvas& picture, const Skyline& line) {
  Dice dice(line.seed);
  const Noise swell(line.seed);
  Layer walls = picture.sheet();
  Layer windows = picture.sheet();
  walls.use(hex(0x000000));
  float x = -30;
  while (x < kWidth) {
    const float rise = 0.5F + 0.9F * swell.at(x / 330, 0.5F);
    const House house = {x, dice.between(line.narrow, line.wide),
                         line.low + (line.high - line.low) *
                                        std::clamp(rise + dice.between(-0.35F, 0.35F), 0.0F, 1.0F)};
    drawHouse(walls, dice, house);
    if (line.lit > 0) {
      drawWindows(windows, dice, house, line);
    }
    x += house.width + (dice.chance(0.25F) ? dice.between(2, 14) : 0.5F);
  }
  picture.fill(walls, [&](float, float y, Rgb) {
    return mix(line.top, line.foot, smooth(kQuay - line.high, kQuay, y));
  });
  picture.lay(windows);
  windows.blur(9);
  picture.shine(windows, 1.1F);
}

/// Lamps along the quay, with trees between them.
void paintQuay(Canvas& picture) {
  Layer sheet = picture.sheet();
  Dice dice(91);
  sheet.use(hex(0x0E1228));
  walk(
      20, kWidth, [&](float) { return dice.between(34, 88); },
      [&](float x) {
        drawLeafTree(sheet, dice, {x, kQuay + 2}, dice.between(34, 58));
      });
  cairo_rectangle(sheet.pen(), 0, kQuay - 5, kWidth, 9);
  cairo_fill(sheet.pen());
  const auto apart = [](float) { return 94.0F; };
  walk(48, kWidth, apart, [&](float x) {
    sheet.use(hex(0x0A0D1E));
    cairo_rectangle(sheet.pen(), x - 1, kQuay - 40, 2.5, 38);
    cairo_fill(sheet.pen());
    sheet.use(hex(0xFFEFC4));
    cairo_arc(sheet.pen(), x, kQuay - 42, 4, 0, 6.2832);
    cairo_fill(sheet.pen());
  });
  picture.lay(sheet);
  walk(48, kWidth, apart, [&](float x) {
    picture.glow({x, kQuay - 42}, 52, hex(0xFFCB80), 0.75F);
  });
}

/// Lights close to the viewer and out of focus.
void paintBokeh(Canvas& picture) {
  Dice dice(27);
  Layer sheet = picture.sheet();
  cairo_t* pen = sheet.pen();
  for (int light = 0; light < 34; ++light) {
    const float side = dice.chance(0.5F) ? 0 : 1;
    const float x = std::lerp(dice.between(-40, 620), dice.between(980, 1640), side);
    const float y = 1010 - 260 * dice.between(0, 1) * dice.between(0.15F, 1);
    const float radius = dice.between(16, 62);
    const Rgb colour = dice.chance(0.72F) ? lampColour(dice)
                                          : mix(hex(0xF0708A), hex(0x58B8C8), dice.between(0, 1));
    const float strength = dice.between(0.1F, 0.34F);
    sheet.use(colour, strength);
    cairo_arc(pen, x, y, radius, 0, 6.2832);
    cairo_fill_preserve(pen);
    sheet.use(colour, strength * 0.7F);
    cairo_set_line_width(pen, 2.5);
    cairo_stroke(pen);
  }
  sheet.blur(3);
  picture.shine(sheet);
}

} // namespace

Canvas paintCity() {
  Canvas picture(kWidth, kHeight);
  paintSky(picture);
  paintSkyline(picture, {90, 330, 60, 130, hex(0x554A84), hex(0xA9708A), 0, 0, 5});
  paintSkyline(picture, {120, 450, 54, 96, hex(0x2E2C63), hex(0x74527F), 0.3F, 4, 6});
  paintSkyline(picture, {60, 330, 60, 120, hex(0x1C1E4A), hex(0x3E3560), 0.4F, 6, 37});
  paintSkyline(picture, {40, 170, 70, 150, hex(0x11142F), hex(0x1A1B3A), 0.42F, 8, 8});
  paintQuay(picture);
  paintWater(picture, Noise(77),
             {kQuay + 4, 1.7F, 170, 0.82F, hex(0x0B1030), 0.55F, hex(0xE8B08C), 0.16F});
  paintBokeh(picture);
  picture.vignette(0.35F);
  return picture;
}

} // namespace vireonix::painting
