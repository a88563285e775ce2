// What lenient reading makes of a document can always be written and read again.
#include "Core/xml.h"
#include "Core/xml_name.h"

#include <gtest/gtest.h>

#include <string>

namespace xml = vireonix::core::xml;
using xml::Mode;

namespace {

std::string elementWithAttributes(int count) {
  std::string document = "<a";
  for (int i = 0; i < count; ++i)
    document += " a" + std::to_string(i) + "=''";
  return document + "/>";
}

std::string repaired(std::string_view document) {
  const auto root = xml::parse(document, Mode::Lenient);
  return root ? xml::write(*root) : "";
}

} // namespace

TEST(XmlRepair, LeavesOutAnXmlDeclarationInsideTheDocument) {
  EXPECT_EQ(repaired("<a><b/><?xml version='1.0'?><?kept yes?>"), "<a><b/><?kept yes?></a>");
  EXPECT_EQ(repaired("<a<?xml?>"), "<a/>");
  EXPECT_EQ(repaired("<a><?xMl b?><?XML?><?xm l?><?xmlx?>"), "<a><?xm l?><?xmlx?></a>");
}

TEST(XmlRepair, LeavesOutAttributesWhoseNamesCannotBeWritten) {
  EXPECT_EQ(repaired("<d \xC2=\xC2\xB7=\""), "<d/>");
}

TEST(XmlRepair, KeepsTheContentOfAnElementWhoseNameCannotBeWritten) {
  const std::string markup = repaired("<a>\xFF<\xC2\xB7>text</a>");
  EXPECT_TRUE(xml::parse(markup, Mode::Strict)) << markup;
  EXPECT_NE(markup.find("text"), std::string::npos) << markup;
}

TEST(XmlRepair, LeavesOutCharactersThatCannotBeWritten) {
  const std::string bad = "\xEF\xBF\xBF";
  EXPECT_EQ(repaired("<a b='" + bad + "'>" + bad), "<a b=\"\"/>");
  EXPECT_EQ(repaired("<a>x" + bad + "y"), "<a>xy</a>");
  // Beside a name that cannot be written the reader hands it out.
  EXPECT_EQ(repaired("<\xFF>" + bad), "<_/>");
}

TEST(XmlRepair, LeavesOutWhiteSpaceBeforeWhatAnInstructionSays) {
  const std::string bad = "\xEF\xBF\xBE";
  EXPECT_EQ(repaired("<a>\xFF<?b " + bad + " c?></a>"), repaired("<a>\xFF<?b c?></a>"));
  EXPECT_EQ(repaired("<a>\xFF<?b " + bad + "?></a>"), repaired("<a>\xFF<?b?></a>"));
}

TEST(XmlRepair, GivesUpADocumentWithTooManyDifferentNames) {
  const std::string many = elementWithAttributes(xml::kMaxNames - 100);
  const auto root = xml::parse(many, Mode::Strict);
  ASSERT_TRUE(root);
  EXPECT_EQ(root->attributes.size(), std::size_t{xml::kMaxNames} - 100);
  // Compared each with each, these would take minutes.
  const std::string tooMany = elementWithAttributes(200'000);
  EXPECT_FALSE(xml::parse(tooMany, Mode::Strict));
  EXPECT_FALSE(xml::parse(tooMany, Mode::Lenient));
}

TEST(XmlName, FollowsTheRulesForNames) {
  for (const char* name : {"a", "_", ":", "a-b.c1", "\xC3\xA9", "\xE4\xB8\xAD", "\xF0\x9F\x98\x80"})
    EXPECT_TRUE(xml::isName(name)) << name;
  for (const char* text :
       {"", "1", "-a", ".", "a b", "a<", "\xC2\xB7", "\xC3\x97", "a\xFF", "\xC3"})
    EXPECT_FALSE(xml::isName(text)) << text;
}
