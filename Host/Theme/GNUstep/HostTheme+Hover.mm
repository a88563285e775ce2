// The control under the mouse shows it, and the one on which the mouse is held down.
#import "Theme/GNUstep/Replacement.h"
#import "Theme/GNUstep/ThemeClass.h"

#import <AppKit/AppKit.h>

using namespace vireonix::host;

namespace {

Replacement<void, NSEvent *> sendEvent;

// What is under the mouse. The objects may be gone: they are only compared.
struct Hovered {
  NSWindow *window = nil;
  NSView *view = nil;
  NSCell *cell = nil;        // of a matrix
  NSRect place = NSZeroRect; // in the window
};

Hovered hovered;
Hovered held;

NSCell *cellOfMatrix(NSView *view, NSPoint place) {
  if (![view isKindOfClass:[NSMatrix class]])
    return nil;
  NSMatrix *matrix = static_cast<NSMatrix *>(view);
  NSInteger row = 0;
  NSInteger column = 0;
  const NSPoint inMatrix = [matrix convertPoint:place fromView:nil];
  const bool hit = [matrix getRow:&row column:&column forPoint:inMatrix];
  return hit ? [matrix cellAtRow:row column:column] : nil;
}

Hovered under(NSWindow *window, NSPoint place) {
  NSView *view = [[[window contentView] superview] hitTest:place];
  // A field that is being edited holds its editor.
  while (view != nil && ![view isKindOfClass:[NSControl class]])
    view = [view superview];
  if (view == nil || [view isKindOfClass:[NSTableView class]])
    return {};
  return {.window = window,
          .view = view,
          .cell = cellOfMatrix(view, place),
          .place = [view convertRect:[view bounds] toView:nil]};
}

// By identity: a window that is gone cannot answer whether it is equal.
bool isOpen(NSWindow *window) {
  return [[NSApp windows] indexOfObjectIdenticalTo:window] != NSNotFound;
}

void redraw(const Hovered &changed) {
  if (changed.view == nil || !isOpen(changed.window))
    return;
  NSView *content = [changed.window contentView];
  [content setNeedsDisplayInRect:[content convertRect:changed.place fromView:nil]];
}

void setHovered(const Hovered &now) {
  if (now.view == hovered.view && now.cell == hovered.cell)
    return;
  const Hovered before = hovered;
  hovered = now;
  redraw(before);
  redraw(now);
}

// The toolkit follows the mouse within the call and hands out no event before it is released.
void sendMouseDown(NSWindow *window, NSEvent *event) {
  const Hovered outer = held;
  const Hovered pressed = under(window, [event locationInWindow]);
  held = pressed;
  redraw(pressed);
  [window displayIfNeeded];
  sendEvent(window, event);
  held = outer;
  redraw(pressed);
  // The mouse may have been released somewhere else.
  if (isOpen(window))
    setHovered(under(window, [window mouseLocationOutsideOfEventStream]));
}

bool isLeaving(NSEvent *event) {
  return [event type] == NSAppKitDefined && [event subtype] == GSAppKitWindowLeave;
}

void sendEventAndFollowMouse(id receiver, SEL, NSEvent *event) {
  NSWindow *window = receiver;
  if ([event type] == NSMouseMoved)
    setHovered(under(window, [event locationInWindow]));
  else if (isLeaving(event))
    setHovered({});
  if ([event type] == NSLeftMouseDown)
    sendMouseDown(window, event);
  else
    sendEvent(window, event);
}

} // namespace

bool vireonix::host::isHovered(NSCell *cell, NSView *view) {
  return view != nil && view == hovered.view && (hovered.cell == nil || hovered.cell == cell);
}

bool vireonix::host::isHeld(NSView *view) {
  return view != nil && view == held.view;
}

void vireonix::host::replaceWindowMethods() {
  sendEvent.install([NSWindow class], @selector(sendEvent:), &sendEventAndFollowMouse);
}
