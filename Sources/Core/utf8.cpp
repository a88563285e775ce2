#include "utf8.h"

#include <cstdint>
#include <cstring>

namespace vireonix::core {
namespace {

unsigned byteAt(std::string_view text, std::size_t index) {
  return index < text.size() ? static_cast<unsigned char>(text[index]) : 0U;
}

bool isTrailing(unsigned byte, unsigned low = 0x80, unsigned high = 0xBF) {
  return byte >= low && byte <= high;
}

// The length of the longest start that is ASCII, found a word at a time.
std::size_t asciiLength(std::string_view text) {
  constexpr std::uint64_t kHighBits = 0x8080808080808080;
  std::size_t length = 0;
  for (std::uint64_t word = 0; length + sizeof word <= text.size(); length += sizeof word) {
    std::memcpy(&word, text.data() + length, sizeof word);
    if ((word & kHighBits) != 0)
      break;
  }
  while (length < text.size() && byteAt(text, length) < 0x80)
    ++length;
  return length;
}

// The length of the longest start that is well-formed.
std::size_t wellFormedLength(std::string_view text) {
  std::size_t length = 0;
  while (length < text.size()) {
    length += asciiLength(text.substr(length));
    const std::size_t sequence = utf8SequenceLength(text.substr(length));
    if (sequence == 0)
      break;
    length += sequence;
  }
  return length;
}

} // namespace

std::size_t utf8SequenceLength(std::string_view text) {
  if (text.empty())
    return 0;
  const unsigned first = byteAt(text, 0);
  const unsigned second = byteAt(text, 1);
  if (first < 0x80)
    return 1;
  if (first >= 0xC2 && first <= 0xDF)
    return isTrailing(second) ? 2 : 0;
  if (first >= 0xE0 && first <= 0xEF) {
    const unsigned low = first == 0xE0 ? 0xA0 : 0x80;
    const unsigned high = first == 0xED ? 0x9F : 0xBF;
    return isTrailing(second, low, high) && isTrailing(byteAt(text, 2)) ? 3 : 0;
  }
  if (first >= 0xF0 && first <= 0xF4) {
    const unsigned low = first == 0xF0 ? 0x90 : 0x80;
    const unsigned high = first == 0xF4 ? 0x8F : 0xBF;
    const bool whole =
        isTrailing(second, low, high) && isTrailing(byteAt(text, 2)) && isTrailing(byteAt(text, 3));
    return whole ? 4 : 0;
  }
  return 0;
}

bool isWellFormedUtf8(std::string_view text) {
  return wellFormedLength(text) == text.size();
}

std::string wellFormedUtf8(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  while (!text.empty()) {
    const std::size_t good = wellFormedLength(text);
    out.append(text.substr(0, good));
    text.remove_prefix(good);
    if (!text.empty()) {
      out.append(kReplacementUtf8);
      text.remove_prefix(1);
    }
  }
  return out;
}

} // namespace vireonix::core
