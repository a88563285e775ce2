#import "Class/ObjectView.h"
#import "Class/PositionRect.h"
#import "Class/PositionView.h"
#import "support/mouse.h"
#import "support/pixels.h"
#import "support/run_loop.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>
#include <limits>

using namespace vireonix::test;
using vireonix::core::Position;

// Stands in for the controller: counts the refreshes and where they ran.
@interface RefreshCounter : NSObject {
@public
  std::atomic<int> calls;
  std::atomic<int> onMainThread;
}
- (void)updatePositionFields;
@end

@implementation RefreshCounter
- (void)updatePositionFields {
  if ([NSThread isMainThread])
    ++onMainThread;
  ++calls;
}
@end

namespace {

constexpr Pixel kWhite{255, 255, 255};
constexpr Pixel kLightGrey{170, 170, 170};
constexpr Pixel kGrey{128, 128, 128};

bool near(Pixel a, Pixel b) {
  return isNear(a, b);
}

// A canvas of 200 by 100 points at (40, 30) in a window, with a box of 120 by 40 at (20, 40).
struct CanvasWindow {
  explicit CanvasWindow(const Position &start = {10, 20, 30, 40, 70, 2}) {
    NSView *content = [[[NSView alloc] initWithFrame:NSMakeRect(0, 0, 300, 160)] autorelease];
    canvas = [[[PositionView alloc] initWithFrame:NSMakeRect(40, 30, 200, 100)] autorelease];
    [content addSubview:canvas];
    owner = [[[RefreshCounter alloc] init] autorelease];
    [canvas setOwer:owner];
    load(start);
    window = windowShowing(content);
    [window makeKeyAndOrderFront:nil];
    pumpEventsUntil([this] { return bool([window isKeyWindow]); });
    [window display];
  }
  ~CanvasWindow() {
    [canvas setOwer:nil];
    [window orderOut:nil];
  }

  void load(const Position &position) {
    PositionRect *record = [[[PositionRect alloc] init] autorelease];
    [record setPosition:position];
    [canvas loadPositionRect:record];
  }
  ObjectView *box() { return [canvas valueForKey:@"objectView"]; }
  Position position() { return [[canvas positionRect] position]; }

  void press(CGFloat x, CGFloat y) { sendMouse(canvas, NSLeftMouseDown, NSMakePoint(x, y)); }
  void dragTo(CGFloat x, CGFloat y) { sendMouse(canvas, NSLeftMouseDragged, NSMakePoint(x, y)); }
  void release(CGFloat x, CGFloat y) { sendMouse(canvas, NSLeftMouseUp, NSMakePoint(x, y)); }

  PositionView *canvas;
  RefreshCounter *owner;
  NSWindow *window;
};

} // namespace

TEST(PositionCanvas, ANewCanvasShowsTheEmptyPage) {
  PositionView *canvas =
      [[[PositionView alloc] initWithFrame:NSMakeRect(0, 0, 200, 100)] autorelease];
  EXPECT_EQ([[canvas positionRect] position], (Position{50, 50, 50, 50, 0, 0}));
  NSWindow *window = windowShowing(canvas);
  EXPECT_EQ([[canvas subviews] count], 0U);
  const Picture picture(canvas);
  EXPECT_EQ(picture.count(NSMakeRect(2, 2, 196, 96), [](Pixel p) { return p == kWhite; }),
            196 * 96);
  EXPECT_FALSE(near(picture.at(100, 0), kWhite)) << "the page has an outline";
  [window orderOut:nil];
}

TEST(PositionCanvas, ItsFieldsAreReachedByTheirNames) {
  CanvasWindow test;
  EXPECT_EQ([test.canvas valueForKey:@"positionRect"], [test.canvas positionRect]);
  EXPECT_EQ([test.canvas valueForKey:@"ower"], test.owner);
  EXPECT_EQ([test.canvas valueForKey:@"fillColor"], nil);
  EXPECT_EQ([test.canvas valueForKey:@"outlineColor"], nil);
  EXPECT_EQ([test.box() valueForKey:@"ower"], test.canvas);
  EXPECT_EQ([[test.box() valueForKey:@"mouseState"] intValue], kMouseIdle);
  EXPECT_EQ([[test.box() valueForKey:@"dragMode"] intValue], 0);
  test.press(80, 60);
  EXPECT_TRUE(NSEqualPoints([[test.canvas valueForKey:@"initPoint"] pointValue],
                            [test.canvas convertPoint:NSMakePoint(80, 60) toView:nil]));
  NSColor *red = [NSColor redColor];
  const NSUInteger references = [red retainCount];
  [test.canvas setFillColor:red];
  [test.canvas setOutlineColor:red];
  [test.box() setFillColor:red];
  [test.box() setOutlineColor:red];
  EXPECT_EQ([red retainCount], references);
}

