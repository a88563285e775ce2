#import "support/mouse.h"

#import "support/run_loop.h"

#include <cstdlib>
#include <stdexcept>
#include <string>

namespace vireonix::test {
namespace {

void run(const std::string &command) {
  if (std::system(command.c_str()) != 0)
    throw std::runtime_error("failed: " + command);
}

void moveMouse(int x, int y) {
  run("xdotool mousemove " + std::to_string(x) + " " + std::to_string(y));
}

} // namespace

void moveMouse(NSView *view, NSPoint place) {
  const NSPoint onScreen = [[view window] convertBaseToScreen:[view convertPoint:place toView:nil]];
  const CGFloat screenHeight = NSHeight([[NSScreen mainScreen] frame]);
  moveMouse(static_cast<int>(onScreen.x), static_cast<int>(screenHeight - onScreen.y));
}

void moveMouseAway() {
  moveMouse(0, 0);
}

void pressMouse() {
  run("xdotool mousedown 1");
}

void releaseMouse() {
  run("xdotool mouseup 1");
}

bool pumpUntilReachable(NSWindow *window) {
  static int windows = 0;
  const std::string title = "reachable-" + std::to_string(++windows);
  [window setTitle:[NSString stringWithUTF8String:title.c_str()]];
  const std::string search =
      "xdotool search --onlyvisible --name '^" + title + "$' >/dev/null 2>&1";
  return pumpEventsUntil([&] { return std::system(search.c_str()) == 0; });
}

void sendMouse(NSView *view, NSEventType type, NSPoint place) {
  NSWindow *window = [view window];
  [window sendEvent:[NSEvent mouseEventWithType:type location:[view convertPoint:place toView:nil]
                                  modifierFlags:0
                                      timestamp:0
                                   windowNumber:[window windowNumber]
                                        context:nil
                                    eventNumber:0
                                     clickCount:1
                                       pressure:1]];
}

} // namespace vireonix::test
