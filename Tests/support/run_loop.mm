#import "support/run_loop.h"

#import "support/sanitizer.h"

#import <AppKit/AppKit.h>

namespace vireonix::test {
namespace {

constexpr double kTurn = 0.01;
// Under a sanitizer everything takes several times as long.
constexpr double kPatience = kIsSanitized ? 4 : 1;

void runTurn(NSString *mode) {
  @autoreleasepool {
    NSDate *end = [NSDate dateWithTimeIntervalSinceNow:kTurn];
    // Without a source the run loop answers NO at once; wait out the turn so that a condition set
    // by another thread is seen.
    if (![[NSRunLoop currentRunLoop] runMode:mode beforeDate:end])
      [NSThread sleepUntilDate:end];
  }
}

bool repeatUntil(const std::function<bool()> &condition, double seconds,
                 const std::function<void()> &turn) {
  const NSTimeInterval end = [NSDate timeIntervalSinceReferenceDate] + seconds;
  while (!condition()) {
    if ([NSDate timeIntervalSinceReferenceDate] > end)
      return false;
    turn();
  }
  return true;
}

} // namespace

bool pumpUntil(const std::function<bool()> &condition, double seconds, NSString *mode) {
  return repeatUntil(condition, seconds * kPatience, [mode] { runTurn(mode); });
}

void pumpFor(double seconds, NSString *mode) {
  repeatUntil([] { return false; }, seconds, [mode] { runTurn(mode); });
}

void takeEvent(double seconds) {
  @autoreleasepool {
    NSEvent *event = [NSApp nextEventMatchingMask:NSAnyEventMask
                                        untilDate:[NSDate dateWithTimeIntervalSinceNow:seconds]
                                           inMode:NSDefaultRunLoopMode
                                          dequeue:YES];
    if (event != nil)
      [NSApp sendEvent:event];
  }
}

bool pumpEventsUntil(const std::function<bool()> &condition, double seconds) {
  return repeatUntil(condition, seconds * kPatience, [] { takeEvent(kTurn); });
}

void pumpEventsFor(double seconds) {
  repeatUntil([] { return false; }, seconds, [] { takeEvent(kTurn); });
}

} // namespace vireonix::test
