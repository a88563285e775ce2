// The control under the mouse shows it.
#import "Theme/GNUstep/Replacement.h"
#import "Theme/GNUstep/ThemeClass.h"

#import <AppKit/AppKit.h>

using namespace vireonix::host;

namespace {

// What is under the mouse. The objects may be gone: they are only compared.
struct Hovered {
  NSWindow *window = nil;
  NSView *view = nil;
  NSCell *cell = nil;        // of a matrix
  NSRect place = NSZeroRect; // in the window
};

Hovered hovered;

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

void redraw(const Hovered &changed) {
  // By identity: a window that is gone cannot answer whether it is equal.
  if (changed.view == nil ||
      [[NSApp windows] indexOfObjectIdenticalTo:changed.window] == NSNotFound)
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

bool isLeaving(NSEvent *event) {
  return [event type] == NSAppKitDefined && [event subtype] == GSAppKitWindowLeave;
}

Replacement<void, NSEvent *> sendEvent;
void sendEventAndFollowMouse(id receiver, SEL, NSEvent *event) {
  NSWindow *window = receiver;
  if ([event type] == NSMouseMoved)
    setHovered(under(window, [event locationInWindow]));
  else if (isLeaving(event))
    setHovered({});
  sendEvent(window, event);
}

} // namespace

bool vireonix::host::isHovered(NSCell *cell, NSView *view) {
  return view != nil && view == hovered.view && (hovered.cell == nil || hovered.cell == cell);
}

void vireonix::host::replaceWindowMethods() {
  sendEvent.install([NSWindow class], @selector(sendEvent:), &sendEventAndFollowMouse);
}
