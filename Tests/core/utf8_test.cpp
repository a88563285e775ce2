#include "Core/utf8.h"

#include <gtest/gtest.h>

#include <string>

using vireonix::core::isWellFormedUtf8;
using vireonix::core::utf8SequenceLength;
using vireonix::core::wellFormedUtf8;

namespace {

struct Case {
  std::string text;
  std::string repaired;
};

const std::string kBad = "\xEF\xBF\xBD";

const Case kCases[] = {
    {"", ""},
    {"plain", "plain"},
    {"\xC3\xA4\xE6\x97\xA5\xF0\x9F\x98\x80", "\xC3\xA4\xE6\x97\xA5\xF0\x9F\x98\x80"},
    {"\xFF", kBad},
    {"a\x80z", "a" + kBad + "z"},
    // Cut short at the end and in the middle.
    {"\xC3", kBad},
    {"\xE6\x97", kBad + kBad},
    {"\xF0\x9F\x98!", kBad + kBad + kBad + "!"},
    // Longer than needed.
    {"\xC0\xAF", kBad + kBad},
    {"\xE0\x80\xAF", kBad + kBad + kBad},
    {"\xF0\x80\x80\xAF", kBad + kBad + kBad + kBad},
    // A surrogate, and beyond U+10FFFF.
    {"\xED\xA0\x80", kBad + kBad + kBad},
    {"\xF4\x90\x80\x80", kBad + kBad + kBad + kBad},
    {"\xF5\x80\x80\x80", kBad + kBad + kBad + kBad},
    // The ends of the ranges.
    {"\xF4\x8F\xBF\xBF", "\xF4\x8F\xBF\xBF"},
    {"\xED\x9F\xBF\xEE\x80\x80", "\xED\x9F\xBF\xEE\x80\x80"},
    {"\xE0\xA0\x80\xC2\x80", "\xE0\xA0\x80\xC2\x80"},
};

} // namespace

TEST(Utf8, EachBadByteBecomesOneReplacementCharacter) {
  for (const Case& each : kCases) {
    EXPECT_EQ(wellFormedUtf8(each.text), each.repaired) << each.text;
    EXPECT_EQ(isWellFormedUtf8(each.text), each.text == each.repaired) << each.text;
  }
}

TEST(Utf8, ASequenceIsAsLongAsItsFirstByteSays) {
  EXPECT_EQ(utf8SequenceLength("az"), 1U);
  EXPECT_EQ(utf8SequenceLength("\xC3\xA4z"), 2U);
  EXPECT_EQ(utf8SequenceLength("\xE6\x97\xA5z"), 3U);
  EXPECT_EQ(utf8SequenceLength("\xF0\x9F\x98\x80z"), 4U);
  EXPECT_EQ(utf8SequenceLength(""), 0U);
}

TEST(Utf8, NulIsACharacter) {
  EXPECT_TRUE(isWellFormedUtf8(std::string(3, '\0')));
}
