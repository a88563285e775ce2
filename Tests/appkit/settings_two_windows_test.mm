// Two settings windows of one process, on one workspace and on two.
#import "Bridge/text.h"
#import "support/settings_session.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace fs = std::filesystem;
using namespace vireonix::test;

namespace {

void click(const SettingsSession &session, NSString *button) {
  [session.field(button) performClick:nil];
}

// Another window on a session's workspace.
class SecondWindow {
public:
  explicit SecondWindow(const SettingsSession &first) {
    controller_ = [[PluginSettingsDelegate alloc] initWithLanguageCode:@"en"
                                                            bundlePath:@VIREONIX_BUNDLE];
    [controller_ setWorkSpace:vireonix::bridge::pathString(first.workspace())];
    [controller_ window];
  }
  ~SecondWindow() { [controller_ release]; }
  SecondWindow(const SecondWindow &) = delete;
  SecondWindow &operator=(const SecondWindow &) = delete;

  void click(NSString *button) const { [[controller_ valueForKey:button] performClick:nil]; }

private:
  PluginSettingsDelegate *controller_ = nil;
};

} // namespace

TEST(TwoWindows, OnOneWorkspaceTheLaterOneRevertsToWhatItFound) {
  const SettingsSession first;
  ASSERT_NE(first.window(), nil);
  first.folder().write("workspace/first.png", "added in the first");
  const std::string found = first.fingerprint();
  const SecondWindow second(first);
  first.folder().write("workspace/second.png", "added in the second");
  const std::string edited = first.fingerprint();
  click(first, @"btnCancel");
  EXPECT_EQ(first.fingerprint(), edited);
  EXPECT_TRUE(fs::exists(first.backupFolder()));
  second.click(@"btnCancel");
  EXPECT_EQ(first.fingerprint(), found);
  EXPECT_FALSE(fs::exists(first.backupFolder()));
}

TEST(TwoWindows, OnOneWorkspaceTheLaterOneMayApplyAndTheEarlierOneKeepsThat) {
  const SettingsSession first;
  ASSERT_NE(first.window(), nil);
  const SecondWindow second(first);
  first.folder().write("workspace/second.png", "added in the second");
  second.click(@"btnOK");
  const std::string applied = first.fingerprint();
  EXPECT_FALSE(fs::exists(first.backupFolder()));
  click(first, @"btnCancel");
  EXPECT_EQ(first.fingerprint(), applied);
}

TEST(TwoWindows, OnTwoWorkspacesTheEarlierOneKeepsItsEditsAndTheLaterOneReverts) {
  const SettingsSession first;
  ASSERT_NE(first.window(), nil);
  const SettingsSession second;
  ASSERT_NE(second.window(), nil);
  const std::string before = second.fingerprint();
  first.folder().write("workspace/b.png", "edited");
  second.folder().write("workspace/b.png", "edited");
  const std::string edited = first.fingerprint();
  click(first, @"btnCancel");
  EXPECT_EQ(first.fingerprint(), edited);
  click(second, @"btnCancel");
  EXPECT_EQ(second.fingerprint(), before);
  EXPECT_FALSE(fs::exists(first.backupFolder()));
}

TEST(TwoWindows, TheEarlierOneThatAppliesLeavesTheLaterOnesBackup) {
  const SettingsSession first;
  ASSERT_NE(first.window(), nil);
  const SettingsSession second;
  ASSERT_NE(second.window(), nil);
  const std::string before = second.fingerprint();
  click(first, @"btnOK");
  second.folder().write("workspace/b.png", "edited");
  click(second, @"btnCancel");
  EXPECT_EQ(second.fingerprint(), before);
}
