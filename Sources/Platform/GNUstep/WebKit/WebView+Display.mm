#import "WebKit/WebViewEngine.h"
#import "WebKit/WebViewPrivate.h"

@interface WebView (Display)
@end

@implementation WebView (Display)

- (BOOL)isOpaque {
  return YES;
}

- (void)drawReason {
  NSString *reason = @"Pages cannot be shown: there is no X display.";
  NSDictionary *attributes = @{NSForegroundColorAttributeName : [NSColor grayColor]};
  [reason drawInRect:NSInsetRect([self bounds], 8, 8) withAttributes:attributes];
}

- (void)drawRect:(NSRect)rect {
  [[NSColor whiteColor] set];
  NSRectFill(rect);
  if (engine_ == nil)
    return;
  if ([engine_ page] == nullptr) {
    [self drawReason];
    return;
  }
  NSBitmapImageRep *picture = [engine_ picture];
  if (picture == nil)
    return;
  // While the page follows a change of the view's size, its last picture keeps the top left corner.
  const NSSize size = [picture size];
  const NSRect place = NSMakeRect(0, NSMaxY([self bounds]) - size.height, size.width, size.height);
  [picture drawInRect:place];
}

// Without this the page would not learn that the pointer left.
- (void)trackPointer {
  if (trackingRect_ != 0)
    [self removeTrackingRect:trackingRect_];
  trackingRect_ = [self window] == nil ? 0
                                       : [self addTrackingRect:[self bounds] owner:self
                                                      userData:nullptr
                                                  assumeInside:NO];
}

- (void)setFrame:(NSRect)frame {
  [super setFrame:frame];
  [self trackPointer];
  [engine_ synchronize];
}

- (void)setFrameSize:(NSSize)size {
  [super setFrameSize:size];
  [self trackPointer];
  [engine_ synchronize];
}

- (void)setFrameOrigin:(NSPoint)origin {
  [super setFrameOrigin:origin];
  [self trackPointer];
}

- (void)viewWillMoveToWindow:(NSWindow *)window {
  if (trackingRect_ != 0)
    [self removeTrackingRect:trackingRect_];
  trackingRect_ = 0;
  [super viewWillMoveToWindow:window];
}

- (void)viewDidMoveToWindow {
  [super viewDidMoveToWindow];
  [[self window] setAcceptsMouseMovedEvents:YES];
  [self trackPointer];
  if ([self window] != nil)
    [self warmUp];
  [engine_ synchronize];
}

- (void)resetCursorRects {
  // A superview may have moved this view in its window.
  [self trackPointer];
  [self addCursorRect:[self visibleRect]
               cursor:engine_ == nil ? [NSCursor arrowCursor] : [engine_ cursor]];
}

@end
