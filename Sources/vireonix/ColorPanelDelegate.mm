#import "vireonix/ColorPanelDelegate.h"

#import "Platform/desktop.h"

@implementation ColorPanelDelegate

- (instancetype)init {
  self = [super init];
  if (self != nil)
    m_bIsClosed = NO;
  return self;
}

- (void)windowWillClose:(NSNotification *)notification {
  m_bIsClosed = YES;
  vireonix::platform::stopModalSession(NSRunStoppedResponse);
}

- (BOOL)isClosed {
  return m_bIsClosed;
}

@end
