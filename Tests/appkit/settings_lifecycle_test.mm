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

void letGoOfAnOpenSession(bool modal) {
  @autoreleasepool {
    const SettingsSession session(modal);
    [session.window() makeKeyAndOrderFront:nil];
    [session.window() makeFirstResponder:[session.controller() txtLeft]];
    pumpUntil([&session] { return ![session.controller() isChange]; }, 10,
              modal ? NSModalPanelRunLoopMode : NSDefaultRunLoopMode);
    EXPECT_TRUE([[session.controller() repeatTimer] isValid]);
  }
}

// As it is once the engine's processes have ended and what served them has gone.
ProcessState stateAtRest() {
  constexpr double kPatience = 30;
  constexpr double kQuiet = 6;
  pumpUntil([] { return processState().children == 0; }, kPatience);
  pumpFor(kQuiet);
  return processState();
}

// Idle threads of the engine's pools end when they please, so there may be fewer.
bool holdsNoMoreThan(const ProcessState &before) {
  const ProcessState now = processState();
  return now.descriptors <= before.descriptors && now.threads <= before.threads &&
         now.children <= before.children;
}

class SettingsLifecycle : public testing::Test {
protected:
  void SetUp() override {
    GSDebugAllocationActive(YES);
    // The first session makes what a process keeps: fonts, cursors, the connection to the display.
    runSession(false, @"btnCancel");
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
  runSession(true, @"btnCancel");
  const ProcessState before = stateAtRest();
  for (int i = 0; i < 5; ++i)
    runSession(i % 2 == 1, @"btnCancel");
  EXPECT_TRUE(pumpUntil([&before] { return holdsNoMoreThan(before); }, 30))
      << processState() << " instead of " << before;
}

TEST_F(SettingsLifecycle, AControllerWhoseWindowWasNeverLoadedLeavesNothing) {
  const std::string before = liveObjects();
  @autoreleasepool {
    const SettingsSession session;
  }
  EXPECT_EQ(liveObjects(), before);
}

TEST_F(SettingsLifecycle, AControllerWhoseWindowWasNeverClosedGoesWithItsWindowAndItsProcesses) {
  letGoOfAnOpenSession(false);
  const ProcessState rest = stateAtRest();
  const std::string before = liveObjects();
  for (const bool modal : {false, true}) {
    letGoOfAnOpenSession(modal);
    EXPECT_TRUE(pumpUntil([&before] { return liveObjects() == before; })) << liveObjects();
  }
  EXPECT_TRUE(pumpUntil([&rest] { return holdsNoMoreThan(rest); }, 30))
      << processState() << " instead of " << rest;
}
