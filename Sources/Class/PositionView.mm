#import "Class/PositionView.h"

#import "Class/DetachedCall.h"
#import "Class/ObjectView.h"
#import "Class/PositionRect.h"

static const CGFloat kOutlineWidth = 1.0;
// The margins of a canvas that has no record to show yet: no room for a box.
static const float kNoBox = 50.0F;

static void strokeRect(NSRect rect, NSColor *colour) {
  NSBezierPath *path = [NSBezierPath bezierPathWithRect:rect];
  [colour set];
  [path setLineWidth:kOutlineWidth];
  [path stroke];
}

static void fillRect(NSRect rect, NSColor *colour) {
  [colour set];
  [NSBezierPath fillRect:rect];
}

static BOOL isVisible(NSRect rect) {
  const vireonix::core::Frame frame{
      static_cast<float>(NSMinX(rect)), static_cast<float>(NSMinY(rect)),
      static_cast<float>(NSWidth(rect)), static_cast<float>(NSHeight(rect))};
  return frame.visible() ? YES : NO;
}

// The event's place in its window, in the precision of `initPoint`.
static NSPoint placeOf(NSEvent *event) {
  const NSPoint point = [event locationInWindow];
  return NSMakePoint(static_cast<float>(point.x), static_cast<float>(point.y));
}

@implementation PositionView

@synthesize ower;
@synthesize fillColor;
@synthesize outlineColor;

- (id)initWithFrame:(NSRect)frame {
  self = [super initWithFrame:frame];
  if (self == nil)
    return nil;
  positionRect = [[PositionRect alloc] init];
  [positionRect setPosition:{kNoBox, kNoBox, kNoBox, kNoBox, 0, 0}];
  objectView = [[ObjectView alloc] initWithFrame:NSZeroRect];
  [objectView setOwer:self];
  return self;
}

- (void)dealloc {
  [objectView setOwer:nil];
  [objectView release];
  [positionRect release];
  [super dealloc];
}

- (void)drawRect:(NSRect)rect {
  fillRect(rect, fillColor != nil ? fillColor : [NSColor textBackgroundColor]);
  strokeRect(rect, outlineColor != nil ? outlineColor : [NSColor grayColor]);
  const NSRect box = [PositionRect getObjectFrameWith:positionRect OutlineSize:[self frame].size];
  if (!isVisible(box))
    return;
  if ([objectView isHidden]) {
    fillRect(box, [NSColor redColor]);
    strokeRect(box, [NSColor blackColor]);
  } else {
    [self placeObjectView:box];
  }
}

- (void)placeObjectView:(NSRect)frame {
  if (!NSEqualRects([objectView frame], frame)) {
    [objectView setFrame:frame];
    [[self window] invalidateCursorRectsForView:objectView];
  }
  if ([objectView superview] == nil)
    [self addSubview:objectView];
}

- (void)setLeft:(float)left
             Top:(float)top
           Right:(float)right
          Bottom:(float)bottom
    Transparency:(float)transparency
           Layer:(int32_t)layer {
  [positionRect setPosition:{left, top, right, bottom, transparency, layer}];
  [self setNeedsDisplay:YES];
}

- (void)loadPositionRect:(PositionRect *)rect {
  if (rect == nil)
    return;
  [positionRect setPosition:[rect position]];
  [self setNeedsDisplay:YES];
}

- (PositionRect *)positionRect {
  return positionRect;
}

- (void)mouseDown:(NSEvent *)event {
  if ([objectView mouseState] == kMousePressed)
    initPoint = placeOf(event);
}

- (void)mouseDragged:(NSEvent *)event {
  const NSSize page = [self frame].size;
  // On a page without an area no distance is a share of it.
  if ([objectView mouseState] != kMouseDragging || page.width <= 0 || page.height <= 0)
    return;
  const NSPoint point = placeOf(event);
  vireonix::core::Position position = [positionRect position];
  vireonix::core::drag(position, [objectView dragMode],
                       static_cast<float>((point.x - initPoint.x) * 100.0 / page.width),
                       static_cast<float>((point.y - initPoint.y) * 100.0 / page.height));
  [positionRect setPosition:position];
  [DetachedCall send:@selector(updatePositionFields) to:ower];
  initPoint = point;
  [self setNeedsDisplay:YES];
}

- (void)mouseUp:(NSEvent *)event {
  if ([objectView mouseState] == kMouseReleased)
    [objectView setMouseState:kMouseIdle];
}

@end
