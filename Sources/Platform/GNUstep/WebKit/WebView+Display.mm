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

- (void)setFrameSize:(NSSize)size {
  [super setFrameSize:size];
  [engine_ synchronize];
}

- (void)viewDidMoveToWindow {
  [super viewDidMoveToWindow];
  // The page follows the pointer.
  [[self window] setAcceptsMouseMovedEvents:YES];
  [engine_ synchronize];
}

- (void)resetCursorRects {
  [self addCursorRect:[self visibleRect]
               cursor:engine_ == nil ? [NSCursor arrowCursor] : [engine_ cursor]];
}

@end
