#include "Core/number_text.h"

#include "support/sanitizer.h"

#include <gtest/gtest.h>

#include <array>
#include <clocale>
#include <cstdio>
#include <limits>
#include <random>

using vireonix::test::rounds;
using namespace vireonix::core;

namespace {

constexpr float kLargestFloat = std::numeric_limits<float>::max();
constexpr double kLargestDouble = std::numeric_limits<double>::max();
constexpr int32_t kLargestInt = std::numeric_limits<int32_t>::max();
constexpr int32_t kSmallestInt = std::numeric_limits<int32_t>::min();

struct FilterRow {
  std::u16string_view text;
  std::u16string_view kept;
};

struct NumberRow {
  std::string_view text;
  double value;
};

struct IntegerRow {
  std::string_view text;
  int32_t value;
};

} // namespace

TEST(NumberTextFilter, AFloatFieldKeepsADigitOrAFirstPointAtItsEnd) {
  const std::array<FilterRow, 18> rows = {{
      {u"", u""},
      {u"12", u"12"},
      {u"12a", u"12"},
      {u"abc", u"ab"},
      {u"1.5", u"1.5"},
      {u"15.", u"15."},
      {u".", u"."},
      {u"1.5.", u"1.5"},
      {u"1..", u"1."},
      {u"5-", u"5"},
      {u"-5", u"-5"},
      {u"1x2", u"1x2"},
      {u"1,", u"1"},
      {u"a", u""},
      {u"1 ", u"1"},
      {u"5\u0663", u"5"},
      {u"..5", u"..5"},
      {u"1.2.3", u"1.2.3"},
  }};
  for (const auto& [text, kept] : rows)
    EXPECT_TRUE(filterFloatText(text) == kept) << testing::PrintToString(text);
}

TEST(NumberTextFilter, AnIntegerFieldKeepsADigitAtItsEnd) {
  const std::array<FilterRow, 8> rows = {{{u"", u""},
                                          {u"24", u"24"},
                                          {u"24.", u"24"},
                                          {u"2.5", u"2.5"},
                                          {u"24px", u"24p"},
                                          {u"-", u""},
                                          {u"-7", u"-7"},
                                          {u".", u""}}};
  for (const auto& [text, kept] : rows)
    EXPECT_TRUE(filterIntegerText(text) == kept) << testing::PrintToString(text);
}

TEST(NumberTextFilter, NoHalfOfASurrogatePairStays) {
  EXPECT_TRUE(filterFloatText(u"12\U0001F600") == u"12");
  EXPECT_TRUE(filterIntegerText(u"\U0001F600") == u"");
  constexpr std::array<char16_t, 2> kLone = {u'1', 0xDE00};
  EXPECT_TRUE(filterFloatText({kLone.data(), kLone.size()}) == u"1");
}

TEST(NumberTextFilter, AtMostOneCharacterGoesAndOnlyTheLast) {
  std::mt19937 random(1);
  constexpr std::u16string_view kCharacters = u"0123456789..,-+ax ";
  for (int round = 0; round < rounds(20000); ++round) {
    std::u16string text;
    for (size_t length = random() % 8; length > 0; --length)
      text += kCharacters[random() % kCharacters.size()];
    for (const auto kept : {filterFloatText(text), filterIntegerText(text)}) {
      EXPECT_TRUE(std::u16string_view(text).starts_with(kept));
      EXPECT_LE(text.size() - kept.size(), 1U);
    }
  }
}

TEST(NumberTextReading, TheLongestLeadingDecimalNumberIsTaken) {
  const std::array<NumberRow, 36> rows = {{
      {"", 0},
      {"12", 12},
      {"12.5", 12.5},
      {" 12.5abc", 12.5},
      {"\t\r\n 7", 7},
      {"\xC2\xA0\xE3\x80\x80"
       "7",
       7},
      {"abc", 0},
      {"a1", 0},
      {"1x2", 1},
      {"-5", -5},
      {"+5", 5},
      {"- 5", 0},
      {"--5", 0},
      {"+-5", 0},
      {"5.", 5},
      {".5", 0.5},
      {"-.5", -0.5},
      {".", 0},
      {"-", 0},
      {"1.5.2", 1.5},
      {"1,5", 1},
      {"1 2", 1},
      {"1e5", 100000},
      {"1E+2", 100},
      {"25e-1", 2.5},
      {"1.e2", 100},
      {".e2", 0},
      {"1e", 1},
      {"1e+", 1},
      {"1e 5", 1},
      {"0x10", 0},
      {"inf", 0},
      {"nan", 0},
      {"-infinity", 0},
      {"00012.50", 12.5},
      {"\xD9\xA3", 0},
  }};
  for (const auto& [text, value] : rows) {
    EXPECT_EQ(doubleValue(text), value) << text;
    EXPECT_EQ(floatValue(text), static_cast<float>(value)) << text;
  }
}

