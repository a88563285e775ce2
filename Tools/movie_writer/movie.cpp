#include "movie.h"

#include <array>
#include <cmath>
#include <zlib.h>

namespace vireonix::movie {

namespace {

constexpr std::uint8_t kVersion = 8;
constexpr std::size_t kHeaderLength = 8; // signature, version, length

constexpr std::uint16_t kEnd = 0;
constexpr std::uint16_t kShowFrame = 1;
constexpr std::uint16_t kSetBackgroundColor = 9;
constexpr std::uint16_t kPlaceObject2 = 26;
constexpr std::uint16_t kRemoveObject2 = 28;
constexpr std::uint16_t kDefineShape3 = 32;
constexpr std::uint16_t kFileAttributes = 69;

constexpr std::uint8_t kPlaceHasTint = 0x08;
constexpr std::uint8_t kPlaceHasMatrix = 0x04;
constexpr std::uint8_t kPlaceHasCharacter = 0x02;
constexpr std::uint8_t kPlaceMoves = 0x01;

/// The body as one zlib stream; empty when zlib fails.
std::vector<std::uint8_t> compressed(const std::vector<std::uint8_t>& body) {
  uLongf length = compressBound(body.size());
  std::vector<std::uint8_t> stream(length);
  if (compress2(stream.data(), &length, body.data(), body.size(), Z_BEST_COMPRESSION) != Z_OK) {
    return {};
  }
  stream.resize(length);
  return stream;
}

} // namespace

Movie::Movie(Point stageSize, double framesPerSecond, Colour background)
    : stageSize_(stageSize), framesPerSecond_(framesPerSecond) {
  tag(kFileAttributes, std::array<std::uint8_t, 4>{}); // no script, no network
  BitWriter colour;
  writeOpaqueColour(colour, background);
  tag(kSetBackgroundColor, colour.bytes());
}

void Movie::tag(std::uint16_t code, std::span<const std::uint8_t> body) {
  constexpr std::size_t kLongForm = 0x3F;
  const std::size_t shortLength = body.size() < kLongForm ? body.size() : kLongForm;
  tags_.u16(static_cast<std::uint16_t>((code << 6U) | shortLength));
  if (shortLength == kLongForm) {
    tags_.u32(static_cast<std::uint32_t>(body.size()));
  }
  tags_.append(body);
}

std::uint16_t Movie::define(const Shape& shape) {
  ++characters_;
  BitWriter body;
  shape.write(body, characters_);
  tag(kDefineShape3, body.bytes());
  return characters_;
}

void Movie::place(std::uint16_t depth, std::uint16_t character, const Matrix& matrix, Tint tint) {
  const auto before = shown_.find(depth);
  const bool moves = before != shown_.end();
  const bool isNew = !moves || before->second != character;
  BitWriter body;
  body.u8(static_cast<std::uint8_t>(kPlaceHasTint | kPlaceHasMatrix |
                                    (isNew ? kPlaceHasCharacter : 0) | (moves ? kPlaceMoves : 0)));
  body.u16(depth);
  if (isNew) {
    body.u16(character);
  }
  writeMatrix(body, matrix);
  writeTint(body, tint);
  tag(kPlaceObject2, body.bytes());
  shown_[depth] = character;
}

void Movie::remove(std::uint16_t depth) {
  if (shown_.erase(depth) != 0) {
    BitWriter body;
    body.u16(depth);
    tag(kRemoveObject2, body.bytes());
  }
}

void Movie::showFrame() {
  ++frames_;
  tag(kShowFrame, {});
}

std::vector<std::uint8_t> Movie::file(Packing packing) const {
  BitWriter body;
  writeRect(body, {{}, stageSize_});
  body.u16(static_cast<std::uint16_t>(std::lround(framesPerSecond_ * 256)));
  body.u16(frames_);
  body.append(tags_.bytes());
  body.u16(kEnd);

  const std::vector<std::uint8_t> stream =
      packing == Packing::Zlib ? compressed(body.bytes()) : std::vector<std::uint8_t>{};
  BitWriter file;
  file.u8(stream.empty() ? 'F' : 'C');
  file.u8('W');
  file.u8('S');
  file.u8(kVersion);
  file.u32(static_cast<std::uint32_t>(kHeaderLength + body.bytes().size()));
  file.append(stream.empty() ? body.bytes() : stream);
  return file.bytes();
}

} // namespace vireonix::movie
