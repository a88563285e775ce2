#import "support/contrast.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <tuple>

namespace vireonix::test {
namespace {

double linear(int component) {
  const double value = component / 255.0;
  return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

double luminance(Pixel pixel) {
  return 0.2126 * linear(pixel.red) + 0.7152 * linear(pixel.green) + 0.0722 * linear(pixel.blue);
}

} // namespace

double contrast(Pixel a, Pixel b) {
  const double one = luminance(a);
  const double other = luminance(b);
  return (std::max(one, other) + 0.05) / (std::min(one, other) + 0.05);
}

Pixel commonest(const Picture &picture, NSRect rect) {
  std::map<std::tuple<int, int, int>, int> counts;
  picture.each(rect, [&](Pixel pixel) { ++counts[{pixel.red, pixel.green, pixel.blue}]; });
  const auto most = std::max_element(counts.begin(), counts.end(),
                                     [](auto &a, auto &b) { return a.second < b.second; });
  const auto [red, green, blue] = most->first;
  return {red, green, blue};
}

double textContrast(const Picture &picture, NSRect rect) {
  const Pixel background = commonest(picture, rect);
  double best = 1;
  picture.each(rect, [&](Pixel pixel) { best = std::max(best, contrast(pixel, background)); });
  return best;
}

} // namespace vireonix::test
