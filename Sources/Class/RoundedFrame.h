// What the flat controls draw in common. For use inside a drawing call, on the main thread.
#pragma once

#import <AppKit/AppKit.h>

namespace vireonix {

/// Whether a dirty rectangle has exactly the size of the view's frame. The decorative views draw
/// only then.
bool coversWholeView(NSRect dirtyRect, NSView *view);

/// Strokes `rect` with corner radii of 4 points, centred on its edges.
void strokeRoundedFrame(NSRect rect, NSColor *colour, CGFloat lineWidth);

/// Fills `rect` with a linear gradient from one calibrated grey to another, both at half opacity.
/// The angle is in degrees, anticlockwise from the x axis of the current coordinates.
void fillGreyGradient(NSRect rect, float startGrey, float endGrey, CGFloat angle);

} // namespace vireonix
