#include "Core/text_template.h"

#include <gtest/gtest.h>

#include <array>
#include <map>
#include <vector>

using vireonix::core::fillTemplate;

namespace {

using Values = std::map<std::u16string, std::u16string, std::less<>>;

std::u16string fill(std::u16string_view text, const Values& values) {
  return fillTemplate(text, [&values](std::u16string_view key) {
    const auto found = values.find(key);
    return found == values.end() ? std::u16string() : found->second;
  });
}

struct Row {
  std::u16string_view text;
  std::u16string_view filled;
};

} // namespace

TEST(TextTemplate, PlaceholdersGiveWayToTheirValues) {
  const Values values = {{u"x", u"1"},     {u"name", u"Ann"}, {u"a${b", u"odd"},
                         {u"price", u"5"}, {u"p", u"${x}"},   {u"\u00E4 \n", u"\U0001F600"},
                         {u"", u"never"}};
  const std::array<Row, 22> rows = {{
      {u"", u""},
      {u"plain } $ { text", u"plain } $ { text"},
      {u"A${x}B${y}C", u"A1BC"},
      {u"${x}${x}", u"11"},
      {u"cost:${price}}", u"cost:5}"},
      {u"Hi-${name", u"Hi-Ann"},
      {u"Hi-${nobody", u"Hi-"},
      {u"${}", u""},
      {u"a${}b", u"ab"},
      {u"${", u""},
      {u"a${", u"a"},
      {u"${a${b}}", u"odd}"},
      {u"___${__", u"___"},
      {u"${p}", u"${x}"},
      {u"\r\n ${x} \t", u"\r\n 1 \t"},
      {u"${ x }", u""},
      {u"${\u00E4 \n}", u"\U0001F600"},
      {u"$${x}", u"$1"},
      {u"{x}", u"{x}"},
      {u"${x}}${x}", u"1}1"},
      {u"$", u"$"},
      {u"}${x", u"}1"},
  }};
  for (const auto& [text, filled] : rows)
    EXPECT_TRUE(fill(text, values) == filled) << testing::PrintToString(text);
}

TEST(TextTemplate, EachPlaceholderIsAskedForInOrder) {
  std::vector<std::u16string> keys;
  std::ignore = fillTemplate(u"${b} ${a} ${b} ${}", [&keys](std::u16string_view key) {
    keys.emplace_back(key);
    return std::u16string();
  });
  const std::vector<std::u16string> expected = {u"b", u"a", u"b"};
  EXPECT_TRUE(keys == expected);
}

TEST(TextTemplate, ManyPlaceholdersTakeTimeInProportion) {
  std::u16string text;
  for (int i = 0; i < 200000; ++i)
    text += u"${x}.";
  EXPECT_EQ(fill(text, {{u"x", u"1"}}).size(), 400000U);
}
