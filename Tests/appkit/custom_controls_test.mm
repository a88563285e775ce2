#import "Class/GroupsView.h"
#import "Class/RoundView.h"
#import "Class/SimpleCell.h"
#import "Class/TransitionBGView.h"
#import "support/mouse.h"
#import "support/pixels.h"
#import "support/run_loop.h"
#import "vireonix/ColorButtonCell.h"

#include <gtest/gtest.h>

#include <optional>

using namespace vireonix::test;

// Notes where it is asked to draw its image and its title.
@interface RecordingCell : SimpleCell {
@public
  std::optional<NSRect> imageRect;
  std::optional<NSRect> titleRect;
  NSView *imageView;
}
@end

@implementation RecordingCell
- (void)drawImage:(NSImage *)image withFrame:(NSRect)frame inView:(NSView *)view {
  imageRect = frame;
  imageView = view;
}
- (NSRect)drawTitle:(NSAttributedString *)title withFrame:(NSRect)frame inView:(NSView *)view {
  titleRect = frame;
  return frame;
}
@end

namespace {

constexpr Pixel kWhite{255, 255, 255};
constexpr Pixel kHoverRing{153, 204, 255};
const NSRect kButtonFrame = NSMakeRect(10, 10, 100, 30);

bool isWhite(Pixel pixel) {
  return pixel == kWhite;
}

bool isHoverRing(Pixel pixel) {
  return isNear(pixel, kHoverRing);
}

bool isOutline(Pixel pixel) {
  return pixel.red == pixel.green && pixel.green == pixel.blue && pixel.red < 200;
}

NSImage *blackSquare() {
  NSImage *image = [[[NSImage alloc] initWithSize:NSMakeSize(16, 16)] autorelease];
  [image lockFocus];
  [[NSColor blackColor] set];
  NSRectFill(NSMakeRect(0, 0, 16, 16));
  [image unlockFocus];
  return image;
}

// Shows what `drawing` draws in a view of 120 by 50 points.
Picture pictureOf(const std::function<void(NSView *)> &drawing) {
  Canvas *canvas = [[[Canvas alloc] initWithFrame:NSMakeRect(0, 0, 120, 50)] autorelease];
  [canvas setDrawing:[&](NSView *view, NSRect) { drawing(view); }];
  NSWindow *window = windowShowing(canvas);
  Picture picture(canvas);
  [window orderOut:nil];
  return picture;
}

Picture pictureOf(NSCell *cell) {
  return pictureOf([cell](NSView *view) { [cell drawWithFrame:kButtonFrame inView:view]; });
}

template <typename Cell = SimpleCell> Cell *bareCell(NSString *title = @"") {
  Cell *cell = [[[Cell alloc] initTextCell:title] autorelease];
  [cell setImagePosition:NSNoImage];
  return cell;
}

// Draws the cell at (0, 0, 100, 30) and answers the cell.
RecordingCell *drawnCell(NSCellImagePosition position, NSString *title) {
  RecordingCell *cell = bareCell<RecordingCell>(title);
  [cell setImagePosition:position];
  pictureOf([cell](NSView *view) { [cell drawWithFrame:NSMakeRect(0, 0, 100, 30) inView:view]; });
  return cell;
}

// A window with one button of a simple cell in its middle.
struct HoverWindow {
  HoverWindow() {
    moveMouseAway();
    container = [[[NSView alloc] initWithFrame:NSMakeRect(0, 0, 300, 200)] autorelease];
    button = [[[NSButton alloc] initWithFrame:NSMakeRect(100, 80, 100, 30)] autorelease];
    cell = bareCell(@"Browse");
    [button setCell:cell];
    [cell setShowsBorderOnlyWhileMouseInside:YES];
    [container addSubview:button];
  }
  ~HoverWindow() { [window orderOut:nil]; }
  void show() {
    window = windowShowing(container);
    [window makeKeyAndOrderFront:nil];
    pumpEventsUntil([this] { return [window isKeyWindow]; });
  }
  bool becomes(bool hovered) {
    return pumpEventsUntil([&] { return bool([cell isHovered]) == hovered; }, 3);
  }

  NSView *container;
  NSButton *button;
  SimpleCell *cell;
  NSWindow *window = nil;
};

} // namespace

TEST(RoundView, AFullRedrawStrokesARoundedGreyOutlineAndNothingElse) {
  RoundView *view = [[[RoundView alloc] initWithFrame:NSMakeRect(0, 0, 60, 40)] autorelease];
  NSWindow *window = windowShowing(view);
  const Picture picture(view);
  EXPECT_TRUE(isOutline(picture.at(30, 0)));
  EXPECT_TRUE(isOutline(picture.at(0, 20)));
  EXPECT_GT(picture.at(0, 0).red, 240) << "the corner is cut";
  EXPECT_EQ(picture.count(NSMakeRect(3, 3, 54, 34), isWhite), 54 * 34);
  [window orderOut:nil];
}

