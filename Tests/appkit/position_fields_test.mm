#import "Bridge/text.h"
#import "Class/ObjectView.h"
#import "Class/PluginSettingsDelegate.h"
#import "Class/PositionRect.h"
#import "Class/PositionView.h"
#include "support/background_command.h"
#import "support/mouse.h"
#import "support/position_window.h"
#import "support/run_loop.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <thread>

using namespace vireonix::test;
using vireonix::core::Position;

namespace {

const Position kStart{10, 20, 30, 40, 70, 2};

std::string valueAfterTyping(PositionWindow &test, NSString *text) {
  test.edit(test.left);
  test.type(text);
  return test.text(test.left);
}

} // namespace

TEST(PositionFields, LoadingShowsEveryValue) {
  PositionWindow test(kStart);
  EXPECT_EQ(test.texts(), "10.0 20.0 30.0 40.0 70.0");
  EXPECT_EQ([test.slider doubleValue], 70);
  EXPECT_EQ([test.layers selectedTag], 2);
  EXPECT_EQ(test.position(), kStart);
}

TEST(PositionFields, TypingIsFilteredCharacterByCharacter) {
  const std::array<std::pair<NSString *, const char *>, 9> rows = {{
      {@"45.5", "45.5"},
      {@"12a", "12"},
      {@"1.5.", "1.5"},
      {@"15.", "15."},
      {@"-5", "5"},
      {@"1,5", "15"},
      {@"abc", ""},
      {@"..", "."},
      {@"1 2", "12"},
  }};
  for (const auto &[typed, shown] : rows) {
    PositionWindow test(kStart);
    EXPECT_EQ(valueAfterTyping(test, typed), shown) << vireonix::bridge::utf8(typed);
    EXPECT_EQ(test.position().left, std::strtof(shown, nullptr));
    EXPECT_NE([test.left currentEditor], nil) << "the field is still being edited";
  }
}

TEST(PositionFields, EachFieldSetsItsOwnValue) {
  PositionWindow test(kStart);
  int value = 1;
  for (NSTextField *field : {test.left, test.top, test.right, test.bottom, test.transparency}) {
    test.edit(field);
    test.type([NSString stringWithFormat:@"%d.5", value++]);
  }
  EXPECT_EQ(test.position(), (Position{1.5F, 2.5F, 3.5F, 4.5F, 5.5F, 2}));
  EXPECT_EQ(test.texts(), "1.5 2.5 3.5 4.5 5.5");
  EXPECT_EQ([test.slider doubleValue], 5.5);
  EXPECT_FALSE([test.controller isChange]);
}

TEST(PositionFields, TheBoxFollowsWhatIsTyped) {
  PositionWindow test(kStart);
  test.edit(test.left);
  test.type(@"20");
  EXPECT_TRUE([test.canvas() needsDisplay]);
  [test.window display];
  EXPECT_TRUE(NSEqualRects([test.box() frame], NSMakeRect(40, 40, 100, 40)));
  test.edit(test.left);
  test.type(@"90");
  [test.window display];
  EXPECT_EQ(test.position().left, 90);
  EXPECT_TRUE(NSEqualRects([test.box() frame], NSMakeRect(40, 40, 100, 40)))
      << "margins above 100 leave the box where it was";
}

TEST(PositionFields, TypingInTheMiddleKeepsTheInsertionPoint) {
  PositionWindow test(kStart);
  test.edit(test.left);
  test.type(@"125");
  NSText *editor = [test.left currentEditor];
  [editor setSelectedRange:NSMakeRange(1, 0)];
  test.type(@"7");
  EXPECT_EQ(test.text(test.left), "1725");
  EXPECT_TRUE(NSEqualRanges([editor selectedRange], NSMakeRange(2, 0)));
  test.type(@"x");
  EXPECT_EQ(test.text(test.left), "17x25") << "only the last character is examined";
  EXPECT_TRUE(NSEqualRanges([editor selectedRange], NSMakeRange(3, 0)));
  EXPECT_EQ(test.position().left, 17);
}

