#import "Class/RoundView.h"

#import "Class/RoundedFrame.h"

@implementation RoundView

- (instancetype)initWithFrame:(NSRect)frame {
  return [super initWithFrame:frame];
}

- (BOOL)isDrawnAsAWhole {
  return YES;
}

- (void)drawRect:(NSRect)dirtyRect {
  if (vireonix::coversWholeView(dirtyRect, self))
    vireonix::strokeRoundedFrame(dirtyRect, [NSColor grayColor], 1.0);
}

@end
