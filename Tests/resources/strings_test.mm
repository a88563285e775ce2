// The strings tables cover what the program shows, in the platform's reading and in the tool's.
#import "Bridge/text.h"
#import "resources/nib_window.h"

#include "nib_localizer/strings_table.h"
#include "nib_localizer/xib_document.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <regex>
#include <set>

using namespace vireonix::test;
using vireonix::nibs::parseStrings;
using vireonix::nibs::StringsTable;
using vireonix::nibs::XibDocument;

namespace {

constexpr const char *kNibs[] = {"PluginSettingsDelegate", "PrivateView"};

StringsTable tableOf(const std::string &language) {
  auto parsed = parseStrings(
      fileBytes(VIREONIX_SOURCE_DIR "/Resources/Strings/" + language + "/PluginLocale.strings"));
  if (const auto *error = std::get_if<vireonix::nibs::StringsError>(&parsed)) {
    ADD_FAILURE() << language << ":" << error->line << ": " << error->reason;
    return {};
  }
  return std::get<StringsTable>(parsed);
}

std::set<std::string> textsOfTheNibs() {
  std::set<std::string> found;
  for (const char *nib : kNibs) {
    const auto document =
        XibDocument::read(VIREONIX_SOURCE_DIR "/Resources/Nibs/" + std::string(nib) + ".xib");
    for (const std::string &text : document->texts())
      found.insert(text);
  }
  return found;
}

// What the code looks up: the titles and messages that its sources hold as string literals.
const std::set<std::string> &textsOfTheCode() {
  static const std::set<std::string> texts = {
      "Plugin Settings - %@",
      "Do you want to apply the settings?",
      "Select a file(*.jpg; *.png; *.gif; *.swf)",
      "Warming:",
      "The caption is null, please input the caption first!",
      "Attention:",
      "The In-Time value range 0-200 is recommended, Are you insist to use the input value ?",
      "The Stay-Time value range 0-200 is recommended, Are you insist to use the input value ?",
      "The text size range 10-60 is recommended, Are you insist to use the input value ?",
      "Image File Name",
      "Text objects in slider",
      "Size",
      "Color",
      "Style",
      "Align",
      "In Time",
      "Stay Time",
      "Text Align",
      "Text Animation",
      "Start Direction",
      "ID",
      "No slide selected",
      "Type a caption"};
  return texts;
}

std::set<std::string> allKeys() {
  std::set<std::string> keys = textsOfTheNibs();
  keys.insert(textsOfTheCode().begin(), textsOfTheCode().end());
  return keys;
}

// The placeholders and, for lists of file types, the patterns that must survive a translation.
std::vector<std::string> placeholders(const std::string &text) {
  static const std::regex pattern(R"(%@|%[0-9.]*[a-z]|\*\.[a-z]+)");
  std::vector<std::string> found(std::sregex_token_iterator(text.begin(), text.end(), pattern), {});
  std::ranges::sort(found);
  return found;
}

class Strings : public testing::TestWithParam<std::string> {};

} // namespace

TEST_P(Strings, HaveEveryKeyAndNoOther) {
  std::set<std::string> keys;
  for (const auto &[key, text] : tableOf(GetParam()))
    keys.insert(key);
  EXPECT_EQ(keys, allKeys());
}

TEST_P(Strings, TranslateEveryKeyToSomething) {
  for (const auto &[key, text] : tableOf(GetParam()))
    EXPECT_FALSE(text.empty()) << key;
}

TEST_P(Strings, KeepEveryPlaceholder) {
  for (const auto &[key, text] : tableOf(GetParam()))
    EXPECT_EQ(placeholders(text), placeholders(key)) << key;
}

TEST_P(Strings, ReadTheSameByThePlatformAndByTheTool) {
  NSString *path = [folderOf(GetParam()) stringByAppendingPathComponent:@"PluginLocale.strings"];
  NSDictionary *platforms = [NSDictionary dictionaryWithContentsOfFile:path];
  const StringsTable table = tableOf(GetParam());
  EXPECT_EQ([platforms count], table.size());
  for (const auto &[key, text] : table) {
    NSString *found = [platforms objectForKey:vireonix::bridge::string(key)];
    EXPECT_EQ(vireonix::bridge::utf8(found), text) << key;
  }
}

TEST_P(Strings, OfAnotherLanguageThanEnglishLeaveLittleUntranslated) {
  const StringsTable table = tableOf(GetParam());
  const auto same =
      std::ranges::count_if(table, [](const auto &entry) { return entry.first == entry.second; });
  if (GetParam() == "en")
    EXPECT_EQ(static_cast<std::size_t>(same), table.size());
  else
    EXPECT_LE(same, 8);
}

INSTANTIATE_TEST_SUITE_P(InEveryLanguage, Strings, testing::ValuesIn(languages()),
                         [](const auto &language) {
                           std::string name = language.param;
                           std::erase(name, '-');
                           return name;
                         });

TEST(StringsOfTheCode, AreWhatTheSourcesHold) {
  std::string sources;
  for (const auto &entry :
       std::filesystem::recursive_directory_iterator(VIREONIX_SOURCE_DIR "/Sources")) {
    if (entry.path().extension() == ".mm")
      sources += fileBytes(entry.path());
  }
  // Literals that a line break has cut in two stand joined again.
  static const std::regex joint("\"\\s*@?\"");
  sources = std::regex_replace(sources, joint, "");
  for (const std::string &text : textsOfTheCode())
    EXPECT_NE(sources.find("\"" + text + "\""), std::string::npos) << text;
}
