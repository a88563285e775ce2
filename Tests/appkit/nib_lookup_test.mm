// Which of several nibs is taken: the language's, the English, the unlocalised one.
#import "NSWindowController+SelectedLanguage.h"

#import "Bridge/text.h"
#import "Locale.h"
#import "support/panel_nib.h"
#import "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace fs = std::filesystem;
using namespace vireonix::test;
using vireonix::bridge::path;
using vireonix::bridge::pathString;
using vireonix::bridge::utf8;

namespace {

class NibLookup : public testing::Test {
protected:
  // Puts a nib of the real bundle, in `language`, at a place in this test's bundle.
  void put(const std::string &place, const std::string &language = "en") const {
    const fs::path target = folder_.at("p.bundle/Resources/" + place);
    fs::create_directories(target.parent_path());
    fs::copy_file(fs::path(VIREONIX_BUNDLE) / "Contents/Resources" / (language + ".lproj") /
                      "PrivateView.nib",
                  target);
  }

  // The path of the nib that a window controller takes, from the bundle's resources on.
  [[nodiscard]] std::string windowNib(NSString *language) const {
    setDefaultLanguageCode(language);
    setDefaultBundlePath(pathString(folder_.at("p.bundle")));
    NSWindowController *controller =
        [[[NSWindowController alloc] initWithResourceNibName:@"PrivateView"] autorelease];
    const std::string resources = folder_.at("p.bundle/Resources/");
    const std::string nib = path([controller windowNibPath]);
    return nib.starts_with(resources) ? nib.substr(resources.size()) : nib;
  }

  // The title of the Add button in the panel that the nib object makes.
  [[nodiscard]] std::string addTitle(NSString *language) const {
    setDefaultLanguageCode(language);
    NSBundle *bundle = [NSBundle bundleWithPath:pathString(folder_.at("p.bundle"))];
    return utf8([[panelOfNib(bundle) btnAdd] title]);
  }

  TemporaryFolder folder_;
};

constexpr const char *kEnglish = "en.lproj/PrivateView.nib";
constexpr const char *kGerman = "de.lproj/PrivateView.nib";
constexpr const char *kUnlocalised = "PrivateView.nib";

} // namespace

TEST_F(NibLookup, TheLanguagesNibComesFirstThenTheEnglishThenTheUnlocalised) {
  put(kUnlocalised);
  EXPECT_EQ(windowNib(@"de"), kUnlocalised);
  put(kEnglish);
  EXPECT_EQ(windowNib(@"de"), kEnglish);
  put(kGerman);
  EXPECT_EQ(windowNib(@"de"), kGerman);
}

TEST_F(NibLookup, WithoutALanguageTheEnglishNibIsTaken) {
  put(kEnglish);
  put(kGerman);
  EXPECT_EQ(windowNib(nil), kEnglish);
}

TEST_F(NibLookup, ANibObjectReadsTheLanguagesNib) {
  put(kUnlocalised, "ja");
  const std::string japanese = addTitle(@"de");
  put(kEnglish, "en");
  const std::string english = addTitle(@"de");
  put(kGerman, "de");
  const std::string german = addTitle(@"de");
  EXPECT_FALSE(japanese.empty());
  EXPECT_NE(japanese, english);
  EXPECT_NE(english, german);
  EXPECT_NE(japanese, german);
}
