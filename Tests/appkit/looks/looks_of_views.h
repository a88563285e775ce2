// Compares what a view shows now with what it showed before; follows the display's real mouse.
#pragma once

#import "appkit/looks/shown_window.h"
#import "support/pixels.h"

namespace vireonix::test {

/// How many pixels of two pictures of one view differ.
int changedPixels(const Picture &a, const Picture &b);

/// What a view shows once it has drawn all that is to be drawn.
Picture shownBy(NSView *view);

/// Waits until a view looks different from a picture of it, or as in the picture.
bool comesToDiffer(NSView *view, const Picture &before);
bool comesToLookLike(NSView *view, const Picture &before);

/// The middle of a view, in its coordinates.
NSPoint middle(NSView *view);

/// Moves the mouse onto a window's ground, in its lower left corner, beside its controls.
void moveOntoGround(NSWindow *window);

/// Moves the mouse to a place of a view, presses it there for as long as it takes the view to look
/// otherwise (two seconds at most), and releases it on the window's ground, so that nothing is
/// chosen. Answers how many pixels changed between the hovered view and the pressed one.
int pixelsChangedByPressing(NSView *view, NSPoint place);

} // namespace vireonix::test