TEST(RoundView, APartialRedrawDrawsNothing) {
  RoundView *view = [[[RoundView alloc] initWithFrame:NSMakeRect(0, 0, 60, 40)] autorelease];
  const Picture partial = pictureOf([view](NSView *) { [view drawRect:NSMakeRect(0, 0, 60, 39)]; });
  EXPECT_EQ(partial.count(isWhite), 120 * 50);
  const Picture full = pictureOf([view](NSView *) { [view drawRect:NSMakeRect(0, 0, 60, 40)]; });
  EXPECT_LT(full.count(isWhite), 120 * 50);
}

TEST(TransitionBGView, FadesFromWhiteAtTheTopToLightGreyAtTheBottom) {
  TransitionBGView *view =
      [[[TransitionBGView alloc] initWithFrame:NSMakeRect(0, 0, 60, 100)] autorelease];
  NSWindow *window = windowShowing(view);
  const Picture picture(view);
  EXPECT_GT(picture.at(30, 3).red, 250);
  EXPECT_NEAR(picture.at(30, 96).red, 255 * 0.9, 4) << "0.8 at half opacity on white";
  EXPECT_GT(picture.at(30, 30).red, picture.at(30, 70).red);
  EXPECT_TRUE(isOutline(picture.at(0, 50)));
  EXPECT_TRUE(isOutline(picture.at(30, 99)));
  [window orderOut:nil];
}

TEST(TransitionBGView, APartialRedrawDrawsNothing) {
  TransitionBGView *view =
      [[[TransitionBGView alloc] initWithFrame:NSMakeRect(0, 0, 60, 40)] autorelease];
  const Picture partial = pictureOf([view](NSView *) { [view drawRect:NSMakeRect(0, 0, 59, 40)]; });
  EXPECT_EQ(partial.count(isWhite), 120 * 50);
}

TEST(GroupsView, RedrawsTheWholeOfADecorationOfWhichAPartWasWipedAway) {
  GroupsView *ground = [[[GroupsView alloc] initWithFrame:NSMakeRect(0, 0, 200, 100)] autorelease];
  RoundView *group = [[[RoundView alloc] initWithFrame:NSMakeRect(5.3, 5, 150, 90)] autorelease];
  TransitionBGView *strip =
      [[[TransitionBGView alloc] initWithFrame:NSMakeRect(0, 60.7, 150, 29)] autorelease];
  NSTextField *label = [[[NSTextField alloc] initWithFrame:NSMakeRect(10, 5, 60, 20)] autorelease];
  [label setDrawsBackground:NO];
  [label setBezeled:NO];
  [label setEditable:NO];
  [strip addSubview:label];
  [group addSubview:strip];
  [ground addSubview:group];
  NSWindow *window = windowShowing(ground);
  const Picture before(ground);
  ASSERT_GT(before.count(isOutline), 100);
  [label setNeedsDisplay:YES];
  [window displayIfNeeded];
  [ground setNeedsDisplayInRect:NSMakeRect(0, 0, 20, 20)];
  [ground setNeedsDisplayInRect:NSMakeRect(40, 70, 5, 5)];
  [window displayIfNeeded];
  [strip displayRect:NSMakeRect(3, 3, 5, 5)];
  const Picture after(ground);
  int changed = 0;
  for (int y = 0; y < before.height(); ++y) {
    for (int x = 0; x < before.width(); ++x)
      changed += before.at(x, y) == after.at(x, y) ? 0 : 1;
  }
  EXPECT_EQ(changed, 0);
  [window orderOut:nil];
}

TEST(GroupsView, LeavesWhatIsApartFromTheChangeAlone) {
  GroupsView *ground = [[[GroupsView alloc] initWithFrame:NSMakeRect(0, 0, 200, 100)] autorelease];
  RoundView *group = [[[RoundView alloc] initWithFrame:NSMakeRect(5, 5, 90, 90)] autorelease];
  Canvas *canvas = [[[Canvas alloc] initWithFrame:NSMakeRect(100, 0, 100, 100)] autorelease];
  int drawings = 0;
  [canvas setDrawing:[&drawings](NSView *, NSRect) { ++drawings; }];
  [ground addSubview:group];
  [ground addSubview:canvas];
  NSWindow *window = windowShowing(ground);
  drawings = 0;
  [group setNeedsDisplay:YES];
  [window displayIfNeeded];
  EXPECT_EQ(drawings, 0);
  [window orderOut:nil];
}

TEST(SimpleCell, AnIdleButtonIsAGreyOutline) {
  const Picture picture = pictureOf(bareCell());
  EXPECT_EQ(picture.count(isHoverRing), 0);
  EXPECT_TRUE(isOutline(picture.at(60, 10)) || isOutline(picture.at(60, 9)));
  EXPECT_EQ(picture.count(NSMakeRect(13, 13, 94, 24), isWhite), 94 * 24);
}

