// Moves and presses the display's real pointer.
#pragma once

#import <AppKit/AppKit.h>

namespace vireonix::test {

/// Moves the pointer to a place in a view's coordinates.
void moveMouse(NSView *view, NSPoint place);

/// Moves the pointer to the display's top left corner.
void moveMouseAway();

/// Presses and releases the first button where the pointer is. The application sees it when its
/// events are next handed out.
void pressMouse();
void releaseMouse();

/// Pumps events until the window manager has put the window on the display, where the pointer can
/// reach it; answers whether it has. Gives the window a title of its own.
bool pumpUntilReachable(NSWindow *window);

/// Hands a view's window a made-up event of the first button at a place in the view's coordinates,
/// as the application would.
void sendMouse(NSView *view, NSEventType type, NSPoint place);

} // namespace vireonix::test
