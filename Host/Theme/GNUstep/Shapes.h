// The few shapes that the theme's controls are made of. For use inside a drawing call.
#pragma once

#import <AppKit/AppKit.h>

namespace vireonix::host {

/// The corner radius of buttons and fields, in points.
constexpr CGFloat kControlRadius = 5;

/// Fills a rounded rectangle.
void fillRounded(NSRect rect, CGFloat radius, NSColor *fill);

/// Strokes a rounded rectangle whose line of `width` points lies inside `rect`.
void strokeRounded(NSRect rect, CGFloat radius, NSColor *line, CGFloat width = 1);

/// Both: a filled box with a line of one point.
void drawBox(NSRect rect, CGFloat radius, NSColor *fill, NSColor *line);

/// The ring that marks the control that the keyboard acts on, inside `rect`.
void drawFocusRing(NSRect rect, CGFloat radius);

enum class Direction { down, up, right, left };

/// An arrow of two strokes around the centre of `rect`. "Down" is down on the screen.
void drawChevron(NSRect rect, Direction direction, BOOL flipped, NSColor *line);

/// The same as an autoreleased picture of 12 by 12 points.
NSImage *chevronPicture(Direction direction, NSColor *line);

/// A rectangle of the given size around the centre of another, on whole points.
NSRect centred(NSSize size, NSRect around);

} // namespace vireonix::host
