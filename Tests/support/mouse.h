// Moves the display's real pointer.
#pragma once

#import <AppKit/AppKit.h>

namespace vireonix::test {

/// Moves the pointer to a place in a view's coordinates.
void moveMouse(NSView *view, NSPoint place);

/// Moves the pointer to the display's top left corner.
void moveMouseAway();

} // namespace vireonix::test
