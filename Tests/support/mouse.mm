#import "support/mouse.h"

#include <cstdlib>
#include <stdexcept>
#include <string>

namespace vireonix::test {
namespace {

void moveMouse(int x, int y) {
  const std::string command = "xdotool mousemove " + std::to_string(x) + " " + std::to_string(y);
  if (std::system(command.c_str()) != 0)
    throw std::runtime_error("failed: " + command);
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

} // namespace vireonix::test
