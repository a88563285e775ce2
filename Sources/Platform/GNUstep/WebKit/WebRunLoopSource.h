// Lets GLib's events be handled by the main run loop, in the modes in which an application lives.
#pragma once

#import <Foundation/Foundation.h>

@interface WebRunLoopSource : NSObject <RunLoopEvents> {
@private
  void *descriptor_;
  NSUInteger users_;
}

/// The one source. Main thread only.
+ (WebRunLoopSource *)sharedSource;

/// Watches from the first -start to the last -stop. GLib's loop must be open meanwhile.
- (void)start;
- (void)stop;

@end