TEST(PositionCanvas, TheBoxIsDrawnWhereTheRecordSays) {
  CanvasWindow test;
  EXPECT_TRUE(NSEqualRects([test.box() frame], NSMakeRect(20, 40, 120, 40)));
  EXPECT_EQ([test.box() superview], test.canvas);
  const Picture picture(test.canvas);
  EXPECT_TRUE(near(picture.at(80, 40), kLightGrey)) << "inside";
  EXPECT_TRUE(near(picture.at(22, 40), kGrey)) << "frame";
  EXPECT_TRUE(near(picture.at(80, 57), kGrey)) << "frame";
  EXPECT_TRUE(near(picture.at(26, 40), kLightGrey)) << "the frame is five points wide";
  EXPECT_TRUE(near(picture.at(150, 40), kWhite)) << "page";
}

TEST(PositionCanvas, TheColoursOfThePageCanBeSet) {
  CanvasWindow test;
  [test.canvas setFillColor:[NSColor greenColor]];
  [test.canvas setOutlineColor:[NSColor blueColor]];
  [test.canvas display];
  const Picture picture(test.canvas);
  EXPECT_TRUE(near(picture.at(180, 20), {0, 255, 0}));
  EXPECT_GT(picture.at(180, 0).blue, 100);
  [test.canvas setFillColor:nil];
  [test.canvas setOutlineColor:nil];
}

TEST(PositionCanvas, AHiddenBoxIsDrawnInRed) {
  CanvasWindow test;
  [test.box() setHidden:YES];
  test.load({20, 20, 30, 40, 0, 0});
  [test.canvas display];
  const Picture picture(test.canvas);
  EXPECT_TRUE(near(picture.at(80, 40), {255, 0, 0}));
  EXPECT_LT(picture.at(40, 40).red, 200) << "a black outline";
  EXPECT_TRUE(NSEqualRects([test.box() frame], NSMakeRect(20, 40, 120, 40)));
}

TEST(PositionCanvas, ABoxWithoutAreaStaysWhereItWas) {
  CanvasWindow test;
  const float huge = std::numeric_limits<float>::max();
  const float infinite = std::numeric_limits<float>::infinity();
  const std::array<Position, 7> invisible = {{{60, 0, 50, 0, 0, 0},
                                              {0, 50, 0, 50, 0, 0},
                                              {150, 0, 0, 0, 0, 0},
                                              {-huge, 0, 0, 0, 0, 0},
                                              {huge, huge, huge, huge, 0, 0},
                                              {-infinite, infinite, 0, 0, 0, 0},
                                              {std::nanf(""), 0, 0, 0, 0, 0}}};
  for (const Position &position : invisible) {
    test.load(position);
    [test.canvas display];
    EXPECT_TRUE(NSEqualRects([test.box() frame], NSMakeRect(20, 40, 120, 40)));
    EXPECT_FALSE([test.box() isHidden]);
  }
  for (const float margin : {-5.0F, -1e6F}) {
    test.load({margin, margin, 0, 0, 0, 0});
    [test.canvas display];
    EXPECT_TRUE(near(Picture(test.canvas).at(100, 50), kLightGrey)) << margin;
  }
}

TEST(PositionCanvas, ItDrawsAtAnySize) {
  CanvasWindow test;
  for (const NSSize size : {NSMakeSize(100, 60), NSMakeSize(250, 120), NSMakeSize(1, 1),
                            NSMakeSize(0, 0), NSMakeSize(200, 100)}) {
    [test.canvas setFrameSize:size];
    [test.canvas display];
    if (size.width > 1) {
      const NSRect frame = [test.box() frame];
      EXPECT_NEAR(NSMinX(frame), size.width * 0.1, 1e-4);
      EXPECT_NEAR(NSHeight(frame), size.height * 0.4, 1e-4);
    }
  }
}

TEST(PositionCanvas, SettingTheSixValuesStoresThemAndRedraws) {
  CanvasWindow test;
  [test.canvas setLeft:1 Top:2 Right:3 Bottom:4 Transparency:5 Layer:6];
  EXPECT_EQ(test.position(), (Position{1, 2, 3, 4, 5, 6}));
  EXPECT_TRUE([test.canvas needsDisplay]);
}

