#import "support/settings_session.h"

#import "Bridge/text.h"
#import "Class/PluginSettingsInfo.h"
#import "Locale.h"
#import "support/alerts.h"
#import "support/fingerprint.h"
#import "support/run_loop.h"
#import "vireonix/PrivateView.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace fs = std::filesystem;
using namespace vireonix::test;
using vireonix::bridge::path;
using vireonix::bridge::utf8;

namespace {

void append(const std::string &file, std::string_view bytes) {
  std::ofstream(file, std::ios::app) << bytes;
}

void click(const SettingsSession &session, NSString *button) {
  [session.field(button) performClick:nil];
}

void collectControls(NSView *view, NSMutableArray *controls) {
  const bool takesKeys = [view isKindOfClass:[NSControl class]] &&
                         [static_cast<NSControl *>(view) isEnabled] && [view acceptsFirstResponder];
  if (takesKeys || [view isKindOfClass:[WebView class]]) {
    [controls addObject:view];
    return;
  }
  for (NSView *subview in [view subviews])
    collectControls(subview, controls);
}

// The views that the Tab key reaches from `first` on, once around.
NSArray *keyViewLoop(NSView *first) {
  NSMutableArray *loop = [NSMutableArray arrayWithObject:first];
  for (NSView *view = [first nextValidKeyView]; view != nil && view != first && [loop count] < 100;
       view = [view nextValidKeyView])
    [loop addObject:view];
  return loop;
}

} // namespace

TEST(SettingsWindow, OpensWithItsTitlePanelCanvasTimerAndBackup) {
  const SettingsSession session;
  ASSERT_NE(session.window(), nil);
  EXPECT_EQ(utf8([session.window() title]), "Plugin Settings - vireonix");
  EXPECT_TRUE([session.field(@"privateView") isKindOfClass:[PrivateView class]]);
  EXPECT_EQ([session.field(@"privateView") superview], [session.window() contentView]);
  EXPECT_EQ([session.field(@"privateView") ower], session.controller());
  EXPECT_NE(session.field(@"positionView"), nil);
  EXPECT_TRUE([session.field(@"repeatTimer") isValid]);
  EXPECT_TRUE([session.field(@"isChange") boolValue]);
  EXPECT_FALSE([session.controller() isCloseBundle]);
  EXPECT_EQ(treeFingerprint(session.backupFolder()), session.fingerprint());
}

TEST(SettingsWindow, EveryOutletIsConnected) {
  const SettingsSession session;
  ASSERT_NE(session.window(), nil);
  for (NSString *name in @[
         @"iWebView", @"txtLeft", @"txtTop", @"txtRight", @"txtBottom", @"txtTransparency",
         @"sldTrans", @"matLayer", @"btnDefault", @"btnCancel", @"btnOK"
       ])
    EXPECT_NE(session.field(name), nil) << utf8(name);
  EXPECT_EQ([session.window() delegate], static_cast<id>(session.controller()));
  EXPECT_EQ([session.field(@"iWebView") policyDelegate], session.controller());
  EXPECT_EQ([session.field(@"iWebView") UIDelegate], session.controller());
  EXPECT_EQ([session.field(@"iWebView") frameLoadDelegate], session.controller());
  EXPECT_EQ([session.field(@"iWebView") resourceLoadDelegate], session.controller());
  EXPECT_EQ([session.field(@"iWebView") downloadDelegate], session.controller());
}

TEST(SettingsWindow, TheTabKeyReachesEveryControlOnceFromThePanelsFirstToOK) {
  const SettingsSession session;
  NSWindow *window = session.window();
  ASSERT_NE(window, nil);
  PrivateView *panel = session.field(@"privateView");
  EXPECT_EQ([window initialFirstResponder], [panel tableView]);
  NSArray *loop = keyViewLoop([panel tableView]);
  NSMutableArray *controls = [NSMutableArray array];
  collectControls([window contentView], controls);
  for (NSView *control in controls)
    EXPECT_TRUE([loop containsObject:control]) << utf8([control description]);
  EXPECT_EQ([loop count], [[NSSet setWithArray:loop] count]);
  EXPECT_EQ([loop lastObject], session.field(@"btnOK"));
  EXPECT_EQ([[panel btnContentRemove] nextKeyView], session.field(@"iWebView"));
}

