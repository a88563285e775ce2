// The window keeps one rhythm: margins of 16 points around groups, of 12 inside them, rows every 30
// points, buttons 8 points from what is beside them; field, unit and label belong together.
#import "resources/nib_window.h"

#include <cmath>
#include <gtest/gtest.h>

using namespace vireonix::test;

namespace {

constexpr double kOutside = 16;
constexpr double kInside = 12;
constexpr double kApart = 8;
constexpr double kRow = 30;

class Rhythm : public testing::Test {
protected:
  NSView *preview() const { return static_cast<NSView *>(static_cast<id>(owner()->iWebView)); }
  NibOwner *owner() const { return nibs.owner(); }
  PrivateView *panel() const { return nibs.panel(); }
  NSRect inWindow(NSView *view) const {
    return [nibs.content() convertRect:[view bounds] fromView:view];
  }

  NibWindow nibs{folderOf("en")};
};

// The label that stands in a view's row, the nearest to one side of it.
NSTextField *nearestLabel(NSView *view, bool toTheRight) {
  NSTextField *nearest = nil;
  double least = 1000;
  for (NSView *other in [[view superview] subviews]) {
    if (![other isMemberOfClass:[NSTextField class]] ||
        [static_cast<NSTextField *>(other) isEditable] ||
        std::abs(NSMidY([other frame]) - NSMidY([view frame])) > 4)
      continue;
    const double gap = toTheRight ? NSMinX([other frame]) - NSMaxX([view frame])
                                  : NSMinX([view frame]) - NSMaxX([other frame]);
    if (gap >= 0 && gap < least) {
      least = gap;
      nearest = static_cast<NSTextField *>(other);
    }
  }
  return nearest;
}

} // namespace

TEST_F(Rhythm, GroupsStandSixteenPointsFromTheWindowsEdgesAndFromEachOther) {
  const NSRect window = [nibs.content() bounds];
  const NSRect left = inWindow(panel());
  const NSRect above = inWindow([preview() superview]);
  const NSRect below = inWindow([owner()->positionDrawView superview]);
  EXPECT_EQ(NSMinX(left), kOutside);
  EXPECT_EQ(NSMaxY(window) - NSMaxY(left), kOutside);
  EXPECT_EQ(NSMinX(above) - NSMaxX(left), kOutside);
  EXPECT_EQ(NSMaxX(window) - NSMaxX(above), kOutside);
  EXPECT_EQ(NSMinY(above) - NSMaxY(below), kOutside);
  EXPECT_EQ(NSMaxY(above), NSMaxY(left));
  EXPECT_EQ(NSMinY(below), NSMinY(left));
}

TEST_F(Rhythm, ControlsStandTwelvePointsInsideTheirGroups) {
  const double left = NSMinX(inWindow(panel())) + kInside;
  for (NSView *view in @[
         [[panel() tableView] enclosingScrollView], [[panel() tbContent] enclosingScrollView],
         [panel() btnContentAdd], nearestLabel([panel() txtFileName], false),
         nearestLabel([panel() txtCaption], false), nearestLabel([panel() comAlign], false)
       ])
    EXPECT_EQ(NSMinX(inWindow(view)), left) << [[view description] UTF8String];
  for (NSView *view in
       @[ [panel() btnAdd], [panel() btnBrowse], [[panel() tbContent] enclosingScrollView] ])
    EXPECT_EQ(NSMaxX(inWindow(view)), NSMaxX(inWindow(panel())) - kInside);
  for (NSView *view in @[ owner()->positionDrawView, nearestLabel(owner()->sldTrans, false) ])
    EXPECT_EQ(NSMinX([view frame]), kInside) << [[view description] UTF8String];
}

