#import "Locale.h"

#import "Bridge/text.h"
#import "Class/PluginSettingsDelegate.h"
#import "support/own_process.h"
#import "support/temporary_folder.h"

#include <gtest/gtest.h>

using vireonix::bridge::string;
using vireonix::bridge::utf8;
using vireonix::test::passesInOwnProcess;
using vireonix::test::TemporaryFolder;

namespace {

// A bundle with a table in German and one in English.
void writeTables(const TemporaryFolder &folder) {
  folder.write("p.bundle/Resources/de.lproj/PluginLocale.strings",
               "\"Cancel\" = \"Cancel\";\n\"Add\" = \"Hinzufügen\";\n");
  folder.write("p.bundle/Resources/en.lproj/PluginLocale.strings", "\"Add\" = \"Append\";\n");
}

std::string lookUp(const char *key, const char *otherwise) {
  return utf8(loadAppString(string(key), string(otherwise)));
}

// In a process that has the German table: the body's lookups pass.
testing::AssertionResult passesInGerman(const std::function<void()> &body) {
  TemporaryFolder folder;
  writeTables(folder);
  return passesInOwnProcess([&folder, &body] {
    setDefaultLanguageCode(@"de");
    setDefaultBundlePath(string(folder.at("p.bundle")));
    body();
  });
}

} // namespace

TEST(Locale, WithoutABundleEveryKeyGivesItsDefault) {
  EXPECT_TRUE(passesInOwnProcess([] {
    EXPECT_EQ(defaultLanguageCode(), nil);
    EXPECT_EQ(defaultBundlePath(), nil);
    setDefaultLanguageCode(@"de");
    EXPECT_EQ(lookUp("Add", "plus"), "plus");
  }));
}

TEST(Locale, TheTableOfTheLanguageAnswersAndMissingKeysGiveTheDefault) {
  EXPECT_TRUE(passesInGerman([] {
    EXPECT_EQ(lookUp("Add", "plus"), "Hinzufügen");
    EXPECT_EQ(lookUp("Remove", "minus"), "minus");
  }));
}

TEST(Locale, AnEntryEqualToItsKeyCountsAsMissing) {
  EXPECT_TRUE(passesInGerman([] { EXPECT_EQ(lookUp("Cancel", "Stop"), "Stop"); }));
}

TEST(Locale, AfterTheFirstLookupAnotherLanguageChangesNothing) {
  EXPECT_TRUE(passesInGerman([] {
    EXPECT_EQ(lookUp("Add", "plus"), "Hinzufügen");
    setDefaultLanguageCode(@"en");
    EXPECT_EQ(lookUp("Add", "plus"), "Hinzufügen");
  }));
}

TEST(Locale, WhileNoTableIsFoundEveryLookupTriesAgain) {
  TemporaryFolder folder;
  writeTables(folder);
  EXPECT_TRUE(passesInOwnProcess([&folder] {
    setDefaultLanguageCode(@"de");
    setDefaultBundlePath(string(folder.at("nowhere.bundle")));
    EXPECT_EQ(lookUp("Add", "plus"), "plus");
    setDefaultBundlePath(string(folder.at("p.bundle")));
    EXPECT_EQ(lookUp("Add", "plus"), "Hinzufügen");
  }));
}

TEST(Locale, ABrokenTableGivesTheDefault) {
  TemporaryFolder folder;
  folder.write("p.bundle/Resources/de.lproj/PluginLocale.strings", "\"Add\" = \xFF;;; nonsense");
  EXPECT_TRUE(passesInOwnProcess([&folder] {
    setDefaultLanguageCode(@"de");
    setDefaultBundlePath(string(folder.at("p.bundle")));
    EXPECT_EQ(lookUp("Add", "plus"), "plus");
  }));
}

TEST(Locale, TheStoredTextsAreCopies) {
  EXPECT_TRUE(passesInOwnProcess([] {
    NSMutableString *code = [NSMutableString stringWithString:@"fr"];
    setDefaultLanguageCode(code);
    [code appendString:@"-CA"];
    EXPECT_EQ(utf8(defaultLanguageCode()), "fr");
    setDefaultLanguageCode(nil);
    EXPECT_EQ(defaultLanguageCode(), nil);
  }));
}
