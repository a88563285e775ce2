#import "Class/RoundedFrame.h"

namespace vireonix {
namespace {

constexpr CGFloat kCornerRadius = 4.0;
constexpr CGFloat kGradientAlpha = 0.5;

NSColor *translucentGrey(float grey) {
  return [NSColor colorWithCalibratedRed:grey green:grey blue:grey alpha:kGradientAlpha];
}

} // namespace

bool coversWholeView(NSRect dirtyRect, NSView *view) {
  return view != nil && NSEqualSizes(dirtyRect.size, [view frame].size);
}

void strokeRoundedFrame(NSRect rect, NSColor *colour, CGFloat lineWidth) {
  NSBezierPath *path = [NSBezierPath bezierPathWithRoundedRect:rect xRadius:kCornerRadius
                                                       yRadius:kCornerRadius];
  [path setLineWidth:lineWidth];
  [colour set];
  [path stroke];
}

void fillGreyGradient(NSRect rect, float startGrey, float endGrey, CGFloat angle) {
  NSGradient *gradient = [[NSGradient alloc] initWithStartingColor:translucentGrey(startGrey)
                                                       endingColor:translucentGrey(endGrey)];
  [NSGraphicsContext saveGraphicsState];
  [gradient drawInRect:rect angle:angle];
  [NSGraphicsContext restoreGraphicsState];
  [gradient release];
}

} // namespace vireonix