TEST(NumberTextReading, ANumberOutOfRangeReadsAsTheNearestFiniteOne) {
  const std::array<NumberRow, 10> rows = {{
      {"1e400", kLargestDouble},
      {"-1e400", -kLargestDouble},
      {"0.0001e500", kLargestDouble},
      {"1e99999999999999999999", kLargestDouble},
      {"1e-400", 0},
      {"-1e-99999999999999999999", 0},
      {"0e99999999999999999999", 0},
      {"1234e-99999", 0},
      {"1.7976931348623157e308", kLargestDouble},
      {"0.0", 0},
  }};
  for (const auto& [text, value] : rows)
    EXPECT_EQ(doubleValue(text), value) << text;
  EXPECT_EQ(doubleValue(std::string(500, '9')), kLargestDouble);
  EXPECT_EQ(doubleValue("0." + std::string(500, '0') + "1"), 0);
  EXPECT_EQ(doubleValue("0." + std::string(500, '0') + "1e501"), 1);
  EXPECT_EQ(doubleValue("0." + std::string(500, '0') + "1e900"), kLargestDouble);
  EXPECT_EQ(floatValue("1e39"), kLargestFloat);
  EXPECT_EQ(floatValue("-1e400"), -kLargestFloat);
  EXPECT_EQ(floatValue("1e-60"), 0);
}

TEST(NumberTextReading, WholeNumbersStopAtTheirRange) {
  const std::array<IntegerRow, 16> rows = {{
      {"", 0},
      {"24", 24},
      {" 3", 3},
      {"\n3", 3},
      {"2.9", 2},
      {"+3", 3},
      {"-3", -3},
      {"--3", 0},
      {"a3", 0},
      {"0x10", 0},
      {"1e5", 1},
      {"2147483647", kLargestInt},
      {"2147483648", kLargestInt},
      {"-2147483648", kSmallestInt},
      {"-99999999999999999999999", kSmallestInt},
      {"99999999999999999999999", kLargestInt},
  }};
  for (const auto& [text, value] : rows)
    EXPECT_EQ(intValue(text), value) << text;
}

TEST(NumberTextReading, LongDigitsTakeNoLongerThanTheirLength) {
  const std::string text(1U << 20, '9');
  EXPECT_EQ(doubleValue(text), kLargestDouble);
  EXPECT_EQ(doubleValue(text + "e-1048575"), doubleValue("10"));
  EXPECT_EQ(intValue(text), kLargestInt);
}

TEST(NumberTextWriting, OneDecimalPlaceIsWrittenAsPrintfDoes) {
  std::mt19937 random(2);
  std::uniform_real_distribution<float> values(-200, 200);
  std::array<char, 64> expected{};
  for (int round = 0; round < rounds(20000); ++round) {
    const double value = values(random);
    std::snprintf(expected.data(), expected.size(), "%.1f", value);
    EXPECT_EQ(oneDecimalText(value), expected.data());
  }
  EXPECT_EQ(oneDecimalText(12.34F), "12.3");
  EXPECT_EQ(oneDecimalText(0.25), "0.2");
  EXPECT_EQ(oneDecimalText(100), "100.0");
  EXPECT_EQ(oneDecimalText(kLargestDouble).size(), 311U);
}

TEST(NumberTextWriting, WhatIsWrittenIsReadBack) {
  for (int tenths = -2000; tenths <= 2000; ++tenths) {
    const auto value = static_cast<float>(tenths) / 10.0F;
    EXPECT_EQ(floatValue(oneDecimalText(value)), value);
  }
  EXPECT_EQ(floatValue(oneDecimalText(kLargestFloat)), kLargestFloat);
}
