// The cell of the button that shows and chooses a text object's colour. Main thread only.
#import <AppKit/AppKit.h>

@interface ColorButtonCell : NSButtonCell

/// Fills the frame with the cell's background colour, or with the context's current fill colour
/// when it has none. Nothing else is drawn.
- (void)drawWithFrame:(NSRect)cellFrame inView:(NSView *)controlView;

@end
