#import "Class/GroupsView.h"

namespace {

// The larger rectangle reaches past the views' edges: rounding must not cut a view.
constexpr CGFloat kMargin = 1;

// `rect`, in the coordinates of `ground`, with those below `view` in it that it touches.
NSRect withWholeViews(NSRect rect, NSView *view, NSView *ground) {
  for (NSView *subview in [view subviews]) {
    const NSRect place = [ground convertRect:[subview bounds] fromView:subview];
    if ([subview isHidden] || !NSIntersectsRect(place, rect))
      continue;
    if ([subview respondsToSelector:@selector(isDrawnAsAWhole)])
      rect = NSUnionRect(rect, NSInsetRect(place, -kMargin, -kMargin));
    rect = withWholeViews(rect, subview, ground);
  }
  return rect;
}

} // namespace

@implementation GroupsView

- (BOOL)isOpaque {
  return YES;
}

- (void)drawRect:(NSRect)dirtyRect {
  [[[self window] backgroundColor] set];
  NSRectFill(dirtyRect);
}

- (void)displayRectIgnoringOpacity:(NSRect)rect inContext:(NSGraphicsContext *)context {
  NSRect enlarged = rect;
  do {
    rect = enlarged;
    enlarged = withWholeViews(rect, self, self);
  } while (!NSEqualRects(enlarged, rect));
  [super displayRectIgnoringOpacity:NSIntersectionRect(enlarged, [self bounds]) inContext:context];
}

@end