TEST(SettingsWindow, TheTableColumnsFillTheirTables) {
  const SettingsSession session;
  ASSERT_NE(session.window(), nil);
  PrivateView *panel = session.field(@"privateView");
  NSTableView *slides = [panel tableView];
  ASSERT_EQ([slides numberOfColumns], 1);
  const CGFloat visible = NSWidth([[slides superview] bounds]);
  EXPECT_NEAR([[[slides tableColumns] objectAtIndex:0] width], visible, 4);
  EXPECT_NEAR(NSWidth([[slides headerView] frame]), visible, 4);
  NSRect larger = [session.window() frame];
  larger.size.width += 200;
  [session.window() setFrame:larger display:NO];
  const CGFloat now = NSWidth([[slides superview] bounds]);
  EXPECT_GT(now, visible + 50);
  EXPECT_NEAR([[[slides tableColumns] objectAtIndex:0] width], now, 4);
}

TEST(SettingsWindow, EveryChoiceOfAnAlignmentIsInSight) {
  const SettingsSession session;
  ASSERT_NE(session.window(), nil);
  NSComboBox *choices = [session.field(@"privateView") comAlign];
  EXPECT_GE([choices numberOfVisibleItems], [choices numberOfItems]);
}

TEST(SettingsWindow, TheBackupFolderIsEmptiedWhenTheControllerIsMade) {
  const std::string backup = path(NSTemporaryDirectory()) + "/vireonix";
  fs::create_directories(backup + "/left/over");
  const SettingsSession session;
  EXPECT_TRUE(fs::is_empty(session.backupFolder()));
}

TEST(SettingsWindow, OKAppliesWithoutAQuestion) {
  const AlertAnswers alerts;
  const SettingsSession session;
  ASSERT_NE(session.window(), nil);
  append(session.inWorkspace("b.png"), "edited");
  click(session, @"btnOK");
  EXPECT_TRUE(alerts.shown().empty());
  EXPECT_EQ([session.controller() closeMode], 1);
  EXPECT_TRUE([session.controller() isCloseBundle]);
  EXPECT_EQ(session.field(@"repeatTimer"), nil);
  EXPECT_EQ(fileBytes(session.inWorkspace("b.png")), "nor thisedited");
  EXPECT_FALSE(fs::exists(session.backupFolder()));
}

TEST(SettingsWindow, CancelRevertsWithoutAQuestion) {
  const AlertAnswers alerts;
  const SettingsSession session;
  ASSERT_NE(session.window(), nil);
  const std::string before = session.fingerprint();
  append(session.inWorkspace("b.png"), "edited");
  append(session.inWorkspace("added.png"), "added");
  fs::remove(session.inWorkspace("settings.dat"));
  click(session, @"btnCancel");
  EXPECT_TRUE(alerts.shown().empty());
  EXPECT_EQ([session.controller() closeMode], 0);
  EXPECT_TRUE([session.controller() isCloseBundle]);
  EXPECT_EQ(session.fingerprint(), before);
  EXPECT_FALSE(fs::exists(session.backupFolder()));
}

TEST(SettingsWindow, TheCloseButtonAsksAndOKKeepsWithoutSavingAgain) {
  const AlertAnswers alerts({NSAlertFirstButtonReturn});
  const SettingsSession session;
  ASSERT_NE(session.window(), nil);
  const std::string document = fileBytes(session.inWorkspace("intro_asset/data.xml"));
  append(session.inWorkspace("b.png"), "edited");
  [session.window() performClose:nil];
  ASSERT_EQ(alerts.shown().size(), 1U);
  EXPECT_EQ(alerts.shown()[0].message, "Do you want to apply the settings?");
  EXPECT_EQ(alerts.shown()[0].information, "");
  EXPECT_EQ([session.controller() closeMode], 1);
  EXPECT_EQ(fileBytes(session.inWorkspace("b.png")), "nor thisedited");
  EXPECT_EQ(fileBytes(session.inWorkspace("intro_asset/data.xml")), document);
  EXPECT_FALSE(fs::exists(session.backupFolder()));
}

TEST(SettingsWindow, TheCloseButtonAsksAndCancelReverts) {
  const AlertAnswers alerts({NSAlertSecondButtonReturn});
  const SettingsSession session;
  ASSERT_NE(session.window(), nil);
  const std::string before = session.fingerprint();
  append(session.inWorkspace("b.png"), "edited");
  [session.window() performClose:nil];
  EXPECT_EQ(alerts.shown().size(), 1U);
  EXPECT_EQ([session.controller() closeMode], 0);
  EXPECT_EQ(session.fingerprint(), before);
}

