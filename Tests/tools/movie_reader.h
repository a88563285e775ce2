// Reads a Flash movie back, strictly: whatever does not fit is a test failure, told by an
// exception.
#pragma once

#include <cstdint>
#include <span>
#include <stdexcept>
#include <vector>

namespace vireonix::test {

/// Numbers and bit fields of a movie, in the order of the file; throws std::out_of_range at its
/// end.
class BitReader {
public:
  explicit BitReader(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

  std::uint32_t bits(int count);
  std::int32_t signedBits(int count);
  void align() { bit_ = (bit_ + 7) / 8 * 8; }
  std::uint32_t bytes(int count); // little-endian
  std::span<const std::uint8_t> take(std::size_t count);
  [[nodiscard]] std::size_t left() const { return bytes_.size() - (bit_ + 7) / 8; }

private:
  std::span<const std::uint8_t> bytes_;
  std::size_t bit_ = 0;
};

/// In twips.
struct Rect {
  std::int32_t left = 0;
  std::int32_t right = 0;
  std::int32_t top = 0;
  std::int32_t bottom = 0;

  bool operator==(const Rect&) const = default;
  [[nodiscard]] bool holds(std::int32_t x, std::int32_t y) const {
    return x >= left && x <= right && y >= top && y <= bottom;
  }
};

struct Tag {
  std::uint16_t code = 0;
  std::vector<std::uint8_t> body;
};

struct ReadMovie {
  int version = 0;
  Rect stage;
  double framesPerSecond = 0;
  int frames = 0;
  std::vector<Tag> tags; // the end tag, which must be the last, included
};

struct ReadShape {
  int character = 0;
  Rect bounds;
  int fills = 0;
  int outlines = 0;
};

struct Placement {
  bool moves = false;
  bool hasCharacter = false;
  int depth = 0;
  int character = 0;
};

Rect readRect(BitReader& in);
/// Throws std::runtime_error for what is no movie or has bytes behind its end.
ReadMovie readMovie(std::span<const std::uint8_t> file);
/// Throws when a point lies outside the bounds, an outline is open, or the records do not end at
/// the end.
ReadShape readShape(const Tag& tag);
Placement readPlacement(const Tag& tag);

} // namespace vireonix::test
