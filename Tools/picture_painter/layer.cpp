#include "layer.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace vireonix::painting {

namespace {

constexpr int kChannels = 4;

/// Replaces `count` bytes, `step` apart, by the mean of their neighbours up to `radius` away.
void soften(std::uint8_t* first, int count, int step, int radius, std::vector<std::uint8_t>& line) {
  line.resize(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) {
    line[static_cast<std::size_t>(i)] = first[static_cast<std::ptrdiff_t>(i) * step];
  }
  const auto value = [&](int i) {
    return static_cast<int>(line[static_cast<std::size_t>(std::clamp(i, 0, count - 1))]);
  };
  const int window = 2 * radius + 1;
  int sum = 0;
  for (int i = -radius; i <= radius; ++i) {
    sum += value(i);
  }
  for (int i = 0; i < count; ++i) {
    first[static_cast<std::ptrdiff_t>(i) * step] =
        static_cast<std::uint8_t>((sum + radius) / window);
    sum += value(i + radius + 1) - value(i - radius);
  }
}

} // namespace

Layer::Layer(int width, int height)
    : width_(width), height_(height),
      surface_(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height)),
      pen_(cairo_create(surface_.get())) {
  cairo_set_line_cap(pen(), CAIRO_LINE_CAP_ROUND);
  cairo_set_line_join(pen(), CAIRO_LINE_JOIN_ROUND);
}

void Layer::use(Rgb colour, float opacity) const {
  cairo_set_source_rgba(pen(), colour.red, colour.green, colour.blue, opacity);
}

void Layer::blur(int radius) {
  flush();
  std::uint8_t* bytes = cairo_image_surface_get_data(surface_.get());
  const int stride = cairo_image_surface_get_stride(surface_.get());
  std::vector<std::uint8_t> line;
  // Three boxes come close to a bell.
  const int box = std::max(1, radius / 2);
  for (int pass = 0; pass < 3; ++pass) {
    for (int channel = 0; channel < kChannels; ++channel) {
      for (int y = 0; y < height_; ++y) {
        soften(bytes + static_cast<std::ptrdiff_t>(y) * stride + channel, width_, kChannels, box,
               line);
      }
      for (int x = 0; x < width_; ++x) {
        soften(bytes + static_cast<std::ptrdiff_t>(x) * kChannels + channel, height_, stride, box,
               line);
      }
    }
  }
  cairo_surface_mark_dirty(surface_.get());
}

const std::uint8_t* Layer::pixel(int x, int y) const {
  return cairo_image_surface_get_data(surface_.get()) +
         static_cast<std::ptrdiff_t>(y) * cairo_image_surface_get_stride(surface_.get()) +
         static_cast<std::ptrdiff_t>(x) * kChannels;
}

Layer::Pixel Layer::at(int x, int y) const {
  std::uint32_t packed = 0;
  std::memcpy(&packed, pixel(x, y), sizeof packed);
  return {hex(packed & 0xFFFFFFU), static_cast<float>(packed >> 24U) / 255.0F};
}

float Layer::opacityAt(int x, int y) const {
  return at(x, y).opacity;
}

} // namespace vireonix::painting