TEST(PositionCanvas, LoadingCopiesTheRecord) {
  CanvasWindow test;
  PositionRect *own = [test.canvas positionRect];
  PositionRect *other = [[[PositionRect alloc] init] autorelease];
  [other setPosition:{1, 2, 3, 4, 5, 6}];
  [test.canvas loadPositionRect:other];
  EXPECT_TRUE([test.canvas needsDisplay]);
  [other setLeft:99];
  EXPECT_EQ([test.canvas positionRect], own);
  EXPECT_EQ(test.position(), (Position{1, 2, 3, 4, 5, 6}));
  [test.canvas loadPositionRect:nil];
  EXPECT_EQ(test.position(), (Position{1, 2, 3, 4, 5, 6}));
}

TEST(PositionCanvas, DraggingTheInsideMovesTheBox) {
  CanvasWindow test;
  test.press(80, 60);
  EXPECT_EQ([test.box() mouseState], kMousePressed);
  EXPECT_EQ([test.box() dragMode], 0);
  test.dragTo(90, 65);
  EXPECT_EQ([test.box() mouseState], kMouseDragging);
  EXPECT_EQ(test.position(), (Position{15, 15, 25, 45, 70, 2}));
  EXPECT_TRUE([test.canvas needsDisplay]);
  [test.canvas display];
  EXPECT_TRUE(NSEqualRects([test.box() frame], NSMakeRect(30, 45, 120, 40)));
  test.dragTo(70, 60);
  EXPECT_EQ(test.position(), (Position{5, 20, 35, 40, 70, 2}));
  test.release(70, 60);
  EXPECT_EQ([test.box() mouseState], kMouseIdle);
  EXPECT_EQ(test.position(), (Position{5, 20, 35, 40, 70, 2}));
}

TEST(PositionCanvas, AMovedBoxStopsAtThePage) {
  CanvasWindow test;
  test.press(80, 60);
  test.dragTo(-500, 60);
  EXPECT_EQ(test.position(), (Position{0, 20, 40, 40, 70, 2}));
  test.dragTo(500, 600);
  EXPECT_EQ(test.position(), (Position{40, 0, 0, 60, 70, 2}));
}

TEST(PositionCanvas, EachEdgeAndCornerResizes) {
  struct Row {
    NSPoint press;
    int32_t mode;
    Position after;
  };
  // Each drag goes ten points (5 percent) to the right and ten (10 percent) up.
  const std::array<Row, 8> rows = {{
      {NSMakePoint(22, 60), 1, {15, 20, 30, 40, 70, 2}},
      {NSMakePoint(138, 60), 4, {10, 20, 25, 40, 70, 2}},
      {NSMakePoint(80, 42), 8, {10, 20, 30, 50, 70, 2}},
      {NSMakePoint(80, 78), 2, {10, 10, 30, 40, 70, 2}},
      {NSMakePoint(22, 42), 9, {15, 20, 30, 50, 70, 2}},
      {NSMakePoint(22, 78), 3, {15, 10, 30, 40, 70, 2}},
      {NSMakePoint(138, 42), 12, {10, 20, 25, 50, 70, 2}},
      {NSMakePoint(138, 78), 6, {10, 10, 25, 40, 70, 2}},
  }};
  for (const Row &row : rows) {
    CanvasWindow test;
    test.press(row.press.x, row.press.y);
    EXPECT_EQ([test.box() dragMode], row.mode);
    test.dragTo(row.press.x + 10, row.press.y + 10);
    EXPECT_EQ(test.position(), row.after) << row.mode;
    test.release(row.press.x + 10, row.press.y + 10);
  }
}

TEST(PositionCanvas, TheZoneOfAnEdgeEndsBeforeTenPoints) {
  CanvasWindow test;
  test.press(30, 60);
  EXPECT_EQ([test.box() dragMode], 0);
  test.release(30, 60);
  test.press(29.9, 60);
  EXPECT_EQ([test.box() dragMode], 1);
  test.release(29.9, 60);
  test.press(130, 70);
  EXPECT_EQ([test.box() dragMode], 0);
  test.release(130, 70);
  test.press(130.1, 70.1);
  EXPECT_EQ([test.box() dragMode], 6);
}

TEST(PositionCanvas, AnEdgeKeepsItsModeForTheWholeGesture) {
  CanvasWindow test;
  test.press(22, 60);
  test.dragTo(400, 60);
  EXPECT_EQ(test.position(), (Position{50, 20, 30, 40, 70, 2}));
  test.dragTo(0, 60);
  EXPECT_EQ([test.box() dragMode], 1);
  EXPECT_EQ(test.position(), (Position{0, 20, 30, 40, 70, 2}));
}

