// Ends of a session that come while a colour is being chosen.
#import "support/settings_session.h"

#import "support/alerts.h"
#import "support/run_loop.h"
#import "vireonix/PrivateView.h"

#include <gtest/gtest.h>

using namespace vireonix::test;

namespace {

constexpr const char *kDocument = "intro_asset/data.xml";

NSArray *sessionModes() {
  return @[ NSModalPanelRunLoopMode ];
}

// A caption is selected; its colour is being chosen, and blue has been, when `message` is sent.
class ColorChoice : public testing::TestWithParam<bool> {
protected:
  ColorChoice() : session_(GetParam()) {
    window_ = session_.window();
    panel_ = session_.field(@"privateView");
    [window_ makeKeyAndOrderFront:nil];
    before_ = session_.fingerprint();
    select([panel_ tableView]);
    select([panel_ tbContent]);
  }

  static void select(NSTableView *table) {
    [table selectRowIndexes:[NSIndexSet indexSetWithIndex:0] byExtendingSelection:NO];
    pumpFor(0.05);
  }

  // Answers the code that the settings window's session ended with; 0 without one.
  NSInteger runUntil(id object, SEL message) {
    NSColorPanel *colors = [NSColorPanel sharedColorPanel];
    NSColor *blue = [NSColor colorWithCalibratedRed:0 green:0 blue:1 alpha:1];
    [colors performSelector:@selector(setColor:) withObject:blue afterDelay:0.4
                    inModes:sessionModes()];
    [object performSelector:message withObject:nil afterDelay:0.5 inModes:sessionModes()];
    if (!GetParam()) {
      [panel_ onColorSelect:[panel_ btnTextColor]];
      return 0;
    }
    [panel_ performSelector:@selector(onColorSelect:) withObject:[panel_ btnTextColor]
                 afterDelay:0.1
                    inModes:sessionModes()];
    return [NSApp runModalForWindow:window_];
  }

  void expectClosed() {
    EXPECT_TRUE([session_.controller() isCloseBundle]);
    EXPECT_FALSE([[NSColorPanel sharedColorPanel] isVisible]);
    EXPECT_EQ([[NSColorPanel sharedColorPanel] delegate], nil);
    EXPECT_EQ([NSApp modalWindow], nil);
  }

  bool documentIsBlue() {
    return fileBytes(session_.inWorkspace(kDocument)).find("#0000FF") != std::string::npos;
  }

  SettingsSession session_;
  NSWindow *window_ = nil;
  PrivateView *panel_ = nil;
  std::string before_;
};

} // namespace

TEST_P(ColorChoice, ClosingTheWindowAndApplyingKeepsTheColour) {
  AlertAnswers answers({NSAlertFirstButtonReturn});
  EXPECT_EQ(runUntil(window_, @selector(close)), GetParam() ? 1 : 0);
  expectClosed();
  EXPECT_EQ([session_.controller() closeMode], 1);
  EXPECT_EQ(answers.shown().size(), 1U);
  EXPECT_TRUE(documentIsBlue());
}

TEST_P(ColorChoice, ClosingTheWindowAndRevertingLeavesTheWorkspaceAsItWas) {
  AlertAnswers answers({NSAlertSecondButtonReturn});
  EXPECT_EQ(runUntil(window_, @selector(close)), 0);
  expectClosed();
  EXPECT_EQ([session_.controller() closeMode], 0);
  pumpFor(0.3);
  EXPECT_EQ(session_.fingerprint(), before_);
}

TEST_P(ColorChoice, TheUsersClosingOfTheWindowWaitsForItsEnd) {
  AlertAnswers answers({NSAlertFirstButtonReturn});
  NSColorPanel *colors = [NSColorPanel sharedColorPanel];
  [window_ performSelector:@selector(performClose:) withObject:nil afterDelay:0.3
                   inModes:sessionModes()];
  [window_ performSelector:@selector(performClose:) withObject:nil afterDelay:0.8
                   inModes:@[ NSModalPanelRunLoopMode, NSDefaultRunLoopMode ]];
  EXPECT_EQ(runUntil(colors, @selector(close)), GetParam() ? 1 : 0);
  EXPECT_TRUE(pumpUntil([this] { return [session_.controller() isCloseBundle] == YES; }));
  expectClosed();
  EXPECT_EQ(answers.shown().size(), 1U);
  EXPECT_TRUE(documentIsBlue());
}

TEST_P(ColorChoice, OKEndsItAndKeepsTheColour) {
  AlertAnswers answers;
  EXPECT_EQ(runUntil([session_.controller() btnOK], @selector(performClick:)), GetParam() ? 1 : 0);
  expectClosed();
  EXPECT_TRUE(documentIsBlue());
  EXPECT_TRUE(answers.shown().empty());
}

TEST_P(ColorChoice, CancelEndsItAndLeavesTheWorkspaceAsItWas) {
  AlertAnswers answers;
  EXPECT_EQ(runUntil([session_.controller() btnCancel], @selector(performClick:)), 0);
  expectClosed();
  pumpFor(0.3);
  EXPECT_EQ(session_.fingerprint(), before_);
  EXPECT_TRUE(answers.shown().empty());
}

INSTANTIATE_TEST_SUITE_P(Host, ColorChoice, testing::Bool(), [](const auto &info) {
  return std::string(info.param ? "Modal" : "NotModal");
});
