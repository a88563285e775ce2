// Bundles and workspaces that are not what they should be.
#import "support/settings_session.h"

#import "Bridge/text.h"
#import "support/alerts.h"
#import "support/fingerprint.h"
#import "support/run_loop.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sys/stat.h>

namespace fs = std::filesystem;
using namespace vireonix::test;
using vireonix::bridge::pathString;

namespace {

// Opens the window on whatever is at `workspace`, edits nothing, and cancels.
void openAndCancel(const std::string &workspace) {
  SettingsSession session;
  [session.controller() setWorkSpace:pathString(workspace)];
  ASSERT_NE(session.window(), nil);
  [session.window() makeKeyAndOrderFront:nil];
  EXPECT_TRUE(pumpUntil([&session] { return ![session.controller() isChange]; }));
  [session.field(@"btnCancel") performClick:nil];
  EXPECT_TRUE([session.controller() isCloseBundle]);
}

PluginSettingsDelegate *controllerOf(NSString *bundlePath) {
  return [[[PluginSettingsDelegate alloc] initWithLanguageCode:@"en"
                                                    bundlePath:bundlePath] autorelease];
}

} // namespace

TEST(BadBundle, AMissingBundleGivesNoWindowAndNoCrash) {
  TemporaryFolder folder;
  EXPECT_EQ([controllerOf(pathString(folder.at("nowhere.bundle"))) window], nil);
}

TEST(BadBundle, ABundleWithoutNibsGivesNoWindowAndNoCrash) {
  TemporaryFolder folder;
  folder.write("empty.bundle/Resources/note.txt", "no nib here");
  EXPECT_EQ([controllerOf(pathString(folder.at("empty.bundle"))) window], nil);
}

TEST(BadBundle, ABundleThatIsAFileGivesNoWindowAndNoCrash) {
  TemporaryFolder folder;
  EXPECT_EQ([controllerOf(pathString(folder.write("file.bundle", "a file"))) window], nil);
}

TEST(BadBundle, WithoutThePanelsNibTheWindowOpensWithItsPositionControls) {
  TemporaryFolder folder;
  const fs::path nib = fs::path(VIREONIX_BUNDLE) / "Contents/Resources/en.lproj";
  fs::create_directories(folder.at("half.bundle/Resources/en.lproj"));
  fs::copy_file(nib / "PluginSettingsDelegate.nib",
                folder.at("half.bundle/Resources/en.lproj/PluginSettingsDelegate.nib"));
  PluginSettingsDelegate *controller = controllerOf(pathString(folder.at("half.bundle")));
  [controller setWorkSpace:pathString(folder.at("workspace"))];
  ASSERT_NE([controller window], nil);
  EXPECT_EQ([controller valueForKey:@"privateView"], nil);
  EXPECT_NE([controller valueForKey:@"positionView"], nil);
  [[controller btnOK] performClick:nil];
  EXPECT_EQ([controller closeMode], 1);
}

TEST(BadWorkspace, AMissingOneIsMade) {
  TemporaryFolder folder;
  openAndCancel(folder.at("not/yet/there"));
  EXPECT_TRUE(fs::exists(folder.at("not/yet/there/index.html")));
}

TEST(BadWorkspace, AFileInItsPlaceStaysAsItIs) {
  TemporaryFolder folder;
  openAndCancel(folder.write("workspace", "a file"));
  EXPECT_EQ(fileBytes(folder.at("workspace")), "a file");
}

TEST(BadWorkspace, WhatADanglingLinkNamesIsNotMade) {
  TemporaryFolder folder;
  fs::create_symlink("nowhere", folder.at("workspace"));
  openAndCancel(folder.at("workspace"));
  EXPECT_FALSE(fs::exists(folder.at("nowhere")));
}

TEST(BadWorkspace, ALinkToAFolderIsEditedThereAndStaysALink) {
  TemporaryFolder folder;
  folder.write("real/note.txt", "note");
  fs::create_symlink("real", folder.at("workspace"));
  openAndCancel(folder.at("workspace"));
  EXPECT_TRUE(fs::is_symlink(folder.at("workspace")));
  EXPECT_EQ(fileBytes(folder.at("real/note.txt")), "note");
}

TEST(BadWorkspace, LinksThatLeadOutsideAreKeptAndNothingOutsideIsTouched) {
  TemporaryFolder folder;
  fs::permissions(folder.write("outside/secret", "secret"), fs::perms::owner_read);
  folder.write("workspace/note.txt", "note");
  fs::create_symlink("../outside", folder.at("workspace/intro_asset"));
  fs::create_symlink("../outside/secret", folder.at("workspace/settings.dat"));
  const std::string outside = treeFingerprint(folder.at("outside"));
  openAndCancel(folder.at("workspace"));
  EXPECT_EQ(treeFingerprint(folder.at("outside")), outside);
  EXPECT_TRUE(fs::is_symlink(folder.at("workspace/intro_asset")));
}

TEST(BadWorkspace, PipesUnreadableFilesAndNamesThatAreNotTextComeThrough) {
  TemporaryFolder folder;
  folder.write("workspace/bad-\xFF\xFE-name", "bytes");
  fs::permissions(folder.write("workspace/unreadable", "x"), fs::perms::none);
  ASSERT_EQ(mkfifo(folder.at("workspace/pipe").c_str(), 0600), 0);
  ASSERT_EQ(mkfifo(folder.at("workspace/settings.dat").c_str(), 0600), 0);
  openAndCancel(folder.at("workspace"));
  EXPECT_EQ(fileBytes(folder.at("workspace/bad-\xFF\xFE-name")), "bytes");
  EXPECT_TRUE(fs::is_fifo(folder.at("workspace/pipe")));
  EXPECT_TRUE(fs::is_fifo(folder.at("workspace/settings.dat")));
}
