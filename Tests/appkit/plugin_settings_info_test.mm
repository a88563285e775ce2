#import "Class/PluginSettingsInfo.h"

#import "Bridge/text.h"
#import "Class/XMLElement.h"
#import "Core/file_tree.h"
#import "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace fs = std::filesystem;
using vireonix::bridge::string;
using vireonix::bridge::utf8;
using vireonix::core::listTree;
using vireonix::test::fileBytes;
using vireonix::test::TemporaryFolder;

namespace {

using Paths = std::vector<std::string>;

// A bundle with both source folders, and the installer for a workspace beside it.
class PluginSettingsInfoTest : public testing::Test {
protected:
  void SetUp() override {
    folder_.write("p.bundle/Resources/html/index.html", "page");
    folder_.write("p.bundle/Resources/html/js/player.js", "script");
    folder_.write("p.bundle/Resources/html/js/.hidden.js", "hidden script");
    folder_.write("p.bundle/Resources/html/.top", "hidden");
    folder_.write("p.bundle/Resources/html/both.txt", "from html");
    folder_.write("p.bundle/Resources/data/both.txt", "from data");
    folder_.write("p.bundle/Resources/data/vireonix.swf", "movie");
    folder_.write("p.bundle/Resources/data/intro_asset/data.xml", "<main><data/></main>");
    info_ = [[PluginSettingsInfo alloc] init];
    [info_ setWorkSpace:string(workspace())];
    [info_ setBundlePath:string(folder_.at("p.bundle"))];
  }
  void TearDown() override { [info_ release]; }

  [[nodiscard]] std::string workspace() const { return folder_.at("deep/er/workspace"); }
  [[nodiscard]] std::string bytes(const std::string &relative) const {
    return fileBytes(fs::path(workspace()) / relative);
  }
  [[nodiscard]] std::string inWorkspace(const std::string &relative) const {
    return "deep/er/workspace/" + relative;
  }

  TemporaryFolder folder_;
  PluginSettingsInfo *info_ = nil;
};

} // namespace

TEST_F(PluginSettingsInfoTest, AFreshInstallationMergesBothFoldersAndMakesTheMovie) {
  EXPECT_TRUE([info_ installWorkSpace]);
  EXPECT_EQ(listTree(workspace()),
            (Paths{"book.swf", "both.txt", "index.html", "intro_asset", "intro_asset/data.xml",
                   "js", "js/.hidden.js", "js/player.js", "vireonix.swf"}));
  EXPECT_EQ(bytes("both.txt"), "from html");
  EXPECT_EQ(bytes("book.swf"), "movie");
  EXPECT_EQ(utf8([info_ identifier]), "vireonix");
}

TEST_F(PluginSettingsInfoTest, TheIdentifierNamesTheMovie) {
  folder_.write("p.bundle/Resources/data/other.swf", "other movie");
  [info_ setIdentifier:@"other"];
  [info_ installWorkSpace];
  EXPECT_EQ(bytes("book.swf"), "other movie");
}

TEST_F(PluginSettingsInfoTest, AnExistingWorkspaceIsCompletedAndKeepsWhatItHolds) {
  folder_.write(inWorkspace("intro_asset/data.xml"), "edited");
  folder_.write(inWorkspace("js"), "a file where a folder belongs");
  EXPECT_TRUE([info_ installWorkSpace]);
  EXPECT_EQ(bytes("intro_asset/data.xml"), "edited");
  EXPECT_EQ(bytes("js"), "a file where a folder belongs");
  EXPECT_EQ(bytes("index.html"), "page");
  EXPECT_EQ(bytes(".top"), "hidden");
  EXPECT_FALSE(fs::exists(workspace() + "/book.swf"));
  EXPECT_EQ([info_ identifier], nil);
}

