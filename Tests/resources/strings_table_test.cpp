#include "nib_localizer/strings_table.h"

#include <gtest/gtest.h>

using vireonix::nibs::parseStrings;
using vireonix::nibs::StringsError;
using vireonix::nibs::StringsTable;

namespace {

StringsTable table(std::string_view text) {
  auto parsed = parseStrings(text);
  if (const auto* error = std::get_if<StringsError>(&parsed))
    ADD_FAILURE() << error->line << ": " << error->reason;
  return std::get_if<StringsTable>(&parsed) != nullptr ? std::get<StringsTable>(parsed)
                                                       : StringsTable{};
}

StringsError error(std::string_view text) {
  auto parsed = parseStrings(text);
  const auto* found = std::get_if<StringsError>(&parsed);
  if (found == nullptr)
    ADD_FAILURE() << "taken for a table: " << text;
  return found != nullptr ? *found : StringsError{};
}

} // namespace

TEST(StringsTable, ReadsEntriesBetweenCommentsOfBothKinds) {
  const StringsTable expected = {{"Open", "Öffnen"}, {"Close", "Schließen"}};
  EXPECT_EQ(table("/* one */\n\"Open\" = \"Öffnen\"; // two\n\"Close\"=\"Schließen\";"), expected);
}

TEST(StringsTable, IsEmptyForAnEmptyText) {
  EXPECT_TRUE(table("").empty());
  EXPECT_TRUE(table("\xEF\xBB\xBF /* only this */ ").empty());
}

TEST(StringsTable, UnderstandsEscapes) {
  EXPECT_EQ(table(R"("a" = "\"\\\n\t\r\'\U00e9\U2026\U0041";)").at("a"),
            "\"\\\n\t\r'\xC3\xA9\xE2\x80\xA6"
            "A");
}

TEST(StringsTable, KeepsCommentMarksInsideTexts) {
  EXPECT_EQ(table("\"http://x /* y */\" = \"//\";").at("http://x /* y */"), "//");
}

TEST(StringsTable, NamesTheLineOfAMissingSemicolon) {
  const StringsError found = error("\"a\" = \"b\"\n\"c\" = \"d\";");
  EXPECT_EQ(found.line, 2);
  EXPECT_EQ(found.reason, "expected ';'");
}

TEST(StringsTable, RefusesWhatHasNoEnd) {
  EXPECT_EQ(error("\n\"a\" = \"b;").reason, "a text without a closing quote");
  EXPECT_EQ(error("/* a").reason, "a comment without an end");
  EXPECT_EQ(error("\"a\" = ").reason, "expected '\"'");
}

TEST(StringsTable, RefusesAKeyThatOccursTwice) {
  const StringsError found = error("\"a\" = \"b\";\n\n\"a\" = \"c\";");
  EXPECT_EQ(found.line, 3);
  EXPECT_EQ(found.reason, "the key \"a\" occurs twice");
}

TEST(StringsTable, RefusesUnknownAndBrokenEscapes) {
  EXPECT_EQ(error(R"("a" = "\x";)").reason, "an unknown escape");
  EXPECT_EQ(error(R"("a" = "\U12";)").reason,
            "\\U needs four hexadecimal digits that name a character");
  EXPECT_EQ(error(R"("a" = "\UD800";)").reason,
            "\\U needs four hexadecimal digits that name a character");
}

TEST(StringsTable, RefusesBytesThatAreNotUtf8) {
  EXPECT_EQ(error("\"a\" = \"\xFF\";").reason, "not UTF-8");
}