TEST(SimpleCell, ATransparentButtonDrawsNothing) {
  SimpleCell *cell = bareCell(@"Title");
  [cell setTransparent:YES];
  [cell setHighlighted:YES];
  EXPECT_EQ(pictureOf(cell).count(isWhite), 120 * 50);
}

TEST(SimpleCell, AButtonUnderTheMouseHasALightBlueRing) {
  SimpleCell *cell = bareCell();
  EXPECT_FALSE([cell isHovered]);
  [cell mouseEntered:nil];
  EXPECT_TRUE([cell isHovered]);
  EXPECT_GT(pictureOf(cell).count(isHoverRing), 300);
  [cell mouseExited:nil];
  EXPECT_FALSE([cell isHovered]);
  EXPECT_EQ(pictureOf(cell).count(isHoverRing), 0);
}

TEST(SimpleCell, ADisabledButtonUnderTheMouseHasNoRing) {
  SimpleCell *cell = bareCell();
  [cell setEnabled:NO];
  [cell mouseEntered:nil];
  const Picture picture = pictureOf(cell);
  EXPECT_EQ(picture.count(isHoverRing), 0);
  EXPECT_GT(picture.count(isOutline), 100);
}

TEST(SimpleCell, APressedButtonShowsAGradientAndTheOutlineButNoRing) {
  SimpleCell *cell = bareCell();
  [cell mouseEntered:nil];
  [cell setHighlighted:YES];
  const Picture picture = pictureOf(cell);
  EXPECT_EQ(picture.count(isHoverRing), 0);
  EXPECT_GT(picture.count(isOutline), 100);
  // Not flipped: 90 degrees runs upwards, from the lighter grey to the darker one.
  EXPECT_NEAR(picture.at(60, 37).red, 255 * 0.95, 4);
  EXPECT_NEAR(picture.at(60, 12).red, 255 * 0.8, 6);
  EXPECT_NE(picture.at(10, 39), kWhite) << "the gradient's corners are square";
}

TEST(SimpleCell, AnImageBesideATitleIsASquareAndTheTitleFollows) {
  RecordingCell *cell = drawnCell(NSImageLeft, @"Title");
  EXPECT_TRUE(NSEqualRects(*cell->imageRect, NSMakeRect(2, 2, 26, 26)));
  EXPECT_TRUE(NSEqualRects(*cell->titleRect, NSMakeRect(30, 2, 68, 26)));
  EXPECT_EQ(cell->imageView, [cell controlView]);
}

TEST(SimpleCell, WithoutAnImageTheTitleFillsTheButton) {
  RecordingCell *cell = drawnCell(NSNoImage, @"Title");
  EXPECT_FALSE(cell->imageRect.has_value());
  EXPECT_TRUE(NSEqualRects(*cell->titleRect, NSMakeRect(2, 2, 94, 26)));
}

TEST(SimpleCell, WithoutAnImageTheTitleStartsAtTwoWhereverTheFrameStarts) {
  RecordingCell *cell = bareCell<RecordingCell>(@"Title");
  pictureOf(cell);
  EXPECT_TRUE(NSEqualRects(*cell->titleRect, NSMakeRect(2, 12, 94, 26)));
}

TEST(SimpleCell, WithoutATitleTheImageFillsTheButton) {
  RecordingCell *cell = drawnCell(NSImageLeft, @"");
  EXPECT_TRUE(NSEqualRects(*cell->imageRect, NSMakeRect(2, 2, 96, 26)));
  EXPECT_FALSE(cell->titleRect.has_value());
}

TEST(SimpleCell, AnImageOnlyButtonDrawsNoTitle) {
  RecordingCell *cell = drawnCell(NSImageOnly, @"Title");
  EXPECT_TRUE(NSEqualRects(*cell->imageRect, NSMakeRect(2, 2, 26, 26)));
  EXPECT_FALSE(cell->titleRect.has_value());
}

TEST(SimpleCell, ImageAndTitleAreReallyDrawn) {
  SimpleCell *cell = bareCell(@"WWWW");
  [cell setImagePosition:NSImageLeft];
  [cell setImage:blackSquare()];
  const auto isDark = [](Pixel pixel) { return pixel.red < 100; };
  const Picture picture = pictureOf(cell);
  EXPECT_GE(picture.count(NSMakeRect(12, 12, 26, 26), isDark), 16 * 16);
  EXPECT_GT(picture.count(NSMakeRect(42, 12, 60, 26), isDark), 20);
}