TEST(PositionFields, ARemovedCharacterLeavesTheInsertionPointAtTheEnd) {
  PositionWindow test(kStart);
  EXPECT_EQ(valueAfterTyping(test, @"12a"), "12");
  EXPECT_TRUE(NSEqualRanges([[test.left currentEditor] selectedRange], NSMakeRange(2, 0)));
  test.type(@"3");
  EXPECT_EQ(test.text(test.left), "123");
}

TEST(PositionFields, EndingTheEditingKeepsWhatWasTyped) {
  PositionWindow test(kStart);
  test.edit(test.left);
  test.type(@"45.5x");
  [test.window makeFirstResponder:nil];
  EXPECT_EQ(vireonix::bridge::utf8([test.left stringValue]), "45.5");
  EXPECT_EQ(test.position().left, 45.5F);
}

TEST(PositionFields, EmptyingAFieldStoresZeroAndLeavesItEmpty) {
  PositionWindow test(kStart);
  test.edit(test.left);
  test.type(@"7");
  [[test.left currentEditor] setSelectedRange:NSMakeRange(0, 1)];
  test.type(@"");
  EXPECT_EQ(test.text(test.left), "");
  EXPECT_EQ(test.position().left, 0);
}

TEST(PositionFields, PastedTextKeepsWhatEndsInADigit) {
  const std::array<std::tuple<NSString *, const char *, float>, 6> rows = {{
      {@"1x2", "1x2", 1},
      {@"-5", "-5", -5},
      {@"150", "150", 150},
      {@"1e5", "1e5", 100000},
      {@"12\U0001F600", "12", 12},
      {@"5\n", "5", 5},
  }};
  for (const auto &[pasted, shown, value] : rows) {
    PositionWindow test(kStart);
    test.edit(test.left);
    test.insert(pasted);
    EXPECT_EQ(test.text(test.left), shown);
    EXPECT_EQ(test.position().left, value);
  }
}

TEST(PositionFields, AFieldThatIsNotBeingEditedIsFilteredToo) {
  PositionWindow test(kStart);
  [test.bottom setStringValue:@"33x"];
  test.notifyOf(test.bottom);
  EXPECT_EQ(test.text(test.bottom), "33");
  EXPECT_EQ(test.position().bottom, 33);
}

TEST(PositionFields, OtherControlsChangeNothing) {
  PositionWindow test(kStart);
  NSTextField *other = [[[NSTextField alloc] initWithFrame:NSMakeRect(0, 0, 50, 20)] autorelease];
  [other setStringValue:@"5x"];
  test.notifyOf(other);
  test.notifyOf(nil);
  EXPECT_EQ(vireonix::bridge::utf8([other stringValue]), "5x");
  EXPECT_EQ(test.position(), kStart);
}

TEST(PositionFields, TheTransparencyFieldAndTheSliderFollowEachOther) {
  PositionWindow test(kStart);
  test.edit(test.transparency);
  test.type(@"45.5");
  EXPECT_EQ([test.slider doubleValue], 45.5);
  EXPECT_EQ(test.position().transparency, 45.5F);
  test.type(@"00");
  EXPECT_EQ(test.position().transparency, 45.5F);
  test.edit(test.transparency);
  test.type(@"455");
  EXPECT_EQ([test.slider doubleValue], 100) << "within the slider's own range";
  EXPECT_EQ(test.position().transparency, 455);

  [test.slider setDoubleValue:33.333];
  [test.controller onTransparencyChange:test.slider];
  EXPECT_EQ(test.text(test.transparency), "33.3");
  EXPECT_EQ(test.position().transparency, 33.333F);
  EXPECT_FALSE([test.controller isChange]);
}

TEST(PositionFields, ADragShowsItsMarginsInTheFields) {
  PositionWindow test(kStart);
  test.drag(NSMakePoint(80, 60), NSMakePoint(90, 65));
  EXPECT_EQ(test.texts(), "10.0 20.0 30.0 40.0 70.0") << "the drag step does not wait";
  EXPECT_TRUE(pumpUntil([&] { return test.texts() == "15.0 15.0 25.0 45.0 70.0"; }));
  EXPECT_FALSE([test.controller isChange]);
}

