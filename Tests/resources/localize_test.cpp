#include "nib_localizer/localize.h"

#include "support/temporary_folder.h"

#include <gtest/gtest.h>

using namespace vireonix::nibs;
using vireonix::test::TemporaryFolder;

namespace {

constexpr const char* kXib = "<document type=\"com.apple.InterfaceBuilder3.Cocoa.XIB\">"
                             "<buttonCell title=\"Open\"/><buttonCell title=\"px\"/></document>";

class Localize : public testing::Test {
protected:
  TemporaryFolder folder;

  Job job(const std::string& strings) {
    return {.xib = folder.write("a.xib", kXib), .strings = folder.write("a.strings", strings)};
  }
};

std::string messageOf(const std::variant<std::string, Failure>& result) {
  const auto* failure = std::get_if<Failure>(&result);
  return failure != nullptr ? failure->message : "no failure";
}

} // namespace

TEST_F(Localize, PutsTheTranslationsIn) {
  const auto result = localize(job("\"Open\" = \"Öffnen\"; \"px\" = \"px\";"));
  EXPECT_NE(std::get<std::string>(result).find("title=\"Öffnen\""), std::string::npos);
}

TEST_F(Localize, NamesTheTextThatHasNoKey) {
  EXPECT_EQ(messageOf(localize(job("\"px\" = \"px\";"))),
            folder.at("a.strings") + ": no key \"Open\", which a.xib shows");
}

TEST_F(Localize, AllowsTextsThatAreTheSameEverywhere) {
  Job allowed = job("\"Open\" = \"Öffnen\";");
  allowed.untranslatable.insert("px");
  EXPECT_TRUE(std::holds_alternative<std::string>(localize(allowed)));
}

TEST_F(Localize, NamesFileAndLineOfABrokenTable) {
  EXPECT_EQ(messageOf(localize(job("\n\"Open\" \"Öffnen\";"))),
            folder.at("a.strings") + ":2: expected '='");
}

TEST_F(Localize, SaysWhenAFileIsMissing) {
  Job missing = job("");
  missing.strings = folder.at("none.strings");
  EXPECT_EQ(messageOf(localize(missing)), folder.at("none.strings") + ": cannot be read");
  missing.xib = folder.at("none.xib");
  EXPECT_EQ(messageOf(localize(missing)),
            folder.at("none.xib") + ": not an Interface Builder document");
}

TEST_F(Localize, NeedsNoTableForThePseudoLocale) {
  Job pseudo{.xib = folder.write("a.xib", kXib)};
  EXPECT_NE(std::get<std::string>(localize(pseudo)).find("title=\"Øpén"), std::string::npos);
}
