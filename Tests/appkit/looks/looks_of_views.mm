#import "appkit/looks/looks_of_views.h"

#import "support/mouse.h"
#import "support/run_loop.h"

#include <memory>

using namespace vireonix::test;

/// Looks at a view while the mouse is held down on it, in the loop that follows the mouse.
@interface HeldLook : NSObject {
  NSView *view;
  std::unique_ptr<Picture> before;
  int turns;
@public
  int changed;
  bool over;
}
- (id)initWithView:(NSView *)held;
- (void)look:(NSTimer *)timer;
@end

@implementation HeldLook

- (id)initWithView:(NSView *)held {
  if ((self = [super init])) {
    view = held;
    before = std::make_unique<Picture>(shownBy(view));
  }
  return self;
}

- (void)look:(NSTimer *)timer {
  constexpr int kMostTurns = 20;
  constexpr int kNoise = 8;
  changed = changedPixels(*before, shownBy(view));
  if (changed <= kNoise && ++turns < kMostTurns)
    return;
  [timer invalidate];
  moveMouse([[view window] contentView], NSMakePoint(3, 3));
  releaseMouse();
  over = true;
}

@end

namespace vireonix::test {

int changedPixels(const Picture &a, const Picture &b) {
  int changed = 0;
  for (int y = 0; y < a.height(); ++y)
    for (int x = 0; x < a.width(); ++x)
      changed += a.at(x, y) == b.at(x, y) ? 0 : 1;
  return changed;
}

Picture shownBy(NSView *view) {
  [[view window] displayIfNeeded];
  return Picture(view);
}

bool comesToDiffer(NSView *view, const Picture &before) {
  return pumpEventsUntil([&] { return changedPixels(before, shownBy(view)) > 8; }, 3);
}

bool comesToLookLike(NSView *view, const Picture &before) {
  return pumpEventsUntil([&] { return changedPixels(before, shownBy(view)) == 0; }, 3);
}

NSPoint middle(NSView *view) {
  return NSMakePoint(NSMidX([view bounds]), NSMidY([view bounds]));
}

void moveOntoGround(NSWindow *window) {
  moveMouse([window contentView], NSMakePoint(3, 3));
  pumpEventsFor(0.2);
}

int pixelsChangedByPressing(NSView *view, NSPoint place) {
  moveMouse(view, place);
  pumpEventsFor(0.3);
  HeldLook *look = [[[HeldLook alloc] initWithView:view] autorelease];
  NSTimer *timer = [NSTimer timerWithTimeInterval:0.1 target:look selector:@selector(look:)
                                         userInfo:nil
                                          repeats:YES];
  for (NSString *mode in @[ NSDefaultRunLoopMode, NSEventTrackingRunLoopMode ])
    [[NSRunLoop currentRunLoop] addTimer:timer forMode:mode];
  pressMouse();
  pumpEventsUntil([&] { return look->over; }, 5);
  pumpEventsFor(0.2);
  return look->changed;
}

} // namespace vireonix::test
