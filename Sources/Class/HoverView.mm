#import "Class/HoverView.h"

#import "Class/DetachedCall.h"
#import "Class/SimpleCell.h"

@interface HoverView ()
- (SimpleCell *)hoverCell;
- (BOOL)isUpToDate;
- (void)followSoon;
- (void)follow;
- (void)checkMouse:(NSNotification *)notification;
- (void)stopTracking;
- (BOOL)isMouseInside;
@end

@implementation HoverView

+ (void)followMouseOverCell:(NSCell *)cell inView:(NSView *)view {
  if (![view isKindOfClass:[NSControl class]] || [static_cast<NSControl *>(view) cell] != cell)
    return;
  for (NSView *subview in [view subviews]) {
    if ([subview isKindOfClass:self]) {
      [static_cast<HoverView *>(subview) followSoon];
      return;
    }
  }
  HoverView *hoverView = [[self alloc] initWithFrame:[view bounds]];
  [hoverView setAutoresizingMask:NSViewWidthSizable | NSViewHeightSizable];
  [view addSubview:hoverView];
  [hoverView followSoon];
  [hoverView release];
}

- (SimpleCell *)hoverCell {
  NSView *control = [self superview];
  if (![control isKindOfClass:[NSControl class]])
    return nil;
  NSCell *cell = [static_cast<NSControl *>(control) cell];
  return [cell isKindOfClass:[SimpleCell class]] ? static_cast<SimpleCell *>(cell) : nil;
}

- (BOOL)isUpToDate {
  return NSEqualRects([self convertRect:[self bounds] toView:nil], trackedRect);
}

// Not now: a button that is being drawn must not change its state.
- (void)followSoon {
  if (followPending || [self isUpToDate])
    return;
  followPending = YES;
  // Not with a delay: its timer would stay in the modes that do not run.
  [self performSelectorOnMainThread:@selector(follow) withObject:nil waitUntilDone:NO
                              modes:mainThreadModes()];
}

// A tracking rectangle compares the mouse's last two places only: it does not notice that the
// button has moved under the mouse or away from it.
- (void)follow {
  followPending = NO;
  if ([self window] == nil || [self isUpToDate])
    return;
  const BOOL wasTracking = !NSIsEmptyRect(trackedRect);
  [self stopTracking];
  const BOOL inside = [self isMouseInside];
  trackingTag = [self addTrackingRect:[self bounds] owner:self userData:nullptr
                         assumeInside:inside];
  trackedRect = [self convertRect:[self bounds] toView:nil];
  if (inside)
    [self mouseEntered:nil];
  else if (wasTracking)
    [self mouseExited:nil];
}

// Nor does it notice that the window opened under the mouse.
- (void)checkMouse:(NSNotification *)notification {
  if (NSIsEmptyRect(trackedRect))
    return;
  if ([self isMouseInside])
    [self mouseEntered:nil];
  else
    [self mouseExited:nil];
}

- (void)stopTracking {
  if (NSIsEmptyRect(trackedRect))
    return;
  [self removeTrackingRect:trackingTag];
  trackedRect = NSZeroRect;
}

- (BOOL)isMouseInside {
  NSWindow *window = [self window];
  if (![window isVisible])
    return NO;
  const NSPoint place = [self convertPoint:[window mouseLocationOutsideOfEventStream] fromView:nil];
  return NSMouseInRect(place, [self visibleRect], [self isFlipped]);
}

- (void)mouseEntered:(NSEvent *)event {
  SimpleCell *cell = [self hoverCell];
  [cell setControlView:[self superview]];
  if (![cell isHovered])
    [cell mouseEntered:event];
}

- (void)mouseExited:(NSEvent *)event {
  SimpleCell *cell = [self hoverCell];
  [cell setControlView:[self superview]];
  if ([cell isHovered])
    [cell mouseExited:event];
}

- (void)viewWillMoveToWindow:(NSWindow *)window {
  NSNotificationCenter *center = [NSNotificationCenter defaultCenter];
  [self stopTracking];
  [center removeObserver:self];
  for (NSString *name in @[
         NSWindowDidExposeNotification, NSWindowDidBecomeKeyNotification,
         NSWindowDidMoveNotification
       ])
    if (window != nil)
      [center addObserver:self selector:@selector(checkMouse:) name:name object:window];
  [super viewWillMoveToWindow:window];
}

// The button receives every click.
- (NSView *)hitTest:(NSPoint)point {
  return nil;
}

- (BOOL)isFlipped {
  return [[self superview] isFlipped];
}

- (void)dealloc {
  [[NSNotificationCenter defaultCenter] removeObserver:self];
  [self stopTracking];
  [super dealloc];
}

@end
