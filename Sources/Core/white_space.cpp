#include "Core/white_space.h"

#include <algorithm>
#include <array>

namespace vireonix::core {
namespace {

using namespace std::string_view_literals;

// The characters with the property White_Space (The Unicode Standard, PropList), in UTF-8.
constexpr std::array kWhiteSpace = {
    "\t"sv,           "\n"sv,           "\v"sv,
    "\f"sv,           "\r"sv,           " "sv,
    "\xC2\x85"sv,     "\xC2\xA0"sv,     "\xE1\x9A\x80"sv,
    "\xE2\x80\x80"sv, "\xE2\x80\x81"sv, "\xE2\x80\x82"sv,
    "\xE2\x80\x83"sv, "\xE2\x80\x84"sv, "\xE2\x80\x85"sv,
    "\xE2\x80\x86"sv, "\xE2\x80\x87"sv, "\xE2\x80\x88"sv,
    "\xE2\x80\x89"sv, "\xE2\x80\x8A"sv, "\xE2\x80\xA8"sv,
    "\xE2\x80\xA9"sv, "\xE2\x80\xAF"sv, "\xE2\x81\x9F"sv,
    "\xE3\x80\x80"sv,
};

} // namespace

std::string_view skipWhiteSpace(std::string_view text) {
  for (;;) {
    const auto* const found = std::ranges::find_if(
        kWhiteSpace, [text](std::string_view space) { return text.starts_with(space); });
    if (found == kWhiteSpace.end())
      return text;
    text.remove_prefix(found->size());
  }
}

} // namespace vireonix::core
