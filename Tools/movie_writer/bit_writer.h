// Bytes and bit fields in the order that Flash movies store them (Adobe, "SWF File Format",
// version 19, "Basic Data Types"): integers little-endian, bit fields from the highest bit down.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <span>
#include <vector>

namespace vireonix::movie {

/// The fewest bits that hold the unsigned value; 0 for 0.
int unsignedWidth(std::uint32_t value);

/// The fewest bits that hold every value in two's complement; 0 when all of them are 0.
int signedWidth(std::initializer_list<std::int32_t> values);

class BitWriter {
public:
  /// Appends the lowest `count` bits (0 to 32) of the value.
  void bits(std::uint32_t value, int count);
  void signedBits(std::int32_t value, int count);
  void flag(bool value) { bits(value ? 1 : 0, 1); }

  /// Fills the last byte with zero bits; whole bytes begin behind it.
  void align() { freeBits_ = 0; }

  // Whole bytes; each call aligns first.
  void u8(std::uint8_t value);
  void u16(std::uint16_t value);
  void u32(std::uint32_t value);
  void append(std::span<const std::uint8_t> bytes);

  [[nodiscard]] const std::vector<std::uint8_t>& bytes() const { return bytes_; }

private:
  std::vector<std::uint8_t> bytes_;
  int freeBits_ = 0; // in the last byte
};

} // namespace vireonix::movie
