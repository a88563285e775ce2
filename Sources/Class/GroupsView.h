// The settings window's ground. The frames and strips of its groups draw only as a whole, and where
// the ground is painted anew they are wiped away; so the ground is painted, and everything on it
// with it, in rectangles that hold each group's decoration whole or not at all. Named in the nib.
// Main thread only.
#import <AppKit/AppKit.h>

/// A view that draws only when it is drawn as a whole answers YES, and no other view has the
/// method. (A class can be asked for a method everywhere, for a protocol not on every runtime.)
@protocol DrawnAsAWhole
- (BOOL)isDrawnAsAWhole;
@end

@interface GroupsView : NSView

/// Covers everything with the window's background.
- (BOOL)isOpaque;
- (void)drawRect:(NSRect)dirtyRect;
/// `rect` is enlarged until no descendant that is drawn as a whole is drawn in part.
- (void)displayRectIgnoringOpacity:(NSRect)rect inContext:(NSGraphicsContext *)context;

@end