TEST(SettingsWindow, ClosingTwiceAsksOnceAndActsOnce) {
  const AlertAnswers alerts({NSAlertFirstButtonReturn, NSAlertSecondButtonReturn});
  const SettingsSession session;
  NSWindow *window = session.window();
  [window close];
  append(session.inWorkspace("b.png"), "after the end");
  [window close];
  click(session, @"btnCancel");
  click(session, @"btnOK");
  EXPECT_EQ(alerts.shown().size(), 1U);
  EXPECT_EQ([session.controller() closeMode], 1);
  EXPECT_EQ(fileBytes(session.inWorkspace("b.png")), "nor thisafter the end");
}

TEST(SettingsWindow, ASaveThatComesAfterTheRevertChangesNothing) {
  const SettingsSession session;
  ASSERT_NE(session.window(), nil);
  const std::string before = session.fingerprint();
  click(session, @"btnCancel");
  [session.controller() saveGlobalSettings];
  EXPECT_EQ(session.fingerprint(), before);
}

TEST(SettingsWindow, WithoutItsBackupARevertLeavesTheWorkspaceAsItIs) {
  const SettingsSession session;
  ASSERT_NE(session.window(), nil);
  fs::remove_all(session.backupFolder());
  append(session.inWorkspace("b.png"), "edited");
  click(session, @"btnCancel");
  EXPECT_EQ(fileBytes(session.inWorkspace("b.png")), "nor thisedited");
}

TEST(SettingsWindow, WithoutAWorkspaceItEditsTheUsersOwn) {
  SettingsSession session;
  [session.controller() setWorkSpace:nil];
  ASSERT_NE(session.window(), nil);
  NSString *expected =
      [[PluginSettingsInfo getSavePluginPath] stringByAppendingPathComponent:@"vireonix"];
  EXPECT_EQ(utf8([session.controller() workSpace]), utf8(expected));
  EXPECT_TRUE(fs::exists(path(expected) + "/index.html"));
  EXPECT_TRUE(fs::exists(path(expected) + "/book.swf"));
  click(session, @"btnCancel");
  fs::remove_all(path(expected));
}

TEST(SettingsWindow, NilArgumentsKeepWhatAnEarlierControllerWasGiven) {
  const SettingsSession earlier;
  PluginSettingsDelegate *controller =
      [[[PluginSettingsDelegate alloc] initWithLanguageCode:nil bundlePath:nil] autorelease];
  EXPECT_EQ(utf8(defaultLanguageCode()), "en");
  EXPECT_EQ([controller bundlePath], nil);
  EXPECT_TRUE([[controller windowNibPath] hasPrefix:@VIREONIX_BUNDLE])
      << utf8([controller windowNibPath]);
}

TEST(SettingsWindow, AModalSessionReturnsTheCloseMode) {
  for (NSString *button in @[ @"btnOK", @"btnCancel" ]) {
    const SettingsSession session(true);
    ASSERT_NE(session.window(), nil);
    [session.field(button) performSelector:@selector(performClick:) withObject:nil afterDelay:0.2
                                   inModes:@[ NSModalPanelRunLoopMode ]];
    const NSInteger code = [NSApp runModalForWindow:session.window()];
    EXPECT_EQ(code, [session.controller() closeMode]);
    EXPECT_EQ(code, [button isEqualToString:@"btnOK"] ? 1 : 0);
  }
}

TEST(SettingsWindow, TheTimerReloadsInItsOwnModeOnly) {
  for (const bool modal : {false, true}) {
    const SettingsSession session(modal);
    ASSERT_NE(session.window(), nil);
    NSString *own = modal ? NSModalPanelRunLoopMode : NSDefaultRunLoopMode;
    NSString *other = modal ? NSDefaultRunLoopMode : NSModalPanelRunLoopMode;
    pumpFor(0.8, other);
    EXPECT_TRUE([session.controller() isChange]);
    EXPECT_TRUE(pumpUntil([&session] { return ![session.controller() isChange]; }, 5, own));
    click(session, @"btnCancel");
  }
}

TEST(SettingsWindow, ReleasingBeforeTheWindowWasLoadedIsHarmless) {
  SettingsSession session;
  session.releaseController();
  SUCCEED();
}

TEST(SettingsEnd, AThreadThatSavesAfterOKIsTooLate) {
  SettingsSession session;
  [session.window() makeKeyAndOrderFront:nil];
  [session.field(@"btnOK") performClick:nil];
  pumpFor(0.1);
  const std::string file = session.folder().write("workspace/settings.dat", "as OK left it");
  [NSThread detachNewThreadSelector:@selector(saveGlobalSettings) toTarget:session.controller()
                         withObject:nil];
  [session.controller() setIsChange:NO];
  EXPECT_TRUE(pumpUntil([&] { return [session.controller() isChange] == YES; }));
  EXPECT_EQ(fileBytes(file), "as OK left it");
}