TEST_F(Rhythm, RowsOfFieldsRepeatEveryThirtyPoints) {
  for (NSArray *fields in @[
         @[ owner()->txtLeft, owner()->txtTop, owner()->txtRight, owner()->txtBottom ],
         @[ [panel() comStyle], [panel() comTextAnimation], [panel() comStartDirection] ],
         @[ [panel() txtTextSize], [panel() comAlign], [panel() comTextAlign], [panel() txtInTime] ]
       ])
    for (NSUInteger i = 1; i < [fields count]; ++i) {
      const NSRect upper = inWindow([fields objectAtIndex:i - 1]);
      const NSRect lower = inWindow([fields objectAtIndex:i]);
      EXPECT_NEAR(NSMidY(upper) - NSMidY(lower), kRow, 1.5);
    }
}

TEST_F(Rhythm, ButtonsStandEightPointsFromWhatIsAboveBelowAndBesideThem) {
  const NSRect table = inWindow([[panel() tableView] enclosingScrollView]);
  const NSRect browse = inWindow([panel() btnBrowse]);
  const NSRect group = inWindow([[panel() btnBrowse] superview]);
  EXPECT_EQ(NSMinY(table) - NSMaxY(browse), kApart);
  EXPECT_EQ(NSMinY(browse) - NSMinY(group), kApart);
  EXPECT_EQ(NSMinY(inWindow([panel() btnContentAdd])) - NSMinY(inWindow(panel())), kApart);
  NSArray *row = @[ [panel() btnContentAdd], [panel() btnContentSave], [panel() btnContentRemove] ];
  for (NSUInteger i = 1; i < [row count]; ++i)
    EXPECT_EQ(NSMinX([[row objectAtIndex:i] frame]) - NSMaxX([[row objectAtIndex:i - 1] frame]),
              kApart);
}

TEST_F(Rhythm, EveryFieldHasItsLabelAndEveryNumberItsUnit) {
  struct Row {
    NSView *field;
    const char *label;
    const char *unit;
  };
  const Row rows[] = {{owner()->txtLeft, "Left:", "%"},
                      {owner()->txtTop, "Top:", "%"},
                      {owner()->txtRight, "Right:", "%"},
                      {owner()->txtBottom, "Bottom:", "%"},
                      {owner()->txtTransparency, nullptr, "%"},
                      {[panel() txtFileName], "File:", nullptr},
                      {[panel() txtCaption], "Caption:", nullptr},
                      {[panel() txtTextSize], "Size:", "px"},
                      {[panel() comStyle], "Style:", nullptr},
                      {[panel() comAlign], "Align:", nullptr},
                      {[panel() comTextAnimation], "Animation:", nullptr},
                      {[panel() comTextAlign], "Text align:", nullptr},
                      {[panel() comStartDirection], "Direction:", nullptr},
                      {[panel() txtInTime], "In time:", "s"},
                      {[panel() txtStayTime], "Stay time:", "s"}};
  for (const Row &row : rows) {
    if (row.label != nullptr)
      EXPECT_STREQ([[nearestLabel(row.field, false) stringValue] UTF8String], row.label);
    if (row.unit != nullptr) {
      NSTextField *unit = nearestLabel(row.field, true);
      ASSERT_NE(unit, nil) << row.unit << " beside " << (row.label == nullptr ? "" : row.label);
      EXPECT_STREQ([[unit stringValue] UTF8String], row.unit);
      EXPECT_EQ(NSMinX([unit frame]) - NSMaxX([row.field frame]), 4);
    }
  }
  EXPECT_STREQ([[nearestLabel(owner()->sldTrans, false) stringValue] UTF8String], "Transparency:");
}

TEST_F(Rhythm, TitlesStandAtOnePlaceInTheirGroups) {
  int titles = 0;
  for (NSString *text in
       @[ @"Slides", @"Captions of the slide", @"Caption", @"Preview", @"Position on the page" ]) {
    NSTextField *title = labelOf(nibs.content(), text);
    ASSERT_NE(title, nil) << [text UTF8String];
    EXPECT_EQ(NSMinX([title frame]), kInside) << [text UTF8String];
    EXPECT_EQ(NSMaxY([[title superview] bounds]) - NSMaxY([title frame]), 7) << [text UTF8String];
    ++titles;
  }
  EXPECT_EQ(titles, 5);
}

