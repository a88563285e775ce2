// Work that leaves the main thread, and work that comes back to it, without an object of the user
// interface ever being destroyed on another thread.
#import <Foundation/Foundation.h>

/// The run-loop modes in which the main thread does what other threads hand to it: also while it
/// runs a modal session or follows the mouse.
NSArray *mainThreadModes();

@interface DetachedCall : NSObject {
  id target;
  SEL selector;
}

/// Starts a detached thread that sends `selector`, which takes no argument, to `target`. The target
/// stays alive until the thread is done with it, and that last reference is given up on the main
/// thread. Does nothing for nil. Where no thread can be started the caller's thread does the work.
+ (void)send:(SEL)selector to:(id)target;

@end
