// Lets GLib's events be handled by the main run loop, in the modes in which an application lives.
#pragma once

#import <Foundation/Foundation.h>

@interface WebRunLoopSource : NSObject <RunLoopEvents> {
@private
  void *descriptor_;
  NSTimer *linger_;
  NSUInteger users_;
  BOOL watching_;
}

/// The one source. Main thread only.
+ (WebRunLoopSource *)sharedSource;

/// Watches from the first -start until a few seconds after the last -stop.
- (void)start;
- (void)stop;

@end
