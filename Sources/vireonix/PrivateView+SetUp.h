// What the content editor's files share among themselves. Only they include this.
#import "vireonix/PrivateView.h"

@interface PrivateView (SetUp)

/// Reads the workspace's document into the tables' lists, and its style definitions.
- (void)readWorkspaceDocument;

/// The selected slide's record, or nil.
- (NSMutableDictionary *)selectedSlide;

/// The selected caption's record, or nil.
- (NSMutableDictionary *)selectedTextObject;

/// Makes the caption list that of the selected slide, when a change of the selection has not been
/// told yet.
- (void)catchUpWithSelection;

@end
