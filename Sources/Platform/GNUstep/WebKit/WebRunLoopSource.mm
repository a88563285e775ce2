#import "WebKit/WebRunLoopSource.h"

#import "WebKit/WebViewEngine.h"

#include "WebKit/engine/glib_loop.h"

#import <AppKit/AppKit.h>

#include <cstdint>

using vireonix::platform::GlibLoop;

// The page must not make the host's own windows wait.
static const int kDispatchMilliseconds = 8;

// The engine's processes end after the last page, and need GLib's loop for that.
static const NSTimeInterval kLingerSeconds = 5;

static const NSTimeInterval kDecades = 1e9;

@implementation WebRunLoopSource

+ (WebRunLoopSource *)sharedSource {
  static WebRunLoopSource *source = nil;
  if (source == nil)
    source = [WebRunLoopSource new];
  return source;
}

- (NSArray *)modes {
  return @[ NSDefaultRunLoopMode, NSModalPanelRunLoopMode, NSEventTrackingRunLoopMode ];
}

// One timer that is set forward and back: a run loop lets go of a timer only when the timer's modes
// run, and some of these seldom do.
- (NSTimer *)linger {
  if (linger_ != nil)
    return linger_;
  linger_ = [[NSTimer alloc] initWithFireDate:[NSDate distantFuture] interval:kDecades target:self
                                     selector:@selector(stopWatching)
                                     userInfo:nil
                                      repeats:YES];
  for (NSString *mode in [self modes])
    [[NSRunLoop mainRunLoop] addTimer:linger_ forMode:mode];
  return linger_;
}

- (void)start {
  [[self linger] setFireDate:[NSDate distantFuture]];
  if (users_++ > 0 || watching_)
    return;
  watching_ = YES;
  GlibLoop::shared().open();
  // The run loop takes descriptors as pointers. NOLINTNEXTLINE(performance-no-int-to-ptr)
  descriptor_ = reinterpret_cast<void *>(intptr_t{GlibLoop::shared().descriptor()});
  for (NSString *mode in [self modes])
    [[NSRunLoop mainRunLoop] addEvent:descriptor_ type:ET_RDESC watcher:self forMode:mode];
}

- (void)stop {
  if (--users_ == 0)
    [[self linger] setFireDate:[NSDate dateWithTimeIntervalSinceNow:kLingerSeconds]];
}

- (void)stopWatching {
  if (users_ > 0 || !watching_)
    return;
  watching_ = NO;
  for (NSString *mode in [self modes])
    [[NSRunLoop mainRunLoop] removeEvent:descriptor_ type:ET_RDESC forMode:mode all:YES];
  GlibLoop::shared().close();
}

// Asked before each wait: so this is also where the pages learn what became of their views.
- (BOOL)runLoopShouldBlock:(BOOL *)shouldTrigger {
  [WebViewEngine synchronizeAll];
  *shouldTrigger = GlibLoop::shared().prepare() ? YES : NO;
  return *shouldTrigger ? NO : YES;
}

- (void)receivedEvent:(void *)data
                 type:(RunLoopEventType)type
                extra:(void *)extra
              forMode:(NSString *)mode {
  GlibLoop::shared().dispatch(kDispatchMilliseconds);
}

@end