TEST_F(PluginSettingsInfoTest, InstalledFilesCanBeEditedEvenFromAReadOnlyBundle) {
  fs::permissions(folder_.at("p.bundle/Resources/html/index.html"), fs::perms::owner_read);
  [info_ installWorkSpace];
  const fs::perms perms = fs::status(workspace() + "/index.html").permissions();
  EXPECT_NE(perms & fs::perms::owner_write, fs::perms::none);
}

TEST_F(PluginSettingsInfoTest, WithoutAWorkspaceItIsThePerUserOne) {
  [info_ setWorkSpace:nil];
  [info_ installWorkSpace];
  NSString *expected =
      [[PluginSettingsInfo getSavePluginPath] stringByAppendingPathComponent:@"vireonix"];
  EXPECT_EQ(utf8([info_ workSpace]), utf8(expected));
  EXPECT_TRUE(fs::exists(utf8(expected) + "/index.html"));
  fs::remove_all(utf8(expected));
}

TEST_F(PluginSettingsInfoTest, TheSaveFolderLiesInTheUsersApplicationSupport) {
  NSString *path = [PluginSettingsInfo getSavePluginPath];
  EXPECT_TRUE([path hasPrefix:NSHomeDirectory()]) << utf8(path);
  EXPECT_TRUE([path hasSuffix:@"Marquell/orlwick/Plugin/Save"]) << utf8(path);
}

TEST_F(PluginSettingsInfoTest, AMissingBundleGivesAnEmptyWorkspaceAndYes) {
  [info_ setBundlePath:string(folder_.at("nowhere.bundle"))];
  EXPECT_TRUE([info_ installWorkSpace]);
  EXPECT_TRUE(fs::is_directory(workspace()));
}

TEST_F(PluginSettingsInfoTest, AFileInTheWorkspacesPlaceIsLeftAlone) {
  folder_.write("deep/er/workspace", "a file");
  EXPECT_TRUE([info_ installWorkSpace]);
  EXPECT_EQ(fileBytes(workspace()), "a file");
}

TEST_F(PluginSettingsInfoTest, ADanglingLinkInTheWorkspacesPlaceCountsAsMissing) {
  fs::create_directories(folder_.at("deep/er"));
  fs::create_symlink("nowhere", workspace());
  EXPECT_TRUE([info_ installWorkSpace]);
  EXPECT_FALSE(fs::exists(folder_.at("deep/er/nowhere/index.html")));
}

TEST_F(PluginSettingsInfoTest, TheRootOfTheDocumentIsReadStrictlyThenLeniently) {
  [info_ installWorkSpace];
  EXPECT_EQ(utf8([[info_ loadDataRootElement] name]), "main");
  folder_.write(inWorkspace("intro_asset/data.xml"), "<main><data><slide></data></main>");
  EXPECT_EQ(utf8([[info_ loadDataRootElement] name]), "main");
  folder_.write(inWorkspace("intro_asset/data.xml"), "not XML at all");
  EXPECT_EQ([info_ loadDataRootElement], nil);
  fs::remove(workspace() + "/intro_asset/data.xml");
  EXPECT_EQ([info_ loadDataRootElement], nil);
  EXPECT_EQ(utf8([info_ identifier]), "vireonix");
}

TEST_F(PluginSettingsInfoTest, ExportingLeavesOutThePreviewAndReplacesTheDestination) {
  [info_ installWorkSpace];
  folder_.write(inWorkspace(".note"), "hidden at the top");
  folder_.write("exported/old.txt", "old");
  EXPECT_TRUE([info_ exportWorkSpaceToPath:string(folder_.at("exported"))]);
  EXPECT_EQ(listTree(folder_.at("exported")),
            (Paths{"both.txt", "intro_asset", "intro_asset/data.xml", "vireonix.swf"}));
}

TEST_F(PluginSettingsInfoTest, ExportingAMissingWorkspaceAnswersNoAndChangesNothing) {
  folder_.write("exported/old.txt", "old");
  EXPECT_FALSE([info_ exportWorkSpaceToPath:string(folder_.at("exported"))]);
  EXPECT_EQ(fileBytes(folder_.at("exported/old.txt")), "old");
}
