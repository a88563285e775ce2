// The bytes that a fuzz target is given, as the types of Core.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace vireonix::fuzz {

inline std::string_view textOf(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

/// Two bytes a character, the lower one first; an odd byte at the end does not count.
inline std::u16string wideTextOf(const std::uint8_t* data, std::size_t size) {
  std::u16string text(size / 2, u'\0');
  for (std::size_t i = 0; i < text.size(); ++i)
    text[i] = static_cast<char16_t>(data[2 * i] | (data[2 * i + 1] << 8));
  return text;
}

} // namespace vireonix::fuzz

/// The entry point that the fuzzer calls; always answers 0.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
