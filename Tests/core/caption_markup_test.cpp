#include "Core/caption_markup.h"

#include "Core/xml.h"

#include "support/sanitizer.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace xml = vireonix::core::xml;
using vireonix::core::slider::Caption;
using vireonix::core::slider::captionMarkup;
using vireonix::core::slider::parseCaption;
using vireonix::test::rounds;

namespace {

std::string markupOf(const std::string& text, const std::string& size = "24",
                     const std::string& color = "#FF0000") {
  return captionMarkup(text, size, color);
}

// The same reading through the general parser: a comment keeps it from knowing the form.
std::optional<Caption> parsedGenerally(const std::string& markup) {
  return parseCaption("<!---->" + markup);
}

} // namespace

TEST(CaptionMarkup, IsABoldFontWithTheValuesAsTheyStand) {
  EXPECT_EQ(markupOf("Tom & <Jerry>"),
            "<b><font size=\"24\" color=\"#FF0000\">Tom & <Jerry></font></b>");
}

TEST(CaptionMarkup, AMissingValueIsWrittenAsNull) {
  EXPECT_EQ(captionMarkup({}, {}, {}),
            "<b><font size=\"(null)\" color=\"(null)\">(null)</font></b>");
}

TEST(CaptionMarkup, ReadsWhatEachFormHolds) {
  struct Case {
    const char* markup;
    Caption caption;
  };
  const Case cases[] = {
      {"<b><font size=\"24\" color=\"#FF0000\">Hi</font></b>", {"Hi", "24", "#FF0000"}},
      {"<b><font size=\"\" color=\"\"></font></b>", {"", "", ""}},
      {"<b><font color=\"c\" size='9'>Hi</font></b>", {"Hi", "9", "c"}},
      {"<b><font size=\"9\" color=\"c\">a &amp; <i>b</i></font></b>", {"a & b", "9", "c"}},
      {"<b><font size=\"9\" color=\"c\"><![CDATA[<]]></font></b>", {"<", "9", "c"}},
      {"<b><font size=\"&lt;\" color=\"a\nb\">x</font></b>", {"x", "<", "a b"}},
      {" <b>\n <font size=\"9\">x</font></b> ", {"x", "9", std::nullopt}},
      {"<p><q>x</q><r size=\"1\">y</r></p>", {"x", std::nullopt, std::nullopt}},
      {"<b>plain</b>", {"plain", std::nullopt, std::nullopt}},
      {"<b/>", {}},
      {"<b><font size=\"1\" color=\"c\">x\">y</font></b>", {"x\">y", "1", "c"}},
      {"<b><font size=\"1\" color=\"c\">\n \t</font></b>", {"\n \t", "1", "c"}},
      {"<b><font size=\"1\" color=\"c\">a\rb</font></b>", {"a\nb", "1", "c"}},
  };
  for (const Case& each : cases) {
    const auto caption = parseCaption(each.markup);
    ASSERT_TRUE(caption) << each.markup;
    EXPECT_EQ(*caption, each.caption) << each.markup;
  }
}

TEST(CaptionMarkup, WhatIsNotOneElementIsNoCaption) {
  for (const std::string& markup :
       {std::string(), std::string("text"), markupOf("a & b"), markupOf("a < b"), markupOf("]]>"),
        markupOf("</font>"), markupOf("</b>"), markupOf("x", "\""), markupOf("x", "<"),
        markupOf("x", "1", "&"), markupOf("\x01"), markupOf("\xFF"), markupOf("\xEF\xBF\xBF"),
        markupOf("x") + markupOf("y"), markupOf("x") + "y", std::string("<b><font>")})
    EXPECT_FALSE(parseCaption(markup)) << markup;
}

TEST(CaptionMarkup, TheWrittenFormIsReadAsTheGeneralParserReadsIt) {
  static const std::string kPieces[] = {"a",
                                        "0",
                                        "&",
                                        "<",
                                        "\"",
                                        ">",
                                        "\"> ",
                                        "</font></b>",
                                        "]]>",
                                        "'",
                                        "\n",
                                        "\t",
                                        "\r",
                                        "\" color=\"",
                                        "<font size=\"",
                                        "&amp;",
                                        " ",
                                        "\x01",
                                        "\xC3\xA4",
                                        "\xF0\x9F\x98\x80",
                                        "\xFF",
                                        "\xEF\xBF\xBE",
                                        "\xEF\xBF\xBD",
                                        "\x7F"};
  std::mt19937 random(11);
  auto any = [&random](std::size_t most) {
    std::string out;
    for (auto i = random() % (most + 1); i > 0; --i)
      out += kPieces[random() % 3 == 0 ? random() % std::size(kPieces) : random() % 2];
    return out;
  };
  int read = 0;
  for (int round = 0; round < rounds(20'000); ++round) {
    const std::string markup = markupOf(any(6), any(2), any(2));
    const auto caption = parseCaption(markup);
    ASSERT_EQ(caption, parsedGenerally(markup)) << markup;
    read += caption ? 1 : 0;
  }
  EXPECT_GT(read, rounds(1000));
}

TEST(CaptionMarkup, ALongCaptionIsRead) {
  const std::string text(1'000'000, 'x');
  EXPECT_EQ(*parseCaption(markupOf(text))->text, text);
  EXPECT_EQ(*parsedGenerally(markupOf(text))->text, text);
}
