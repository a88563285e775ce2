#include "Core/colour_text.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>

using vireonix::core::Colour;
using vireonix::core::colourOfText;
using vireonix::core::colourText;

TEST(ColourText, ComponentsAreTruncatedToTwoDigits) {
  const std::array<std::pair<Colour, std::string_view>, 6> rows = {{
      {{1, 1, 1}, "0xFFFFFF"},
      {{0, 0, 0}, "0x000000"},
      {{0.5F, 0.25F, 0}, "0x7F3F00"},
      {{0.2F, 0.1F, 1}, "0x3319FF"},
      {{1.5F, -1, std::numeric_limits<float>::infinity()}, "0xFF00FF"},
      {{std::nanf(""), 0, 0}, "0x000000"},
  }};
  for (const auto& [colour, text] : rows)
    EXPECT_EQ(colourText(colour), text);
}

TEST(ColourText, TheLowest24BitsOfTheLeadingNumberAreRead) {
  const Colour orange{1, 128 / 255.0F, 0};
  const Colour black{};
  const Colour white{1, 1, 1};
  const std::array<std::pair<std::string_view, Colour>, 17> rows = {{
      {"0xFF8000", orange},
      {"0XFF8000", orange},
      {"FF8000", orange},
      {"ff8000", orange},
      {"0x1FF8000", orange},
      {" \n\t0xFF8000", orange},
      {"\xC2\xA0"
       "FF8000",
       orange},
      {"FF8000 and more", orange},
      {"#FF8000", black},
      {"", black},
      {"0x", black},
      {"0xZZ", black},
      {"-1", black},
      {"x12", black},
      {"FFFFFFFF", white},
      {"100000000", white},
      {"123456789ABCDEF0123", white},
  }};
  for (const auto& [text, colour] : rows)
    EXPECT_EQ(colourOfText(text), colour) << text;
}

TEST(ColourText, EverySixDigitColourComesBack) {
  for (uint32_t bits = 0; bits <= 0xFFFFFF; bits += (bits < 0x1000 ? 1 : 251)) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "0x%06X", bits);
    ASSERT_EQ(colourText(colourOfText(text.data())), text.data());
  }
}