TEST(PositionCanvas, ADragThatStartsOnThePageChangesNothing) {
  CanvasWindow test;
  test.press(180, 10);
  test.dragTo(100, 50);
  test.release(100, 50);
  EXPECT_EQ(test.position(), (Position{10, 20, 30, 40, 70, 2}));
  EXPECT_EQ([test.box() mouseState], kMouseIdle);
  EXPECT_EQ(test.owner->calls.load(), 0);
}

TEST(PositionCanvas, ACanvasWithoutAreaIgnoresDrags) {
  CanvasWindow test;
  test.press(80, 60);
  [test.canvas setFrameSize:NSMakeSize(0, 0)];
  [test.box() mouseDragged:[NSEvent mouseEventWithType:NSLeftMouseDragged location:NSMakePoint(0, 0)
                                         modifierFlags:0
                                             timestamp:0
                                          windowNumber:[test.window windowNumber]
                                               context:nil
                                           eventNumber:0
                                            clickCount:1
                                              pressure:1]];
  EXPECT_EQ(test.position(), (Position{10, 20, 30, 40, 70, 2}));
}

TEST(PositionCanvas, EachDragStepRefreshesTheFieldsOnceOnAThreadOfItsOwn) {
  CanvasWindow test;
  test.press(80, 60);
  for (int step = 1; step <= 20; ++step)
    test.dragTo(80 + step, 60);
  test.release(100, 60);
  EXPECT_TRUE(pumpUntil([&] { return test.owner->calls.load() == 20; }));
  pumpFor(0.1);
  EXPECT_EQ(test.owner->calls.load(), 20);
  EXPECT_EQ(test.owner->onMainThread.load(), 0);
}

TEST(PositionCanvas, WithoutAnOwnerADragStillMovesTheBox) {
  CanvasWindow test;
  [test.canvas setOwer:nil];
  test.press(80, 60);
  test.dragTo(90, 60);
  EXPECT_EQ(test.position().left, 15);
}

TEST(PositionCanvas, TheMarginsStayWithinThePageThroughRandomDrags) {
  CanvasWindow test;
  [test.canvas setOwer:nil];
  std::srand(7);
  for (int gesture = 0; gesture < 200; ++gesture) {
    const NSRect box = [test.box() frame];
    const int width = std::max(1, static_cast<int>(NSWidth(box)));
    const int height = std::max(1, static_cast<int>(NSHeight(box)));
    const NSPoint start =
        NSMakePoint(NSMinX(box) + std::rand() % width, NSMinY(box) + std::rand() % height);
    test.press(start.x, start.y);
    for (int step = 0; step < 5; ++step) {
      test.dragTo(std::rand() % 300 - 50, std::rand() % 200 - 50);
      const Position now = test.position();
      for (const float margin : {now.left, now.top, now.right, now.bottom}) {
        EXPECT_GE(margin, 0);
        EXPECT_LE(margin, 100);
      }
    }
    test.release(0, 0);
    [test.canvas display];
  }
}

TEST(PositionCanvas, TheRealMouseMovesAndResizesTheBox) {
  CanvasWindow test;
  ASSERT_TRUE(pumpUntilReachable(test.window));
  moveMouse(test.canvas, NSMakePoint(80, 60));
  pressMouse();
  ASSERT_TRUE(pumpEventsUntil([&] { return [test.box() mouseState] == kMousePressed; }));
  moveMouse(test.canvas, NSMakePoint(100, 60));
  ASSERT_TRUE(pumpEventsUntil([&] { return test.position().left > 19; }));
  releaseMouse();
  ASSERT_TRUE(pumpEventsUntil([&] { return [test.box() mouseState] == kMouseIdle; }));
  EXPECT_EQ(test.position(), (Position{20, 20, 20, 40, 70, 2}));
  EXPECT_TRUE(pumpEventsUntil([&] { return NSMinX([test.box() frame]) == 40; })) << "it is redrawn";

  moveMouse(test.canvas, NSMakePoint(157, 60));
  pressMouse();
  ASSERT_TRUE(pumpEventsUntil([&] { return [test.box() mouseState] == kMousePressed; }));
  EXPECT_EQ([test.box() dragMode], 4);
  moveMouse(test.canvas, NSMakePoint(137, 60));
  ASSERT_TRUE(pumpEventsUntil([&] { return test.position().right > 29; }));
  releaseMouse();
  ASSERT_TRUE(pumpEventsUntil([&] { return [test.box() mouseState] == kMouseIdle; }));
  EXPECT_EQ(test.position(), (Position{20, 20, 30, 40, 70, 2}));
  moveMouseAway();
}
