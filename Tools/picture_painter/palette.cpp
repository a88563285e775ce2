#include "palette.h"

#include <limits>
#include <map>

namespace vireonix::painting {

namespace {

constexpr std::size_t kMost = 255;

float part(const Rgb& colour, int channel) {
  return channel == 0 ? colour.red : channel == 1 ? colour.green : colour.blue;
}

struct Box {
  std::vector<Rgb> colours;
  int widest = 0;   // the channel in which its colours differ most
  float spread = 0; // by how much

  explicit Box(std::vector<Rgb> held) : colours(std::move(held)) {
    for (int channel = 0; channel < 3; ++channel) {
      const auto [low, high] =
          std::minmax_element(colours.begin(), colours.end(), [channel](Rgb a, Rgb b) {
            return part(a, channel) < part(b, channel);
          });
      const float difference = part(*high, channel) - part(*low, channel);
      if (difference > spread) {
        spread = difference;
        widest = channel;
      }
    }
  }

  [[nodiscard]] float weight() const {
    return spread * std::sqrt(static_cast<float>(colours.size()));
  }

  [[nodiscard]] Rgb mean() const {
    Rgb sum;
    for (const Rgb& colour : colours) {
      sum = sum + colour;
    }
    return sum * (1 / static_cast<float>(colours.size()));
  }

  /// Keeps the lower half; answers the upper.
  Box split() {
    const int channel = widest;
    std::sort(colours.begin(), colours.end(),
              [channel](Rgb a, Rgb b) { return part(a, channel) < part(b, channel); });
    const auto middle = colours.begin() + static_cast<std::ptrdiff_t>(colours.size() / 2);
    Box upper({middle, colours.end()});
    *this = Box({colours.begin(), middle});
    return upper;
  }
};

/// Every third pixel in both directions of every sixth frame.
std::vector<Rgb> samplesOf(const std::vector<Canvas>& frames) {
  std::vector<Rgb> samples;
  for (std::size_t i = 0; i < frames.size(); i += 6) {
    const Canvas& frame = frames[i];
    for (int y = 0; y < frame.height(); y += 3) {
      for (int x = 0; x < frame.width(); x += 3) {
        samples.push_back(frame.at(x, y));
      }
    }
  }
  return samples;
}

std::uint8_t byteOf(float level) {
  return static_cast<std::uint8_t>(std::lround(std::clamp(level, 0.0F, 1.0F) * 255));
}

} // namespace

Palette::Palette(const std::vector<Canvas>& frames) {
  std::vector<Box> boxes = {Box(samplesOf(frames))};
  while (boxes.size() < kMost) {
    const auto heaviest =
        std::max_element(boxes.begin(), boxes.end(),
                         [](const Box& a, const Box& b) { return a.weight() < b.weight(); });
    if (heaviest->spread == 0) {
      break;
    }
    Box upper = heaviest->split();
    boxes.push_back(std::move(upper));
  }
  for (const Box& box : boxes) {
    colours_.push_back(box.mean());
  }
}

std::array<std::uint8_t, 3> Palette::colour(std::size_t index) const {
  const Rgb& colour = colours_[index];
  return {byteOf(colour.red), byteOf(colour.green), byteOf(colour.blue)};
}

std::uint8_t Palette::nearest(Rgb colour) const {
  float least = std::numeric_limits<float>::max();
  std::uint8_t answer = 0;
  for (std::size_t i = 0; i < colours_.size(); ++i) {
    const Rgb& own = colours_[i];
    const float red = own.red - colour.red;
    const float green = own.green - colour.green;
    const float blue = own.blue - colour.blue;
    const float distance = 2 * red * red + 4 * green * green + blue * blue;
    if (distance < least) {
      least = distance;
      answer = static_cast<std::uint8_t>(i);
    }
  }
  return answer;
}

std::vector<std::uint8_t> Palette::indexes(const Canvas& frame) const {
  std::map<std::uint32_t, std::uint8_t> known; // by colour in steps of 1/127
  std::vector<std::uint8_t> answer;
  answer.reserve(static_cast<std::size_t>(frame.width()) * frame.height());
  for (int y = 0; y < frame.height(); ++y) {
    for (int x = 0; x < frame.width(); ++x) {
      // A checkered offset of the brightness lets two neighbouring tones mix to a third.
      const float offset = (((x + y) & 1) != 0 ? 0.006F : -0.006F);
      const Rgb tone = frame.at(x, y) + Rgb{offset, offset, offset};
      const std::uint32_t key = static_cast<std::uint32_t>(byteOf(tone.red) / 2) << 16U |
                                static_cast<std::uint32_t>(byteOf(tone.green) / 2) << 8U |
                                static_cast<std::uint32_t>(byteOf(tone.blue) / 2);
      const auto [entry, isNew] = known.try_emplace(key, 0);
      if (isNew) {
        entry->second = nearest(tone);
      }
      answer.push_back(entry->second);
    }
  }
  return answer;
}

} // namespace vireonix::painting