TEST_F(Rhythm, WhatStandsInAColumnBeginsAndEndsOnOneLine) {
  const PrivateView *editor = panel();
  for (NSArray *column in @[
         @[
           [editor txtCaption], [editor txtTextSize], [editor comAlign], [editor comTextAlign],
           [editor txtInTime]
         ],
         @[
           [editor comStyle], [editor comTextAnimation], [editor comStartDirection],
           [editor txtStayTime]
         ],
         @[ owner()->txtLeft, owner()->txtTop, owner()->txtRight, owner()->txtBottom ],
         @[ [editor btnAdd], [editor btnRemove], [editor btnSave], [editor btnBrowse] ]
       ])
    for (NSView *view in column)
      EXPECT_EQ(NSMinX(inWindow(view)), NSMinX(inWindow([column objectAtIndex:0])))
          << [[view description] UTF8String];
  const double end = NSMaxX(inWindow([[editor tbContent] enclosingScrollView]));
  for (NSView *view in @[
         [[editor btnTextColor] superview], [editor comStyle], [editor comTextAnimation],
         [editor comStartDirection]
       ])
    EXPECT_EQ(NSMaxX(inWindow(view)), end) << [[view description] UTF8String];
  // A slider's knob stands two points inside its frame.
  EXPECT_EQ(NSMinX(inWindow(owner()->matLayer)) - NSMinX(inWindow(owner()->sldTrans)), 2);
}

TEST_F(Rhythm, WhatStandsInARowIsLevel) {
  const NibOwner *window = owner();
  EXPECT_EQ(NSMidY([window->sldTrans frame]), NSMidY([window->txtTransparency frame]));
  EXPECT_EQ(NSMaxY([window->positionDrawView frame]), NSMaxY([window->txtLeft frame]));
  const double firstLayer =
      NSMaxY([window->matLayer frame]) - [window->matLayer cellSize].height / 2;
  NSTextField *label = labelOf(nibs.content(), @"Layer:");
  EXPECT_NEAR(NSMidY([label frame]), firstLayer, 1);
  NSView *colour = [[panel() btnTextColor] superview];
  EXPECT_EQ(NSMidY(inWindow(colour)), NSMidY(inWindow([panel() txtCaption])));
  EXPECT_EQ(NSMaxY(inWindow([panel() btnAdd])),
            NSMaxY(inWindow([[panel() tableView] enclosingScrollView])));
  NSArray *buttons = @[ [panel() btnAdd], [panel() btnRemove], [panel() btnSave] ];
  for (NSUInteger i = 1; i < [buttons count]; ++i)
    EXPECT_EQ(NSMinY([[buttons objectAtIndex:i - 1] frame]) -
                  NSMaxY([[buttons objectAtIndex:i] frame]),
              6);
}

// AppKit leaves room for a shadow around a push button.
TEST_F(Rhythm, TheWindowsButtonsEndWithTheGroups) {
  constexpr double kShadow = 6;
  constexpr double kBetween = 2;
  const NSRect standard = [owner()->btnDefault frame];
  const NSRect cancel = [owner()->btnCancel frame];
  const NSRect apply = [owner()->btnOK frame];
  EXPECT_EQ(NSMinX(standard) + kShadow, kOutside);
  EXPECT_EQ(NSMaxX([nibs.content() bounds]) - NSMaxX(apply) + kShadow, kOutside);
  EXPECT_EQ(NSMinX(apply) - NSMaxX(cancel), kBetween);
  EXPECT_EQ(NSWidth(apply), NSWidth(cancel));
  EXPECT_EQ(NSMinY(standard), NSMinY(apply));
  EXPECT_EQ(NSMinY(cancel), NSMinY(apply));
}

TEST_F(Rhythm, ThePreviewAndTheCanvasHaveThePagesProportions) {
  const NSSize shown = [preview() bounds].size;
  const NSSize canvas = [owner()->positionDrawView bounds].size;
  EXPECT_NEAR(shown.width / shown.height, 4.0 / 3, 0.01);
  EXPECT_NEAR(canvas.width / canvas.height, 4.0 / 3, 0.01);
}
