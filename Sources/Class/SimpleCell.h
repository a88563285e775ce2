// A flat push button: a thin grey outline, a light blue ring while the mouse is over it, a grey
// gradient while it is pressed. Named in the nibs as the cell of their buttons. Main thread only.
#import <AppKit/AppKit.h>

@interface SimpleCell : NSButtonCell {
  BOOL isMouseInsize; // YES while the mouse is over the cell's button
}

/// Draws the whole button. The first drawing in a control that shows this cell also starts
/// following the mouse there.
- (void)drawWithFrame:(NSRect)cellFrame inView:(NSView *)controlView;
- (void)mouseEntered:(NSEvent *)event;
- (void)mouseExited:(NSEvent *)event;
/// Whether the mouse is over the cell's button.
- (BOOL)isHovered;

@end
