#include "nature.h"

namespace vireonix::painting {

void drawFir(Layer& sheet, Dice& dice, Place foot, float height) {
  cairo_t* pen = sheet.pen();
  const float half = height * dice.between(0.15F, 0.2F);
  const float lean = height * dice.between(-0.015F, 0.015F);
  const int tiers = std::clamp(static_cast<int>(height / 9), 5, 15);
  // Down the right side and up the left: branches that grow longer and droop, each a little
  // different.
  cairo_move_to(pen, foot.x + lean, foot.y - height);
  for (const float side : {1.0F, -1.0F}) {
    for (int step = 1; step <= tiers; ++step) {
      const int tier = side > 0 ? step : tiers + 1 - step;
      const float down = static_cast<float>(tier) / static_cast<float>(tiers);
      const float y = foot.y - height * (1 - 0.93F * down);
      const float reach = half * (0.08F + 0.92F * std::pow(down, 0.85F));
      const float tip = side * reach * dice.between(0.72F, 1.08F);
      const float notch = side * reach * dice.between(0.36F, 0.5F);
      const float droop = height * 0.05F;
      const float middle = foot.x + lean * (1 - down);
      const Place outer = {middle + tip, y};
      const Place inner = {middle + notch, y - droop * 0.55F};
      const Place first = side > 0 ? outer : inner;
      const Place second = side > 0 ? inner : outer;
      cairo_line_to(pen, first.x, first.y);
      cairo_line_to(pen, second.x, second.y);
    }
    const float trunk = side * height * 0.016F;
    const float low = foot.y - height * 0.07F;
    if (side > 0) {
      cairo_line_to(pen, foot.x + trunk, low);
      cairo_line_to(pen, foot.x + trunk, foot.y);
      cairo_line_to(pen, foot.x - trunk, foot.y);
      cairo_line_to(pen, foot.x - trunk, low);
    }
  }
  cairo_close_path(pen);
  cairo_fill(pen);
}

void drawLeafTree(Layer& sheet, Dice& dice, Place foot, float height) {
  cairo_t* pen = sheet.pen();
  const float trunk = height * 0.035F;
  cairo_move_to(pen, foot.x - trunk, foot.y);
  cairo_line_to(pen, foot.x - trunk * 0.5F, foot.y - height * 0.6F);
  cairo_line_to(pen, foot.x + trunk * 0.5F, foot.y - height * 0.6F);
  cairo_line_to(pen, foot.x + trunk, foot.y);
  cairo_fill(pen);
  for (int leaf = 0; leaf < 34; ++leaf) {
    const float angle = dice.between(0, 6.2832F);
    const float away = std::sqrt(dice.between(0, 1));
    const float x = foot.x + std::cos(angle) * away * height * 0.28F;
    const float y = foot.y - height * 0.62F + std::sin(angle) * away * height * 0.27F;
    cairo_arc(pen, x, y, height * dice.between(0.07F, 0.15F), 0, 6.2832);
    cairo_fill(pen);
  }
}

void drawBird(Layer& sheet, Place centre, float span, float tilt) {
  cairo_t* pen = sheet.pen();
  cairo_save(pen);
  cairo_translate(pen, centre.x, centre.y);
  cairo_rotate(pen, tilt);
  cairo_scale(pen, span / 2, span / 2);
  cairo_move_to(pen, -1, -0.12);
  cairo_curve_to(pen, -0.7, -0.45, -0.25, -0.35, 0, 0.06);
  cairo_curve_to(pen, 0.25, -0.35, 0.7, -0.45, 1, -0.12);
  cairo_curve_to(pen, 0.7, -0.3, 0.3, -0.2, 0, 0.2);
  cairo_curve_to(pen, -0.3, -0.2, -0.7, -0.3, -1, -0.12);
  cairo_fill(pen);
  cairo_restore(pen);
}

void driftMist(Canvas& picture, const Noise& noise, float level, float reach, Rgb colour,
               float strength) {
  picture.shade(static_cast<int>(level - reach), static_cast<int>(level + reach),
                [&](float x, float y, Rgb under) {
                  const float off = (y - level) / reach;
                  const float band = (1 - off * off) * (1 - off * off);
                  const float wisps = 0.55F + 0.75F * noise.fractal(x / 330, y / 42, 4);
                  return mix(under, colour, std::clamp(strength * band * wisps, 0.0F, 1.0F));
                });
}

void scatterStars(Canvas& picture, Dice& dice, int count, float horizon) {
  const auto width = static_cast<float>(picture.width());
  for (int star = 0; star < count; ++star) {
    const float down = std::pow(dice.between(0, 1), 1.3F);
    const Place place = {dice.between(0, width), down * horizon};
    const float size = 0.8F + 2.4F * std::pow(dice.between(0, 1), 7.0F);
    const Rgb tone = mix(hex(0xBFD2FF), hex(0xFFE9CF), dice.between(0, 1));
    const float strength = dice.between(0.25F, 1) * (1 - down * 0.85F);
    for (int y = static_cast<int>(place.y - 4); y <= static_cast<int>(place.y + 5); ++y) {
      for (int x = static_cast<int>(place.x - 4); x <= static_cast<int>(place.x + 5); ++x) {
        if (x < 0 || y < 0 || x >= picture.width() || y >= picture.height()) {
          continue;
        }
        const float distance =
            std::hypot(static_cast<float>(x) - place.x, static_cast<float>(y) - place.y) / size;
        picture.at(x, y) =
            screen(picture.at(x, y), tone * (strength * std::exp(-distance * distance * 1.4F)));
      }
    }
  }
}

} // namespace vireonix::painting
