// Every kind of control shows that the mouse is over it, that it is pressed and that it has the
// keyboard; the mouse is the display's.
#import "appkit/looks/looks_of_views.h"
#import "support/mouse.h"
#import "support/run_loop.h"

#include <gtest/gtest.h>

using namespace vireonix::test;

TEST(Hover, EveryKindOfControlShowsTheMouseOverIt) {
  const ShownWindow shown;
  shown.focus(@"tableView");
  for (NSString *name in @[
         @"btnCancel", @"btnOK", @"btnAdd", @"matLayer", @"txtCaption", @"comAlign", @"sldTrans"
       ]) {
    NSView *view = shown.control(name);
    moveOntoGround(shown.window());
    const Picture apart = shownBy(view);
    NSPoint place = middle(view);
    if ([name isEqualToString:@"matLayer"])
      place = NSMakePoint(10, 10);
    moveMouse(view, place);
    EXPECT_TRUE(comesToDiffer(view, apart)) << [name UTF8String];
    moveOntoGround(shown.window());
    EXPECT_TRUE(comesToLookLike(view, apart)) << [name UTF8String];
  }
}

TEST(Hover, ADisabledControlDoesNotShowIt) {
  const ShownWindow shown;
  shown.focus(@"tableView");
  for (NSString *name in @[ @"btnCancel", @"txtCaption", @"comAlign" ]) {
    NSControl *control = shown.control(name);
    [control setEnabled:NO];
    moveOntoGround(shown.window());
    const Picture apart = shownBy(control);
    moveMouse(control, middle(control));
    pumpEventsFor(0.3);
    EXPECT_EQ(changedPixels(apart, shownBy(control)), 0) << [name UTF8String];
    [control setEnabled:YES];
  }
}

TEST(Hover, LeavingTheWindowEndsIt) {
  const ShownWindow shown;
  NSView *button = shown.control(@"btnCancel");
  moveOntoGround(shown.window());
  const Picture apart = shownBy(button);
  moveMouse(button, middle(button));
  ASSERT_TRUE(comesToDiffer(button, apart));
  moveMouseAway();
  EXPECT_TRUE(comesToLookLike(button, apart));
}

TEST(Pressed, ButtonsAndMarksShowThatTheMouseHoldsThem) {
  const ShownWindow shown;
  shown.focus(@"tableView");
  for (NSString *name in @[ @"btnCancel", @"btnOK", @"btnAdd", @"btnDefault", @"btnContentSave" ]) {
    NSButton *button = shown.control(name);
    EXPECT_GT(pixelsChangedByPressing(button, middle(button)), 200) << [name UTF8String];
    EXPECT_TRUE([shown.window() isVisible]) << "released beside the button, nothing happens";
  }
  NSMatrix *layers = shown.control(@"matLayer");
  [layers selectCellWithTag:0];
  EXPECT_GT(pixelsChangedByPressing(layers, NSMakePoint(10, NSMaxY([layers bounds]) - 12)), 20);
}

TEST(Focus, EveryControlShowsThatItHasTheKeyboard) {
  const ShownWindow shown;
  moveOntoGround(shown.window());
  for (NSString *name in @[
         @"tableView", @"btnAdd", @"txtFileName", @"tbContent", @"txtCaption", @"btnTextColor",
         @"comAlign", @"txtInTime", @"txtLeft", @"sldTrans", @"matLayer", @"btnDefault", @"btnOK"
       ]) {
    NSView *view = shown.control(name);
    if ([view enclosingScrollView] != nil)
      view = [view enclosingScrollView];
    shown.focus(@"btnCancel");
    const Picture apart = shownBy(view);
    shown.focus(name);
    EXPECT_GT(changedPixels(apart, shownBy(view)), 20) << [name UTF8String];
  }
}
