#include "canvas.h"

#include "noise.h"

namespace vireonix::painting {

Rgb Canvas::sample(float x, float y) const {
  const float u = std::clamp(x, 0.0F, static_cast<float>(width_ - 1));
  const float v = std::clamp(y, 0.0F, static_cast<float>(height_ - 1));
  const int left = static_cast<int>(u);
  const int top = static_cast<int>(v);
  const int right = std::min(left + 1, width_ - 1);
  const int bottom = std::min(top + 1, height_ - 1);
  const float across = u - static_cast<float>(left);
  return mix(mix(at(left, top), at(right, top), across),
             mix(at(left, bottom), at(right, bottom), across), v - static_cast<float>(top));
}

void Canvas::lay(const Layer& sheet) {
  sheet.flush();
  for (int y = 0; y < height_; ++y) {
    for (int x = 0; x < width_; ++x) {
      const Layer::Pixel over = sheet.at(x, y);
      if (over.opacity > 0) {
        at(x, y) = at(x, y) * (1 - over.opacity) + over.colour;
      }
    }
  }
}

void Canvas::shine(const Layer& sheet, float strength) {
  sheet.flush();
  for (int y = 0; y < height_; ++y) {
    for (int x = 0; x < width_; ++x) {
      at(x, y) = screen(at(x, y), sheet.at(x, y).colour * strength);
    }
  }
}

void Canvas::glow(Place centre, float radius, Rgb colour, float strength) {
  const int top = static_cast<int>(centre.y - radius);
  const int bottom = static_cast<int>(centre.y + radius) + 1;
  shade(top, bottom, [&](float x, float y, Rgb under) {
    const float distance = std::hypot(x - centre.x, y - centre.y) / radius;
    if (distance >= 1) {
      return under;
    }
    const float fall = 1 - distance;
    return screen(under, colour * (strength * fall * fall));
  });
}

void Canvas::vignette(float strength) {
  const auto w = static_cast<float>(width_);
  const auto h = static_cast<float>(height_);
  shade([=](float x, float y, Rgb under) {
    const float distance = std::hypot((x - w / 2) / w, (y - h / 2) / h);
    return under * (1 - strength * smooth(0.35F, 0.8F, distance));
  });
}

} // namespace vireonix::painting
