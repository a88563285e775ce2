// The host's application object: it has no menus, and knows the editing keys that a menu would
// bring. Main thread only.
#import <AppKit/AppKit.h>

@interface HostApplication : NSApplication

/// Cuts, copies, pastes or selects all in the text that is being edited, for the command key with
/// X, C, V or A, in modal sessions too.
- (void)sendEvent:(NSEvent *)event;

@end