TEST(SimpleCell, FollowsTheMouseOverItsButton) {
  HoverWindow hover;
  hover.show();
  EXPECT_FALSE([hover.cell isHovered]);
  moveMouse(hover.button, NSMakePoint(50, 15));
  EXPECT_TRUE(hover.becomes(true));
  pumpFor(0.05);
  [hover.window displayIfNeeded];
  EXPECT_GT(Picture(hover.button).count(isHoverRing), 100);
  moveMouse(hover.container, NSMakePoint(20, 20));
  EXPECT_TRUE(hover.becomes(false));
  [hover.window displayIfNeeded];
  EXPECT_EQ(Picture(hover.button).count(isHoverRing), 0);
}

TEST(SimpleCell, FollowsTheMouseAgainAfterTheButtonWasMovedAndResized) {
  HoverWindow hover;
  hover.show();
  moveMouse(hover.button, NSMakePoint(50, 15));
  ASSERT_TRUE(hover.becomes(true));
  [hover.button setFrame:NSMakeRect(10, 10, 60, 40)];
  [hover.container setNeedsDisplay:YES];
  EXPECT_TRUE(hover.becomes(false)) << "it moved away from under the mouse";
  moveMouse(hover.button, NSMakePoint(30, 35));
  EXPECT_TRUE(hover.becomes(true));
  moveMouse(hover.container, NSMakePoint(150, 95));
  EXPECT_TRUE(hover.becomes(false));
}

TEST(SimpleCell, FollowsTheMouseAfterTheViewAroundTheButtonWasMoved) {
  HoverWindow hover;
  hover.show();
  [hover.container setFrameOrigin:NSMakePoint(0, -60)];
  [[hover.window contentView] setNeedsDisplay:YES];
  pumpFor(0.05);
  moveMouse([hover.window contentView], NSMakePoint(150, 95));
  pumpFor(0.1);
  EXPECT_FALSE([hover.cell isHovered]);
  moveMouse([hover.window contentView], NSMakePoint(150, 35));
  EXPECT_TRUE(hover.becomes(true));
}

TEST(SimpleCell, NoticesThatItsWindowOpensUnderTheMouse) {
  HoverWindow hover;
  hover.show();
  moveMouse(hover.button, NSMakePoint(50, 15));
  ASSERT_TRUE(hover.becomes(true));

  HoverWindow second;
  [second.container setFrame:[hover.container frame]];
  moveMouse(hover.button, NSMakePoint(50, 15));
  second.show();
  EXPECT_TRUE(second.becomes(true));
}

TEST(SimpleCell, ForgetsTheMouseWhenItsButtonLeavesTheWindow) {
  HoverWindow hover;
  hover.show();
  NSButton *button = [[hover.button retain] autorelease];
  [button removeFromSuperview];
  moveMouse(hover.container, NSMakePoint(150, 95));
  pumpFor(0.1);
  EXPECT_FALSE([hover.cell isHovered]);
}

TEST(SimpleCell, OutlivesItsButtonAndABindingToAnotherCell) {
  SimpleCell *cell = bareCell(@"Kept");
  @autoreleasepool {
    HoverWindow hover;
    [hover.button setCell:cell];
    hover.show();
    [hover.button setCell:bareCell<NSButtonCell>(@"Plain")];
    moveMouse(hover.button, NSMakePoint(50, 15));
    pumpFor(0.1);
    EXPECT_FALSE([cell isHovered]);
    [hover.button removeFromSuperview];
  }
  const Picture picture = pictureOf(cell);
  EXPECT_GT(picture.count(isOutline), 100);
}

TEST(SimpleCell, ClicksStillReachTheButton) {
  HoverWindow hover;
  hover.show();
  EXPECT_EQ([hover.container hitTest:NSMakePoint(150, 95)], hover.button);
}

TEST(ColorButtonCell, FillsItsFrameWithTheBackgroundColour) {
  ColorButtonCell *cell = bareCell<ColorButtonCell>(@"Title");
  [cell setBackgroundColor:[NSColor colorWithCalibratedRed:1 green:0 blue:0 alpha:1]];
  [cell setHighlighted:YES];
  const Picture picture = pictureOf(cell);
  const auto isRed = [](Pixel pixel) { return pixel == Pixel{255, 0, 0}; };
  EXPECT_EQ(picture.count(isRed), 100 * 30);
  EXPECT_EQ(picture.count(isWhite), 120 * 50 - 100 * 30);
}

TEST(ColorButtonCell, WithoutABackgroundColourFillsWithTheCurrentColour) {
  ColorButtonCell *cell = bareCell<ColorButtonCell>();
  [cell setBackgroundColor:nil];
  const Picture picture = pictureOf([cell](NSView *view) {
    [[NSColor colorWithCalibratedRed:0 green:0 blue:1 alpha:1] set];
    [cell drawWithFrame:kButtonFrame inView:view];
  });
  EXPECT_EQ(picture.count([](Pixel pixel) { return pixel == Pixel{0, 0, 255}; }), 100 * 30);
}
