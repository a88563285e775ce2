// One drag step on the position canvas, from the mouse event to the redrawn box, and the memory
// that many steps leave behind.
#import <AppKit/AppKit.h>

#import "Bridge/text.h"
#import "Class/PluginSettingsDelegate.h"
#import "Class/PositionRect.h"
#import "Class/PositionView.h"
#import "preview_support.h"

#include "Core/number_text.h"
#include "measure.h"

#include <cstdio>
#include <vector>

#include <unistd.h>

using namespace vireonix::bench;

namespace {

constexpr int kWarmUp = 2000;
constexpr int kTimed = 5000;
constexpr int kSteps = 100000;
// Steps between two turns of the run loop; the mouse reports no more than that at once.
constexpr int kBurst = 10;
constexpr double kTurn = 0.001;
constexpr double kMostOfAStep = 0.001;
constexpr double kMostLeftBehind = 1024; // KiB

// A real controller with the canvas and the margin fields in a window.
struct Scene {
  Scene() {
    window = [[NSWindow alloc] initWithContentRect:NSMakeRect(100, 100, 400, 300)
                                         styleMask:NSTitledWindowMask
                                           backing:NSBackingStoreBuffered
                                             defer:NO];
    controller = [[PluginSettingsDelegate alloc] initWithWindow:window];
    [controller initialParaments];
    NSView *placeholder = [[[NSView alloc] initWithFrame:NSMakeRect(20, 20, 240, 180)] autorelease];
    [[window contentView] addSubview:placeholder];
    [controller setPositionDrawView:placeholder];
    left = addField(20);
    [controller setTxtLeft:left];
    [controller setTxtTop:addField(50)];
    [controller setTxtRight:addField(80)];
    [controller setTxtBottom:addField(110)];
    [controller loadSettingsFromFile:nil];
    canvas = [controller valueForKey:@"positionView"];
    [canvas setLeft:30 Top:30 Right:30 Bottom:30 Transparency:0 Layer:0];
    [window makeKeyAndOrderFront:nil];
    [window display];
    send(NSLeftMouseDown, place(0));
  }

  NSTextField *addField(CGFloat y) const {
    NSTextField *field =
        [[[NSTextField alloc] initWithFrame:NSMakeRect(280, y, 100, 22)] autorelease];
    [[window contentView] addSubview:field];
    return field;
  }

  // To and fro across the page, from its middle.
  static NSPoint place(int step) {
    const int phase = step % 80;
    return NSMakePoint(120 + (phase < 40 ? phase : 80 - phase), 90);
  }

  void send(NSEventType type, NSPoint point) const {
    [window sendEvent:[NSEvent mouseEventWithType:type
                                         location:[canvas convertPoint:point toView:nil]
                                    modifierFlags:0
                                        timestamp:0
                                     windowNumber:[window windowNumber]
                                          context:nil
                                      eventNumber:0
                                       clickCount:1
                                         pressure:1]];
  }

  void step(int number) const {
    @autoreleasepool {
      send(NSLeftMouseDragged, place(number));
      [window displayIfNeeded];
    }
  }

  // Until the step's thread has had the fields refreshed: each step changes the left margin.
  void settle() const {
    @autoreleasepool {
      NSString *margin =
          vireonix::bridge::string(vireonix::core::oneDecimalText([[canvas positionRect] left]));
      while (![[left stringValue] isEqualToString:margin]) {
        // A view that moves posts an event that has the cursor rectangles set again, and what
        // nobody takes from the application's queue stays there.
        takeEvent(kTurn);
      }
    }
  }

  NSWindow *window;
  PluginSettingsDelegate *controller;
  PositionView *canvas;
  NSTextField *left;
};

double residentKiB() {
  long pages = 0;
  if (FILE *file = std::fopen("/proc/self/statm", "r")) {
    if (std::fscanf(file, "%*d %ld", &pages) != 1)
      pages = 0;
    std::fclose(file);
  }
  return static_cast<double>(pages) * static_cast<double>(sysconf(_SC_PAGESIZE)) / 1024;
}

} // namespace

int main() {
  @autoreleasepool {
    [NSApplication sharedApplication];
    [NSApp finishLaunching];
    const Scene scene;
    int done = 0;
    auto run = [&](int steps, std::vector<double> *times) {
      for (const int end = done + steps; done < end;) {
        const double seconds = secondsOf([&] { scene.step(done + 1); });
        if (times != nullptr)
          times->push_back(seconds);
        if (++done % kBurst == 0)
          scene.settle();
      }
    };
    run(kWarmUp, nullptr);
    std::vector<double> times;
    run(kTimed, &times);
    report({.what = "a drag step, from the event to the redrawn box",
            .reference = {},
            .limit = kMostOfAStep,
            .judged = Judged::Ours},
           times, {}, peakMemory());
    const double before = residentKiB();
    run(kSteps, nullptr);
    report("memory that 100,000 drag steps leave behind", residentKiB() - before, "KiB",
           kMostLeftBehind);
  }
  return 0;
}