TEST(PositionFields, ADragShowsItsMarginsInModalSessionsAndWhileTheMouseIsFollowed) {
  for (NSString *mode in @[ NSModalPanelRunLoopMode, NSEventTrackingRunLoopMode ]) {
    PositionWindow test(kStart);
    test.drag(NSMakePoint(80, 60), NSMakePoint(90, 65));
    EXPECT_TRUE(pumpUntil([&] { return test.texts() == "15.0 15.0 25.0 45.0 70.0"; }, 10, mode));
  }
}

TEST(PositionFields, ADragDoesNotEndTheEditingOfAField) {
  PositionWindow test(kStart);
  test.edit(test.left);
  test.drag(NSMakePoint(80, 60), NSMakePoint(90, 65));
  EXPECT_TRUE(pumpUntil([&] { return test.texts() == "15.0 15.0 25.0 45.0 70.0"; }));
  EXPECT_NE([test.left currentEditor], nil);
}

TEST(PositionFields, TheRefreshOfADragOutlivesNoController) {
  PositionWindow test(kStart);
  test.drag(NSMakePoint(80, 60), NSMakePoint(90, 65));
  test.releaseController();
  EXPECT_TRUE(pumpUntil([&] { return test.isControllerGone(); }));
  EXPECT_TRUE(test.wasControllerFreedOnTheMainThread());
}

TEST(PositionFields, TheRefreshOfADragDoesNotReachAWindowThatHasClosed) {
  PositionWindow test(kStart);
  test.drag(NSMakePoint(80, 60), NSMakePoint(90, 65));
  [test.controller setValue:[NSNumber numberWithBool:YES] forKey:@"hasEnded"];
  pumpFor(0.3);
  EXPECT_EQ(test.texts(), "10.0 20.0 30.0 40.0 70.0");
}

TEST(PositionFields, RealKeysAreFiltered) {
  PositionWindow test(kStart);
  ASSERT_TRUE(pumpUntilReachable(test.window));
  moveMouse(test.left, NSMakePoint(10, 10));
  const BackgroundCommand click("xdotool mousedown 1; sleep 0.15; xdotool mouseup 1");
  // The click first selects all, then puts the insertion point where the pointer is.
  ASSERT_TRUE(pumpEventsUntil([&] {
    NSText *editor = [test.left currentEditor];
    return editor != nil && [editor selectedRange].length == 0;
  }));
  [[test.left currentEditor] selectAll:nil];
  ASSERT_EQ(std::system("xdotool type --delay 20 4x5.5."), 0);
  EXPECT_TRUE(pumpEventsUntil([&] { return test.text(test.left) == "45.5"; }, 5))
      << test.text(test.left);
  pumpEventsFor(0.2);
  EXPECT_EQ(test.text(test.left), "45.5");
  EXPECT_EQ(test.position().left, 45.5F);
  moveMouseAway();
}

TEST(PositionFields, TheRealMouseDragsTheBoxInAModalSession) {
  PositionWindow test(kStart);
  ASSERT_TRUE(pumpUntilReachable(test.window));
  NSModalSession session = [NSApp beginModalSessionForWindow:test.window];
  auto until = [&](const std::function<bool()> &condition) {
    const NSTimeInterval end = [NSDate timeIntervalSinceReferenceDate] + 10;
    while (!condition() && [NSDate timeIntervalSinceReferenceDate] < end) {
      [NSApp runModalSession:session];
      pumpFor(0.01, NSModalPanelRunLoopMode);
    }
    return condition();
  };
  moveMouse(test.canvas(), NSMakePoint(80, 60));
  pressMouse();
  ASSERT_TRUE(until([&] { return [test.box() mouseState] == kMousePressed; }));
  moveMouse(test.canvas(), NSMakePoint(100, 60));
  EXPECT_TRUE(until([&] { return test.texts() == "20.0 20.0 20.0 40.0 70.0"; })) << test.texts();
  releaseMouse();
  EXPECT_TRUE(until([&] { return [test.box() mouseState] == kMouseIdle; }));
  [NSApp endModalSession:session];
  moveMouseAway();
}
