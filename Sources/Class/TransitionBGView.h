// A background that fades from white to light grey inside a rounded grey outline; named in the
// nibs. Main thread only.
#import "Class/GroupsView.h"

@interface TransitionBGView : NSView <DrawnAsAWhole>

- (instancetype)initWithFrame:(NSRect)frame;
/// Draws only on a full redraw: when the dirty rectangle has the size of the view's frame.
- (void)drawRect:(NSRect)dirtyRect;

@end
