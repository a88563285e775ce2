#import "Class/DetachedCall.h"

#import <AppKit/AppKit.h>

NSArray *mainThreadModes() {
  return [NSArray arrayWithObjects:NSDefaultRunLoopMode, NSModalPanelRunLoopMode,
                                   NSEventTrackingRunLoopMode, nil];
}

@implementation DetachedCall

- (id)initWithTarget:(id)object selector:(SEL)method {
  self = [super init];
  if (self == nil)
    return nil;
  target = [object retain];
  selector = method;
  return self;
}

- (void)run {
  // The target leaves this pool before the main thread may give up the last reference.
  @autoreleasepool {
    [target performSelector:selector];
  }
  @autoreleasepool {
    [self performSelectorOnMainThread:@selector(releaseTarget) withObject:nil waitUntilDone:NO
                                modes:mainThreadModes()];
  }
}

- (void)releaseTarget {
  [target release];
  target = nil;
}

+ (void)send:(SEL)selector to:(id)target {
  if (target == nil)
    return;
  DetachedCall *call = [[DetachedCall alloc] initWithTarget:target selector:selector];
  @try {
    [NSThread detachNewThreadSelector:@selector(run) toTarget:call withObject:nil];
  } @catch (NSException *) {
    [call run];
  }
  [call release];
}

@end
