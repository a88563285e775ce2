#import "Theme/GNUstep/Shapes.h"

#import "Theme/GNUstep/Palette.h"

#include <cmath>

namespace vireonix::host {
namespace {

NSBezierPath *roundedPath(NSRect rect, CGFloat radius) {
  const CGFloat fitting = MIN(radius, MIN(NSWidth(rect), NSHeight(rect)) / 2);
  return [NSBezierPath bezierPathWithRoundedRect:rect xRadius:fitting yRadius:fitting];
}

} // namespace

void fillRounded(NSRect rect, CGFloat radius, NSColor *fill) {
  if (NSIsEmptyRect(rect))
    return;
  [fill set];
  [roundedPath(rect, radius) fill];
}

void strokeRounded(NSRect rect, CGFloat radius, NSColor *line, CGFloat width) {
  const NSRect middle = NSInsetRect(rect, width / 2, width / 2);
  if (NSIsEmptyRect(middle))
    return;
  NSBezierPath *path = roundedPath(middle, MAX(radius - width / 2, 0));
  [path setLineWidth:width];
  [line set];
  [path stroke];
}

void drawBox(NSRect rect, CGFloat radius, NSColor *fill, NSColor *line) {
  fillRounded(rect, radius, fill);
  strokeRounded(rect, radius, line);
}

void drawFocusRing(NSRect rect, CGFloat radius) {
  strokeRounded(rect, radius, colour(Ink::focusRing), 2);
}

void drawChevron(NSRect rect, Direction direction, BOOL flipped, NSColor *line) {
  constexpr CGFloat kLong = 4;
  constexpr CGFloat kShort = 2;
  const NSPoint centre = NSMakePoint(NSMidX(rect), NSMidY(rect));
  const CGFloat down = flipped ? 1 : -1;
  const bool vertical = direction == Direction::down || direction == Direction::up;
  const CGFloat sign = direction == Direction::down    ? down
                       : direction == Direction::up    ? -down
                       : direction == Direction::right ? 1
                                                       : -1;
  // From one end over the tip to the other, along the axis it points to and across it.
  const auto place = [&](CGFloat along, CGFloat across) {
    return vertical ? NSMakePoint(centre.x + across, centre.y + sign * along)
                    : NSMakePoint(centre.x + sign * along, centre.y + across);
  };
  NSBezierPath *path = [NSBezierPath bezierPath];
  [path moveToPoint:place(-kShort, -kLong)];
  [path lineToPoint:place(kShort, 0)];
  [path lineToPoint:place(-kShort, kLong)];
  [path setLineWidth:1.6];
  [path setLineCapStyle:NSRoundLineCapStyle];
  [path setLineJoinStyle:NSRoundLineJoinStyle];
  [line set];
  [path stroke];
}

NSImage *chevronPicture(Direction direction, NSColor *line) {
  const NSRect bounds = NSMakeRect(0, 0, 12, 12);
  NSImage *image = [[[NSImage alloc] initWithSize:bounds.size] autorelease];
  [image lockFocus];
  drawChevron(bounds, direction, NO, line);
  [image unlockFocus];
  return image;
}

NSRect centred(NSSize size, NSRect around) {
  return NSMakeRect(std::floor(NSMidX(around) - size.width / 2),
                    std::floor(NSMidY(around) - size.height / 2), size.width, size.height);
}

} // namespace vireonix::host
