// A rounded grey outline around a group of controls; named in the nibs. Main thread only.
#import "Class/GroupsView.h"

@interface RoundView : NSView <DrawnAsAWhole>

- (instancetype)initWithFrame:(NSRect)frame;
/// Draws only on a full redraw: when the dirty rectangle has the size of the view's frame.
- (void)drawRect:(NSRect)dirtyRect;

@end
