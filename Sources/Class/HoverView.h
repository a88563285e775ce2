// Follows the mouse over a button on behalf of the button's cell. It is an invisible subview of the
// button, which owns it; so it lives exactly as long as the button, whatever happens to the cell.
// Main thread only.
#import <AppKit/AppKit.h>

@interface HoverView : NSView {
  NSTrackingRectTag trackingTag;
  NSRect trackedRect; // in the window's coordinates; empty when nothing is tracked
  BOOL followPending;
}

/// Makes `view` tell its cell `mouseEntered:` and `mouseExited:` from now on. Does nothing when
/// `cell` is not the cell of the control `view`, and when the view does so already. To be called
/// whenever the cell is drawn.
+ (void)followMouseOverCell:(NSCell *)cell inView:(NSView *)view;

@end
