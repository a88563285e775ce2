#include "nature.h"
#include "paintings.h"

#include <numbers>

namespace vireonix::painting {

namespace {

constexpr int kWidth = 480;
constexpr int kHeight = 300;
constexpr int kFrames = 24;

void paintSky(Canvas& picture) {
  const Gradient sky = {{0, hex(0x1B2850)}, {0.55F, hex(0x3F5588)}, {1, hex(0x9A8FB0)}};
  picture.shade([&](float, float y, Rgb) { return sky.at(y / 210); });
  Dice dice(8);
  scatterStars(picture, dice, 90, 150);
  picture.glow({96, 56}, 90, hex(0xD8DCFF), 0.45F);
  picture.shade([](float x, float y, Rgb under) {
    return mix(under, hex(0xFFF8E4), 1 - smooth(15, 16.5F, std::hypot(x - 96, y - 56)));
  });
}

void paintSnowHill(Canvas& picture, float level, float height, float shift, Rgb top, Rgb foot) {
  const auto crest = [=](float x) {
    return level - height * std::sin(x / 120 + shift) - 0.4F * height * std::sin(x / 47 + shift);
  };
  picture.shadeBelow(
      crest, [&](float, float, float depth, Rgb) { return mix(top, foot, smooth(0, 80, depth)); });
}

/// A fir with snow on its branches: white drawn first, the green a little lower.
void drawSnowyFir(Layer& sheet, std::uint32_t seed, Place foot, float height) {
  Dice under(seed);
  Dice over(seed);
  sheet.use(hex(0xDCE5F5));
  drawFir(sheet, under, foot, height);
  sheet.use(hex(0x24405A));
  drawFir(sheet, over, {foot.x + height * 0.012F, foot.y + height * 0.035F}, height * 0.97F);
}

void drawCabin(Layer& sheet) {
  cairo_t* pen = sheet.pen();
  const auto box = [&](Rgb colour, double x, double y, double width, double height) {
    sheet.use(colour);
    cairo_rectangle(pen, x, y, width, height);
    cairo_fill(pen);
  };
  const auto polygon = [&](Rgb colour, std::initializer_list<Place> corners) {
    sheet.use(colour);
    for (const Place& corner : corners) {
      cairo_line_to(pen, corner.x, corner.y);
    }
    cairo_close_path(pen);
    cairo_fill(pen);
  };
  box(hex(0x5A4048), 342, 150, 13, 30);
  box(hex(0xEEF3FF), 340, 147, 17, 5);
  box(hex(0x6B4636), 272, 186, 100, 46);
  for (int log = 0; log < 6; ++log) {
    box(hex(0x573728), 272, 192 + 7 * log, 100, 1.6);
  }
  polygon(hex(0x4A3038), {{262, 190}, {322, 150}, {382, 190}});
  polygon(hex(0xEFF4FF),
          {{256, 190}, {318, 146}, {326, 146}, {388, 190}, {378, 192}, {322, 158}, {266, 192}});
  for (const double x : {284.0, 344.0}) {
    box(hex(0x3A2426), x - 2, 197, 20, 19);
    box(hex(0xFFD27A), x, 199, 16, 15);
    box(hex(0x3A2426), x + 7, 199, 1.6, 15);
    box(hex(0x3A2426), x, 206, 16, 1.6);
  }
  box(hex(0x3A2426), 314, 201, 18, 31);
  box(hex(0x8A5A3C), 316, 203, 14, 29);
}

Canvas paintStill() {
  Canvas picture(kWidth, kHeight);
  paintSky(picture);
  paintSnowHill(picture, 190, 16, 0.4F, hex(0x7D86B4), hex(0x8E97C2));
  Layer far = picture.sheet();
  Dice dice(4);
  far.use(hex(0x4E5E8C));
  walk(
      0, kWidth, [&](float) { return dice.between(5, 13); },
      [&](float x) {
        drawFir(far, dice, {x, 207 - 10 * std::sin(x / 120 + 0.4F)}, dice.between(20, 38));
      });
  picture.lay(far);
  paintSnowHill(picture, 222, 9, 2.1F, hex(0xC9D3EE), hex(0x98A6D2));
  Layer near = picture.sheet();
  for (const Place& fir : {Place{40, 120}, {88, 92}, {132, 70}, {222, 62}, {410, 84}, {452, 126}}) {
    drawSnowyFir(near, static_cast<std::uint32_t>(fir.x), {fir.x, 246}, fir.y);
  }
  drawCabin(near);
  picture.lay(near);
  paintSnowHill(picture, 246, 7, 4.4F, hex(0xEDF2FF), hex(0xA9B7DE));
  for (const float x : {292.0F, 352.0F}) {
    picture.glow({x, 208}, 46, hex(0xFFC46A), 0.55F);
    picture.glow({x, 250}, 40, hex(0xFFC46A), 0.3F);
  }
  return picture;
}

struct Flake {
  Place start;
  float size;
  float sway;
  float phase;
  int falls; // how often it crosses the picture in one round
};

std::vector<Flake> scatteredFlakes() {
  Dice dice(2024);
  std::vector<Flake> flakes;
  for (int i = 0; i < 130; ++i) {
    const bool isNear = dice.chance(0.3F);
    flakes.push_back({{dice.between(0, kWidth), dice.between(0, kHeight)},
                      isNear ? dice.between(1.6F, 2.6F) : dice.between(0.7F, 1.3F),
                      dice.between(3, 12),
                      dice.between(0, 1),
                      isNear ? 2 : 1});
  }
  return flakes;
}

} // namespace

std::vector<Canvas> paintWinter() {
  constexpr float kTurn = 2 * std::numbers::pi_v<float>;
  constexpr float kFall = kHeight + 10;
  const Canvas still = paintStill();
  const std::vector<Flake> flakes = scatteredFlakes();
  std::vector<Canvas> frames;
  for (int frame = 0; frame < kFrames; ++frame) {
    const float time = static_cast<float>(frame) / kFrames;
    Canvas picture = still;
    Layer sheet = picture.sheet();
    for (const Flake& flake : flakes) {
      const float way = flake.start.y + time * static_cast<float>(flake.falls) * kFall;
      const float y = std::fmod(way, kFall) - 5;
      const float x = flake.start.x + flake.sway * std::sin(kTurn * (time + flake.phase));
      sheet.use(hex(0xFFFFFF), flake.falls > 1 ? 0.95F : 0.7F);
      cairo_arc(sheet.pen(), x, y, flake.size, 0, kTurn);
      cairo_fill(sheet.pen());
    }
    picture.lay(sheet);
    frames.push_back(std::move(picture));
  }
  return frames;
}

} // namespace vireonix::painting
