// How the panel's controls reach it: targets, delegates, the mouse, and selections in a modal
// session.
#import "panel_fixture.h"

#import "Bridge/text.h"
#import "Class/SimpleCell.h"
#import "support/mouse.h"
#import "support/pixels.h"
#import "support/run_loop.h"

using namespace vireonix::test;

namespace {

class PanelWiring : public PanelTest {
protected:
  NSArray *wiredButtons() {
    return @[
      [panel_ btnAdd], [panel_ btnRemove], [panel_ btnSave], [panel_ btnBrowse],
      [panel_ btnContentAdd], [panel_ btnContentRemove], [panel_ btnContentSave]
    ];
  }

  bool comesToBeHovered(NSButton *button, bool hovered) {
    return pumpEventsUntil([&] { return bool([[button cell] isHovered]) == hovered; }, 3);
  }

  int ringPixels(NSButton *button) {
    [window_ displayIfNeeded];
    return Picture(button).count([](Pixel pixel) { return isNear(pixel, {153, 204, 255}); });
  }
};

NSPoint middleOf(NSView *view) {
  return NSMakePoint(NSMidX([view bounds]), NSMidY([view bounds]));
}

std::string actionOf(NSControl *control) {
  return vireonix::bridge::utf8(NSStringFromSelector([control action]));
}

bool isWhite(Pixel pixel) {
  return pixel == Pixel{255, 255, 255};
}

} // namespace

TEST_F(PanelWiring, EveryButtonHasItsActionAndABorderUnderTheMouseOnly) {
  open(documentMarkup(""));
  const std::vector<std::string> actions = {
      "onAdd:",        "onRemove:",        "onSave:",       "onBrowse:",
      "onContentAdd:", "onContentRemove:", "onContentSave:"};
  std::vector<std::string> found;
  for (NSButton *button in wiredButtons()) {
    found.push_back(actionOf(button));
    EXPECT_EQ([button target], panel_);
    EXPECT_TRUE([button showsBorderOnlyWhileMouseInside]) << found.back();
  }
  EXPECT_EQ(found, actions);
  EXPECT_EQ([[panel_ btnTextColor] target], panel_);
  EXPECT_EQ(actionOf([panel_ btnTextColor]), "onColorSelect:");
}

TEST_F(PanelWiring, FieldsAndComboBoxesReachThePanel) {
  open(documentMarkup(""));
  for (NSTextField *field in @[
         [panel_ txtFileName], [panel_ txtCaption], [panel_ txtInTime], [panel_ txtStayTime],
         [panel_ txtTextSize]
       ])
    EXPECT_EQ([field delegate], panel_);
  for (NSComboBox *combo in @[
         [panel_ comAlign], [panel_ comTextAlign], [panel_ comTextAnimation],
         [panel_ comStartDirection], [panel_ comStyle]
       ]) {
    EXPECT_EQ([combo target], panel_);
    EXPECT_EQ(actionOf(combo), "onTypeButtonChange:");
  }
  EXPECT_TRUE(NSEqualSizes([[panel_ comAlign] intercellSpacing], NSMakeSize(1, 2)));
}

TEST_F(PanelWiring, TheMouseOverAButtonOfTheNibGivesItARing) {
  open(documentMarkup(slideMarkup("a.jpg")));
  selectSlide(0);
  ASSERT_TRUE(pumpUntilReachable(window_));
  for (NSButton *button in wiredButtons()) {
    const std::string name = actionOf(button);
    ASSERT_TRUE([[button cell] isKindOfClass:[SimpleCell class]]) << name;
    moveMouse([window_ contentView], NSMakePoint(3, 3));
    EXPECT_TRUE(comesToBeHovered(button, false)) << name;
    EXPECT_EQ(ringPixels(button), 0) << name;
    moveMouse(button, middleOf(button));
    EXPECT_TRUE(comesToBeHovered(button, true)) << name;
    EXPECT_GT(ringPixels(button), 20) << name;
  }
}

TEST_F(PanelWiring, AButtonThatCannotBeUsedShowsNothingUnderTheMouse) {
  open(documentMarkup(""));
  ASSERT_TRUE(pumpUntilReachable(window_));
  NSButton *button = [panel_ btnBrowse];
  moveMouse([window_ contentView], NSMakePoint(3, 3));
  pumpEventsFor(0.1);
  moveMouse(button, middleOf(button));
  EXPECT_TRUE(comesToBeHovered(button, true));
  EXPECT_EQ(ringPixels(button), 0);
}

TEST_F(PanelWiring, ThePanelsFrameIsDrawnByFullRedrawsOnly) {
  open(documentMarkup(""));
  [panel_ setFrameSize:NSMakeSize(60, 40)];
  const auto drawnBy = [this](NSRect rect) {
    Canvas *canvas = [[[Canvas alloc] initWithFrame:NSMakeRect(0, 0, 120, 50)] autorelease];
    [canvas setDrawing:[this, rect](NSView *, NSRect) { [panel_ drawRect:rect]; }];
    NSWindow *window = windowShowing(canvas);
    const Picture picture(canvas);
    [window orderOut:nil];
    return 120 * 50 - picture.count(isWhite);
  };
  EXPECT_EQ(drawnBy(NSMakeRect(0, 0, 60, 39)), 0);
  EXPECT_EQ(drawnBy(NSMakeRect(0, 0, 59, 40)), 0);
  const int drawn = drawnBy(NSMakeRect(0, 0, 60, 40));
  EXPECT_GT(drawn, 150);
  EXPECT_LT(drawn, 450) << "a line, and nothing inside";
}

TEST_F(PanelWiring, ASelectionInAModalSessionIsShownWhileTheSessionRuns) {
  open(documentMarkup(slideMarkup("a.jpg", captionMarkup("Hi")) + slideMarkup("b.jpg")));
  NSModalSession session = [NSApp beginModalSessionForWindow:window_];
  const auto comesToShow = [&](NSTextField *field, const char *text) {
    NSDate *end = [NSDate dateWithTimeIntervalSinceNow:10];
    while (textOf(field) != text && [end timeIntervalSinceNow] > 0) {
      [NSApp runModalSession:session];
      [[NSRunLoop currentRunLoop] runMode:NSModalPanelRunLoopMode
                               beforeDate:[NSDate dateWithTimeIntervalSinceNow:0.01]];
    }
    return textOf(field) == text;
  };
  [[panel_ tableView] selectRowIndexes:[NSIndexSet indexSetWithIndex:0] byExtendingSelection:NO];
  EXPECT_TRUE(comesToShow([panel_ txtFileName], "a.jpg"));
  [[panel_ tbContent] selectRowIndexes:[NSIndexSet indexSetWithIndex:0] byExtendingSelection:NO];
  EXPECT_TRUE(comesToShow([panel_ txtCaption], "Hi"));
  [NSApp endModalSession:session];
}
