#import "Bridge/text.h"
#import "Class/Mode/UtilityFunction.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>

using vireonix::bridge::utf8;

namespace {

struct Row {
  NSString *text;
  const char *result;
};

NSColor *rgb(float red, float green, float blue, float alpha = 1) {
  return [NSColor colorWithCalibratedRed:red green:green blue:blue alpha:alpha];
}

std::string hex(NSColor *color) {
  return utf8([UtilityFunction colorToHexRGB:color]);
}

} // namespace

TEST(UtilityFunction, AFloatFieldKeepsWhatIsNumeric) {
  const std::array<Row, 15> rows = {{
      {nil, ""},
      {@"", ""},
      {@"12", "12"},
      {@"12a", "12"},
      {@"abc", "ab"},
      {@"1.5", "1.5"},
      {@"15.", "15."},
      {@".", "."},
      {@"1.5.", "1.5"},
      {@"1..", "1."},
      {@"5-", "5"},
      {@"-5", "-5"},
      {@"1x2", "1x2"},
      {@"1,", "1"},
      {@"12\U0001F600", "12"},
  }};
  for (const auto &[text, result] : rows)
    EXPECT_EQ(utf8([UtilityFunction checkFloatValueStringFrom:text]), result);
}

TEST(UtilityFunction, AnIntegerFieldKeepsDigits) {
  const std::array<Row, 7> rows = {{
      {nil, ""},
      {@"", ""},
      {@"24", "24"},
      {@"24.", "24"},
      {@"2.5", "2.5"},
      {@"24px", "24p"},
      {@"x", ""},
  }};
  for (const auto &[text, result] : rows)
    EXPECT_EQ(utf8([UtilityFunction checkIntegerValueStringFrom:text]), result);
}

TEST(UtilityFunction, ColoursBecomeSixDigits) {
  EXPECT_EQ(hex([NSColor whiteColor]), "0xFFFFFF");
  EXPECT_EQ(hex([NSColor blackColor]), "0x000000");
  EXPECT_EQ(hex(rgb(0.5F, 0.25F, 0)), "0x7F3F00");
  EXPECT_EQ(hex(rgb(0.2F, 0.1F, 1, 0.3F)), "0x3319FF");
  EXPECT_EQ(hex([NSColor colorWithCalibratedWhite:0.5 alpha:1]), "0x7F7F7F");
  EXPECT_EQ(hex(nil), "0x000000");
}

TEST(UtilityFunction, AColourWithoutAnRgbFormIsBlack) {
  NSImage *image = [[[NSImage alloc] initWithSize:NSMakeSize(4, 4)] autorelease];
  EXPECT_EQ(hex([NSColor colorWithPatternImage:image]), "0x000000");
}

TEST(UtilityFunction, DigitsBecomeColours) {
  for (NSString *text in @[ @"0xFF8000", @"FF8000", @"0x1FF8000", @" 0xff8000" ]) {
    NSColor *color = [UtilityFunction colorFromHexRGB:text];
    EXPECT_EQ(static_cast<float>([color redComponent]), 1.0F);
    EXPECT_EQ(static_cast<float>([color greenComponent]), 128 / 255.0F);
    EXPECT_EQ(static_cast<float>([color blueComponent]), 0.0F);
    EXPECT_EQ(static_cast<float>([color alphaComponent]), 1.0F);
  }
  for (NSString *text in @[ @"#FF8000", @"", @"red" ])
    EXPECT_EQ(hex([UtilityFunction colorFromHexRGB:text]), "0x000000");
  ASSERT_NE([UtilityFunction colorFromHexRGB:nil], nil);
  EXPECT_EQ(hex([UtilityFunction colorFromHexRGB:nil]), "0x000000");
}

TEST(UtilityFunction, EveryStepOfEveryComponentComesBack) {
  for (unsigned value = 0; value < 256; ++value) {
    for (const unsigned bits : {value << 16, value << 8, value, value * 0x010101U}) {
      std::array<char, 16> text{};
      std::snprintf(text.data(), text.size(), "0x%06X", bits);
      NSString *digits = [NSString stringWithUTF8String:text.data()];
      EXPECT_EQ(hex([UtilityFunction colorFromHexRGB:digits]), text.data());
    }
  }
}

TEST(UtilityFunction, AnAddressWithoutASchemeGetsOne) {
  const std::array<Row, 12> rows = {{
      {@"http://host/page", "http://host/page"},
      {@"https://host", "https://host"},
      {@"mailto:someone@host", "mailto:someone@host"},
      {@"www.host.org:8080", "www.host.org:8080"},
      {@"folder/page.html", "http://folder/page.html"},
      {@"www.host.org", "http://www.host.org"},
      {@"a page.html", "http://a page.html"},
      {@"http://a page", "http://http://a page"},
      {@"", "http://"},
      {nil, "http://"},
      {@"/absolute", "http:///absolute"},
      {@"\u00E4.org", "http://\xC3\xA4.org"},
  }};
  for (const auto &[text, result] : rows)
    EXPECT_EQ(utf8([UtilityFunction checkUrlString:text]), result);
}
