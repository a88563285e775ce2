#import "icon.h"

#include <initializer_list>

namespace vireonix::host {
namespace {

constexpr CGFloat kSide = 128;

NSColor *rgb(CGFloat red, CGFloat green, CGFloat blue) {
  return [NSColor colorWithCalibratedRed:red green:green blue:blue alpha:1];
}

void fillPolygon(NSColor *fill, std::initializer_list<NSPoint> corners) {
  NSBezierPath *path = [NSBezierPath bezierPath];
  for (const NSPoint corner : corners) {
    if ([path isEmpty])
      [path moveToPoint:corner];
    else
      [path lineToPoint:corner];
  }
  [path closePath];
  [fill set];
  [path fill];
}

void fillRounded(NSColor *fill, NSRect rect, CGFloat radius) {
  [fill set];
  [[NSBezierPath bezierPathWithRoundedRect:rect xRadius:radius yRadius:radius] fill];
}

void drawSlide() {
  fillRounded(rgb(0.98, 0.98, 1), NSMakeRect(22, 34, 84, 64), 6);
  fillRounded(rgb(0.99, 0.72, 0.32), NSMakeRect(74, 70, 18, 18), 9);
  fillPolygon(rgb(0.20, 0.55, 0.55), {{28, 42}, {54, 78}, {80, 42}});
  fillPolygon(rgb(0.13, 0.40, 0.45), {{60, 42}, {80, 64}, {100, 42}});
}

// The lower right corner of the slide, turned up.
void drawTurnedCorner(NSColor *ground) {
  fillPolygon(ground, {{84, 33}, {107, 33}, {107, 56}});
  fillPolygon(rgb(0.80, 0.85, 0.95), {{84, 34}, {106, 56}, {86, 54}});
}

void drawIcon() {
  NSColor *ground = rgb(0.18, 0.44, 0.87);
  fillRounded(ground, NSMakeRect(6, 6, kSide - 12, kSide - 12), 26);
  drawSlide();
  drawTurnedCorner(ground);
  // The dots that tell which slide it is.
  for (int dot = 0; dot < 3; ++dot)
    fillRounded(dot == 1 ? rgb(1, 1, 1) : rgb(0.62, 0.77, 0.98),
                NSMakeRect(47 + 13 * dot, 18, 8, 8), 4);
}

} // namespace

// As pixels: the window server takes no other kind of picture.
NSImage *applicationIcon() {
  const NSRect bounds = NSMakeRect(0, 0, kSide, kSide);
  NSImage *drawing = [[[NSImage alloc] initWithSize:bounds.size] autorelease];
  [drawing lockFocus];
  drawIcon();
  NSBitmapImageRep *pixels =
      [[[NSBitmapImageRep alloc] initWithFocusedViewRect:bounds] autorelease];
  [drawing unlockFocus];
  NSImage *icon = [[[NSImage alloc] initWithSize:bounds.size] autorelease];
  [icon addRepresentation:pixels];
  return icon;
}

} // namespace vireonix::host
