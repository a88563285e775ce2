#include "Core/xml.h"

#include "support/sanitizer.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <string>

#include <sys/stat.h>

namespace xml = vireonix::core::xml;
using vireonix::test::rounds;
using vireonix::test::TemporaryFolder;

namespace {

std::string rootOf(const std::string& path) {
  const auto root = xml::parseFile(path);
  return root ? xml::write(*root) : "(nothing)";
}

} // namespace

TEST(XmlFile, IsReadStrictlyElseLenientlyElseNotAtAll) {
  const TemporaryFolder folder;
  EXPECT_EQ(rootOf(folder.write("good", "<a b='&amp;'>x</a>")), "<a b=\"&amp;\">x</a>");
  EXPECT_EQ(rootOf(folder.write("open", "<a><b>x</a>")), "<a><b>x</b></a>");
  EXPECT_EQ(rootOf(folder.write("text", "no markup")), "(nothing)");
  EXPECT_EQ(rootOf(folder.write("empty", "")), "(nothing)");
}

TEST(XmlFile, WhatIsNoFileGivesNothingAndWaitsForNothing) {
  const TemporaryFolder folder;
  ASSERT_EQ(mkfifo(folder.at("pipe").c_str(), 0600), 0);
  EXPECT_EQ(rootOf(folder.at("missing")), "(nothing)");
  EXPECT_EQ(rootOf(folder.path()), "(nothing)");
  EXPECT_EQ(rootOf(folder.at("pipe")), "(nothing)");
  EXPECT_EQ(rootOf(""), "(nothing)");
}

TEST(XmlFile, OfAHundredMegabytesIsRead) {
  const TemporaryFolder folder;
  std::string document = "<main><data>";
  const std::string slide =
      "<slide><text a='b'><![CDATA[" + std::string(1'000'000, 'x') + "]]></text></slide>";
  const int slides = rounds(100);
  for (int i = 0; i < slides; ++i)
    document += slide;
  document += "</data></main>";
  const auto root = xml::parseFile(folder.write("huge", document));
  ASSERT_TRUE(root);
  EXPECT_EQ(root->firstElement()->children.size(), static_cast<std::size_t>(slides));
}
