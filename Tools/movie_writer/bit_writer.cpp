#include "bit_writer.h"

#include <algorithm>
#include <bit>

namespace vireonix::movie {

int unsignedWidth(std::uint32_t value) {
  return static_cast<int>(std::bit_width(value));
}

int signedWidth(std::initializer_list<std::int32_t> values) {
  int width = 0;
  for (const std::int32_t value : values) {
    if (value != 0) {
      const auto magnitude = static_cast<std::uint32_t>(value < 0 ? ~value : value);
      width = std::max(width, unsignedWidth(magnitude) + 1);
    }
  }
  return width;
}

void BitWriter::bits(std::uint32_t value, int count) {
  for (int bit = count - 1; bit >= 0; --bit) {
    if (freeBits_ == 0) {
      bytes_.push_back(0);
      freeBits_ = 8;
    }
    --freeBits_;
    const std::uint32_t one = (value >> bit) & 1U;
    bytes_.back() = static_cast<std::uint8_t>(bytes_.back() | (one << freeBits_));
  }
}

void BitWriter::signedBits(std::int32_t value, int count) {
  bits(static_cast<std::uint32_t>(value), count);
}

void BitWriter::u8(std::uint8_t value) {
  align();
  bytes_.push_back(value);
}

void BitWriter::u16(std::uint16_t value) {
  u8(static_cast<std::uint8_t>(value & 0xFFU));
  u8(static_cast<std::uint8_t>(value >> 8U));
}

void BitWriter::u32(std::uint32_t value) {
  u16(static_cast<std::uint16_t>(value & 0xFFFFU));
  u16(static_cast<std::uint16_t>(value >> 16U));
}

void BitWriter::append(std::span<const std::uint8_t> bytes) {
  align();
  bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
}

} // namespace vireonix::movie
