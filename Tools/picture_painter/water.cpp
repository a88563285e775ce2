#include "water.h"

namespace vireonix::painting {

namespace {

/// The colour that one place of the water mirrors: the mean of some rows around the mirrored one.
Rgb mirrored(const Canvas& above, const Water& water, Place from, float smear) {
  constexpr int kRows = 5;
  const int rows = smear > 1 ? kRows : 1;
  Rgb sum;
  for (int row = 0; row < rows; ++row) {
    const float offset = rows == 1 ? 0 : smear * (static_cast<float>(row) / (kRows - 1) - 0.5F);
    sum = sum + above.sample(from.x, std::min(from.y + offset, water.shore - 1));
  }
  return sum * (1 / static_cast<float>(rows));
}

} // namespace

void paintWater(Canvas& picture, const Noise& ripples, const Water& water) {
  const Canvas above = picture;
  const auto reach = static_cast<float>(picture.height()) - water.shore;
  picture.shade(static_cast<int>(water.shore), picture.height(), [&](float x, float y, Rgb) {
    const float near = (y - water.shore) / reach;
    const float row = 900 / (near + 0.055F); // evenly spaced waves, seen at a flat angle
    const float sway = ripples.fractal(x / (40 + 260 * near), row / 90, 3);
    const float lift = ripples.fractal(x / (120 + 380 * near), row / 46, 3);
    const Place from = {x + sway * water.swell * (2 + 26 * near),
                        water.shore - (y - water.shore) * 1.02F +
                            lift * water.swell * (4 + 34 * near)};
    const Rgb image = mirrored(above, water, from, water.smear * (0.1F + near)) * water.clarity;
    const Rgb colour = mix(image, water.deep, 0.1F + water.depth * near * near);
    return mix(colour, water.glint, water.glints * smooth(0.36F, 0.75F, lift) * (1 - near));
  });
}

} // namespace vireonix::painting
