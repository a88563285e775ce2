#import "Class/ObjectView.h"

#include "Core/position.h"

#include <algorithm>
#include <array>

using namespace vireonix::core;

static const CGFloat kFrameWidth = 10.0;

// The pointer that says what a press moves.
static NSCursor *cursorFor(int32_t edges) {
  const bool across = (edges & (kLeftEdge | kRightEdge)) != 0;
  const bool upright = (edges & (kTopEdge | kBottomEdge)) != 0;
  if (across && upright)
    return [NSCursor crosshairCursor];
  if (across)
    return [NSCursor resizeLeftRightCursor];
  return upright ? [NSCursor resizeUpDownCursor] : [NSCursor openHandCursor];
}

// Where the zones of a side of this length begin and end: near edge, middle, far edge.
static std::array<CGFloat, 4> zoneBorders(CGFloat length) {
  const CGFloat near = std::min<CGFloat>(kGrabZone, length);
  return {0, near, std::max<CGFloat>(near, length - kGrabZone), length};
}

@implementation ObjectView

@synthesize ower;
@synthesize mouseState;
@synthesize dragMode;
@synthesize fillColor;
@synthesize outlineColor;

- (id)initWithFrame:(NSRect)frame {
  return [super initWithFrame:frame];
}

- (void)drawRect:(NSRect)rect {
  NSBezierPath *path = [NSBezierPath bezierPathWithRect:rect];
  [[NSColor lightGrayColor] set];
  [path fill];
  [[NSColor grayColor] set];
  [path setLineWidth:kFrameWidth];
  [path stroke];
}

- (BOOL)isOpaque {
  return YES;
}

- (void)resetCursorRects {
  const NSSize size = [self bounds].size;
  const auto across = zoneBorders(size.width);
  const auto upright = zoneBorders(size.height);
  for (size_t column = 0; column < 3; ++column) {
    for (size_t row = 0; row < 3; ++row) {
      const NSRect zone =
          NSMakeRect(across.at(column), upright.at(row), across.at(column + 1) - across.at(column),
                     upright.at(row + 1) - upright.at(row));
      if (!NSIsEmptyRect(zone))
        [self
            addCursorRect:zone
                   cursor:cursorFor(edgesAt(NSMidX(zone), NSMidY(zone), size.width, size.height))];
    }
  }
}

- (void)mouseDown:(NSEvent *)event {
  [self setMouseState:kMousePressed];
  const NSPoint point = [self convertPoint:[event locationInWindow] fromView:nil];
  const NSSize size = [self bounds].size;
  [self setDragMode:edgesAt(point.x, point.y, size.width, size.height)];
  [ower mouseDown:event];
}

- (void)mouseDragged:(NSEvent *)event {
  [self setMouseState:kMouseDragging];
  [ower mouseDragged:event];
}

- (void)mouseUp:(NSEvent *)event {
  [self setMouseState:kMouseReleased];
  [ower mouseUp:event];
}

@end
