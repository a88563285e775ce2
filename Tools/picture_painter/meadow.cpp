#include "nature.h"
#include "paintings.h"

namespace vireonix::painting {

namespace {

constexpr int kWidth = 1600;
constexpr int kHeight = 1000;
constexpr float kHorizon = 540;

float nearness(float y) {
  return std::max(0.0F, (y - kHorizon) / (kHeight - kHorizon));
}

/// The winding path: its middle and half of its width in a row.
float pathMiddle(float near) {
  return 905 + 150 * std::sin(3.6F * std::pow(near, 0.55F) + 0.4F) - 190 * near;
}
float pathReach(float near) {
  return 5 + 135 * std::pow(near, 1.35F);
}

void paintSky(Canvas& picture) {
  const Gradient sky = {
      {0, hex(0x3F86C6)}, {0.5F, hex(0x86BCE2)}, {0.85F, hex(0xCFE6EC)}, {1, hex(0xF4F1DC)}};
  const Noise billows(31);
  const auto density = [&](float x, float y) {
    return billows.fractal(x / 330, y / 150, 6) + 0.35F * billows.at(x / 620 + 9, y / 260);
  };
  picture.shade([&](float x, float y, Rgb) {
    const float place = y / kHorizon;
    const float thick = density(x, y);
    const float level = 0.1F + 0.5F * std::abs(place - 0.45F);
    const float cover = smooth(level, level + 0.2F, thick);
    // Light from the upper right: the side towards it is white, the underside blue-grey.
    const float lit = smooth(-0.24F, 0.2F, thick - density(x + 22, y - 34));
    const Rgb cloud = mix(hex(0xB3C6DB), hex(0xFFFEF8), lit);
    return mix(sky.at(place), cloud, 0.95F * cover * (1 - smooth(0.8F, 1, place)));
  });
  picture.glow({1420, 60}, 900, hex(0xFFF0C2), 0.55F);
}

struct Hill {
  float level;
  float height;
  float stretch;
  std::uint32_t seed;
  Rgb top;
  Rgb foot;
  float trees; // their height; 0 for bare
};

void paintHill(Canvas& picture, const Hill& hill) {
  const Noise ground(hill.seed);
  Dice dice(hill.seed);
  const auto crest = [&](float x) {
    return hill.level - hill.height * (0.5F + 0.8F * ground.fractal(x / hill.stretch, 0.5F, 2));
  };
  const auto tone = [&](float x, float y) {
    const float patch = ground.fractal(x / 90, y / 16, 4);
    const Rgb base = mix(hill.top, hill.foot, smooth(hill.level - hill.height, hill.level + 30, y));
    return base * (1 + 0.13F * patch);
  };
  picture.shadeBelow(crest, [&](float x, float y, float, Rgb) { return tone(x, y); });
  if (hill.trees <= 0) {
    return;
  }
  Layer sheet = picture.sheet();
  sheet.use(hex(0x000000));
  const auto apart = [&](float) { return dice.between(0.25F, 0.7F) * hill.trees; };
  walk(-20, kWidth + 20, apart, [&](float x) {
    if (ground.at(x / 210, 8.5F) > -0.2F) {
      drawLeafTree(sheet, dice, {x, crest(x) + dice.between(2, 12)},
                   hill.trees * dice.between(0.6F, 1.25F));
    }
  });
  const Noise leaves(hill.seed + 1);
  picture.fill(sheet, [&](float x, float y, Rgb) {
    const float clump = leaves.fractal(x / 15, y / 13, 4);
    const float sun = smooth(-0.35F, 0.4F, clump - 0.02F * (y - crest(x)));
    return mix(hill.foot * 0.62F, hill.top * 1.02F, sun);
  });
}

void paintGround(Canvas& picture) {
  const Gradient grass = {
      {0, hex(0xC3CB78)}, {0.12F, hex(0x9DBB5C)}, {0.45F, hex(0x6A9A41)}, {1, hex(0x33652C)}};
  const Noise patches(61);
  const auto edge = [&](float x) { return kHorizon - 5 + 9 * patches.at(x / 240, 3.5F); };
  picture.shadeBelow(edge, [&](float x, float y, float, Rgb) {
    const float near = nearness(y);
    const float row = 700 / (near + 0.07F);
    const float patch = patches.fractal(x / (60 + 300 * near), row / 120, 5);
    return grass.at(near) * (1 + 0.24F * patch);
  });
}

void paintPath(Canvas& picture) {
  const Noise edge(67);
  picture.shade(static_cast<int>(kHorizon), kHeight, [&](float x, float y, Rgb under) {
    const float near = nearness(y);
    const float row = 700 / (near + 0.07F);
    const float ragged = 0.2F * edge.fractal(row / 26 + x / 60, x / (8 + 60 * near), 4);
    const float off = (x - pathMiddle(near)) / pathReach(near) + ragged;
    const float cover = 1 - smooth(0.82F, 1.04F, std::abs(off));
    if (cover <= 0) {
      return under;
    }
    const float grain = edge.fractal(x / (5 + 26 * near), row / 9, 4);
    const float rut = std::exp(-40 * (std::abs(off) - 0.52F) * (std::abs(off) - 0.52F));
    Rgb sand = mix(hex(0xE3CFA0), hex(0xC2A673), smooth(0, 1, near)) * (1 + 0.14F * grain);
    sand = mix(sand, hex(0x9C8154), 0.32F * rut);
    const float middle = smooth(0.26F, 0.05F, std::abs(off)) * smooth(-0.25F, 0.2F, grain);
    return mix(under, mix(sand, hex(0x7C9A4B), 0.7F * middle), cover);
  });
}

void drawBlade(Layer& sheet, Dice& dice, Place foot, float size) {
  cairo_t* pen = sheet.pen();
  const float bend = size * dice.between(-0.45F, 0.6F);
  cairo_set_line_width(pen, std::max(0.7F, size * 0.045F));
  cairo_move_to(pen, foot.x, foot.y);
  cairo_curve_to(pen, foot.x, foot.y - size * 0.5F, foot.x + bend * 0.4F, foot.y - size * 0.8F,
                 foot.x + bend, foot.y - size);
  cairo_stroke(pen);
}

struct Kind {
  Rgb petal;
  Rgb centre;
  int petals;
};

/// Petals in a ring, seen from the side by flattening it.
void drawFlower(Layer& sheet, Place heart, float size, const Kind& kind, float turn) {
  cairo_t* pen = sheet.pen();
  cairo_save(pen);
  cairo_translate(pen, heart.x, heart.y);
  cairo_scale(pen, size, size * 0.66F);
  cairo_rotate(pen, turn);
  for (int i = 0; i < kind.petals; ++i) {
    cairo_rotate(pen, 6.2832 / kind.petals);
    sheet.use(kind.petal * (i % 2 == 0 ? 1.0F : 0.86F));
    cairo_save(pen);
    cairo_scale(pen, kind.petals > 6 ? 0.26 : 0.52, 0.56);
    cairo_arc(pen, 0, -0.98, 0.9, 0, 6.2832);
    cairo_restore(pen);
    cairo_fill(pen);
  }
  sheet.use(kind.centre);
  cairo_arc(pen, 0, 0, kind.petals > 6 ? 0.3 : 0.24, 0, 6.2832);
  cairo_fill(pen);
  cairo_restore(pen);
}

const Kind& pick(Dice& dice, float patch) {
  static const Kind kPoppy = {hex(0xE2402F), hex(0x2E1B22), 4};
  static const Kind kDaisy = {hex(0xFFFDF4), hex(0xF5C33B), 11};
  static const Kind kCornflower = {hex(0x4F6FD8), hex(0x31306F), 9};
  static const Kind kButtercup = {hex(0xF9D441), hex(0xD99A22), 5};
  const float which = dice.between(0, 1) + patch;
  if (which < 0.36F) {
    return kPoppy;
  }
  if (which < 0.72F) {
    return kDaisy;
  }
  return which < 0.9F ? kCornflower : kButtercup;
}

/// One stalk of grass and, now and then, a flower; more of them in some patches than in others.
void growAt(Layer& sheet, Dice& dice, const Noise& patches, Place foot, float size) {
  const float near = nearness(foot.y);
  const float tone = dice.between(0, 1);
  sheet.use(mix(mix(hex(0x8FB04F), hex(0x2E5C28), near), mix(hex(0xD6DB86), hex(0x8DB34A), near),
                tone * tone),
            0.9F);
  drawBlade(sheet, dice, foot, size * dice.between(0.5F, 1.1F));
  const float patch = patches.fractal(foot.x / 260, foot.y / 110, 2);
  if (!dice.chance(0.06F + 0.15F * smooth(-0.1F, 0.5F, patch))) {
    return;
  }
  const float rise = size * dice.between(0.7F, 1.25F);
  const Place heart = {foot.x + rise * dice.between(-0.15F, 0.2F), foot.y - rise};
  sheet.use(hex(0x4E7A33));
  cairo_set_line_width(sheet.pen(), std::max(0.8F, size * 0.035F));
  cairo_move_to(sheet.pen(), foot.x, foot.y);
  cairo_line_to(sheet.pen(), heart.x, heart.y);
  cairo_stroke(sheet.pen());
  const Kind& kind = pick(dice, 0.35F * patch);
  drawFlower(sheet, heart, std::max(1.5F, size * dice.between(0.13F, 0.22F)), kind,
             dice.between(0, 6));
}

void paintGrowth(Canvas& picture) {
  Dice dice(83);
  const Noise patches(84);
  Layer sheet = picture.sheet();
  const auto row = [&](float y) {
    const float near = nearness(y);
    const float size = 5 + 62 * std::pow(near, 1.25F);
    const auto apart = [&](float) { return size * dice.between(0.14F, 0.42F); };
    walk(-20, kWidth + 20, apart, [&](float x) {
      if (std::abs(x - pathMiddle(near)) > 1.02F * pathReach(near)) {
        growAt(sheet, dice, patches, {x, y}, size);
      }
    });
  };
  walk(
      kHorizon + 8, kHeight + 70, [](float y) { return 1 + 7 * nearness(y); }, row);
  picture.lay(sheet);
}

} // namespace

Canvas paintMeadow() {
  Canvas picture(kWidth, kHeight);
  paintSky(picture);
  paintHill(picture, {520, 120, 420, 5, hex(0x8FB2C4), hex(0xC5D9D6), 0});
  paintHill(picture, {530, 80, 330, 6, hex(0x7FA7A0), hex(0xB4CDB0), 0});
  driftMist(picture, Noise(2), 520, 50, hex(0xF6F3DE), 0.35F);
  paintHill(picture, {548, 40, 480, 12, hex(0x7FA65E), hex(0x47764A), 62});
  paintGround(picture);
  paintPath(picture);
  paintGrowth(picture);
  picture.glow({1420, 60}, 1300, hex(0xFFF2C8), 0.22F);
  picture.vignette(0.2F);
  return picture;
}

} // namespace vireonix::painting
