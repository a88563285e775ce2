// What a session leaves behind: nothing.
#import "support/settings_session.h"

#import <Foundation/NSDebug.h>

#import "support/alerts.h"
#import "support/process_state.h"
#import "support/run_loop.h"

#include <gtest/gtest.h>

#include <array>

using namespace vireonix::test;

namespace {

constexpr std::array kWatchedClasses = {
    "PluginSettingsDelegate", "PrivateView", "PluginSettingsInfo",
    "PositionView",           "ObjectView",  "PositionRect",
    "TableViewProtocol",      "WebView",     "NSWindow"};

std::string liveObjects() {
  std::string text;
  for (const char *name : kWatchedClasses) {
    Class watched = NSClassFromString([NSString stringWithUTF8String:name]);
    text += std::string(name) + " " + std::to_string(GSDebugAllocationCount(watched)) + "\n";
  }
  return text;
}

void runSession(bool modal, NSString *button) {
  @autoreleasepool {
    SettingsSession session(modal);
    [session.window() makeKeyAndOrderFront:nil];
    pumpUntil([&session] { return ![session.controller() isChange]; }, 10,
              modal ? NSModalPanelRunLoopMode : NSDefaultRunLoopMode);
    [session.field(button) performClick:nil];
  }
}

class SettingsLifecycle : public testing::Test {
protected:
  void SetUp() override {
    GSDebugAllocationActive(YES);
    // The first session makes what a process keeps: fonts, cursors, the connection to the display.
    runSession(false, @"btnCancel");
    pumpFor(0.5);
  }
};

} // namespace

TEST_F(SettingsLifecycle, EveryObjectOfASessionGoesWithItsController) {
  const std::string before = liveObjects();
  for (NSString *button in @[ @"btnOK", @"btnCancel" ]) {
    runSession(false, button);
    runSession(true, button);
  }
  EXPECT_TRUE(pumpUntil([&before] { return liveObjects() == before; })) << liveObjects();
}

TEST_F(SettingsLifecycle, NoDescriptorThreadOrProcessStays) {
  const ProcessState before = processState();
  for (int i = 0; i < 5; ++i)
    runSession(i % 2 == 1, @"btnCancel");
  EXPECT_TRUE(pumpUntil([&before] { return processState() == before; }))
      << processState() << " instead of " << before;
}

TEST_F(SettingsLifecycle, AControllerWhoseWindowWasNeverLoadedLeavesNothing) {
  const std::string before = liveObjects();
  @autoreleasepool {
    const SettingsSession session;
  }
  EXPECT_EQ(liveObjects(), before);
}
