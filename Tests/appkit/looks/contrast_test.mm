// Every text of the settings window can be read, in both looks: measured in what the window shows.
#import "Theme/HostTheme.h"
#import "appkit/looks/shown_window.h"
#import "support/contrast.h"
#import "support/run_loop.h"
#import "vireonix/ColorButtonCell.h"

#include <gtest/gtest.h>

#include <functional>

using namespace vireonix::test;

namespace {

class Contrast : public testing::TestWithParam<HostThemeVariant> {
protected:
  void SetUp() override { InstallHostTheme(GetParam()); }
  void TearDown() override { InstallHostTheme(HostThemeLight); }
};

void forEachControl(NSView *view, const std::function<void(NSControl *)> &visit) {
  if ([view isKindOfClass:[NSControl class]]) {
    visit(static_cast<NSControl *>(view));
    return;
  }
  for (NSView *subview in [view subviews])
    forEachControl(subview, visit);
}

bool showsText(NSControl *control) {
  // The colour button's cell shows no title.
  if ([[control cell] isKindOfClass:[ColorButtonCell class]])
    return false;
  if ([control isKindOfClass:[NSButton class]])
    return [[static_cast<NSButton *>(control) title] length] > 0;
  return [control isKindOfClass:[NSTextField class]] && [[control stringValue] length] > 0;
}

// Without the control's border.
NSRect textArea(NSView *view) {
  const bool isButton = [view isKindOfClass:[NSButton class]];
  return NSInsetRect(NSMakeRect(0, 0, NSWidth([view bounds]), NSHeight([view bounds])),
                     isButton ? 12 : 4, isButton ? 7 : 3);
}

void show(const ShownWindow &shown) {
  shown.focus(@"btnDefault");
  [[shown.window() contentView] setNeedsDisplay:YES];
  [shown.window() display];
}

double rowContrast(NSTableView *table, NSInteger row) {
  const NSRect cell = [table frameOfCellAtColumn:0 row:row];
  return textContrast(Picture(table), NSInsetRect(cell, 2, 2));
}

} // namespace

TEST_P(Contrast, OfEveryLabelFieldAndButton) {
  const ShownWindow shown;
  show(shown);
  int texts = 0;
  forEachControl([shown.window() contentView], [&](NSControl *control) {
    if (!showsText(control) || ![control isEnabled])
      return;
    ++texts;
    EXPECT_GE(textContrast(Picture(control), textArea(control)), kReadable)
        << [[control description] UTF8String];
  });
  EXPECT_GE(texts, 45) << "labels, fields, combo boxes and buttons";
}

TEST_P(Contrast, OfRowsSelectedRowsAndHeaders) {
  const ShownWindow shown;
  show(shown);
  NSTableView *slides = shown.control(@"tableView");
  ASSERT_EQ([slides selectedRow], 0);
  EXPECT_GE(rowContrast(slides, 0), kReadable) << "selected";
  EXPECT_GE(rowContrast(slides, 1), kReadable) << "not selected";
  for (NSString *name in @[ @"tableView", @"tbContent" ]) {
    NSView *header = [shown.control(name) headerView];
    EXPECT_GE(textContrast(Picture(header), NSMakeRect(6, 4, 80, 16)), kReadable)
        << [name UTF8String];
  }
}

TEST_P(Contrast, OfRadioButtons) {
  const ShownWindow shown;
  show(shown);
  NSMatrix *layers = shown.control(@"matLayer");
  const Picture picture(layers);
  for (NSInteger row = 0; row < 2; ++row) {
    const NSRect title = NSMakeRect(24, static_cast<CGFloat>(24 * row), 120, 20);
    EXPECT_GE(textContrast(picture, title), kReadable) << "row " << row;
  }
}

TEST_P(Contrast, OfADisabledControlIsLower) {
  const ShownWindow shown;
  show(shown);
  for (NSString *name in @[ @"btnCancel", @"txtCaption", @"comAlign" ]) {
    NSControl *control = shown.control(name);
    const double enabled = textContrast(Picture(control), textArea(control));
    [control setEnabled:NO];
    [control display];
    EXPECT_LT(textContrast(Picture(control), textArea(control)), 0.7 * enabled)
        << [name UTF8String];
  }
}

TEST_P(Contrast, OfAnAlert) {
  NSPanel *panel = NSGetAlertPanel(@"Do you want to apply the settings?", @"A second sentence.",
                                   @"OK", @"Cancel", nil);
  ASSERT_NE(panel, nil);
  [panel orderFront:nil];
  [panel display];
  int texts = 0;
  forEachControl([panel contentView], [&](NSControl *control) {
    if (!showsText(control))
      return;
    ++texts;
    EXPECT_GE(textContrast(Picture(control), textArea(control)), kReadable)
        << [[control description] UTF8String];
  });
  EXPECT_EQ(texts, 4) << "the title, the message and two buttons";
  NSReleaseAlertPanel(panel);
}

INSTANTIATE_TEST_SUITE_P(InBothLooks, Contrast, testing::Values(HostThemeLight, HostThemeDark),
                         [](const auto &variant) {
                           return variant.param == HostThemeDark ? "Dark" : "Light";
                         });
