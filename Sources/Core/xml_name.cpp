#include "xml_name.h"

#include "utf8.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace vireonix::core::xml {
namespace {

struct Range {
  std::uint32_t first;
  std::uint32_t last;
};

constexpr std::array<Range, 16> kStartCharacters = {{{':', ':'},
                                                     {'A', 'Z'},
                                                     {'_', '_'},
                                                     {'a', 'z'},
                                                     {0xC0, 0xD6},
                                                     {0xD8, 0xF6},
                                                     {0xF8, 0x2FF},
                                                     {0x370, 0x37D},
                                                     {0x37F, 0x1FFF},
                                                     {0x200C, 0x200D},
                                                     {0x2070, 0x218F},
                                                     {0x2C00, 0x2FEF},
                                                     {0x3001, 0xD7FF},
                                                     {0xF900, 0xFDCF},
                                                     {0xFDF0, 0xFFFD},
                                                     {0x10000, 0xEFFFF}}};

constexpr std::array<Range, 5> kFurtherCharacters = {
    {{'-', '.'}, {'0', '9'}, {0xB7, 0xB7}, {0x300, 0x36F}, {0x203F, 0x2040}}};

bool isIn(const auto& ranges, std::uint32_t character) {
  return std::ranges::any_of(ranges, [character](const Range& range) {
    return character >= range.first && character <= range.last;
  });
}

// The character of a well-formed sequence.
std::uint32_t decoded(std::string_view sequence) {
  constexpr std::array<unsigned, 5> kLeadBits = {0, 0x7F, 0x1F, 0x0F, 0x07};
  std::uint32_t character =
      static_cast<unsigned char>(sequence.front()) & kLeadBits.at(sequence.size());
  for (const char byte : sequence.substr(1))
    character = (character << 6U) | (static_cast<unsigned char>(byte) & 0x3FU);
  return character;
}

} // namespace

bool isName(std::string_view text) {
  bool first = true;
  while (!text.empty()) {
    const std::size_t length = utf8SequenceLength(text);
    if (length == 0)
      return false;
    const std::uint32_t character = decoded(text.substr(0, length));
    if (!isIn(kStartCharacters, character) && (first || !isIn(kFurtherCharacters, character)))
      return false;
    text.remove_prefix(length);
    first = false;
  }
  return !first;
}

bool isInstructionTarget(std::string_view text) {
  const auto isSameLetter = [](char one, char other) { return (one | 0x20) == other; };
  return isName(text) && !std::ranges::equal(text, std::string_view("xml"), isSameLetter);
}

} // namespace vireonix::core::xml
