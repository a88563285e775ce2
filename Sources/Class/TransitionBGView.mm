#import "Class/TransitionBGView.h"

#import "Class/RoundedFrame.h"

@implementation TransitionBGView

- (instancetype)initWithFrame:(NSRect)frame {
  return [super initWithFrame:frame];
}

- (BOOL)isDrawnAsAWhole {
  return YES;
}

- (void)drawRect:(NSRect)dirtyRect {
  if (!vireonix::coversWholeView(dirtyRect, self))
    return;
  vireonix::fillGreyGradient(dirtyRect, 1.0F, 0.8F, 270.0);
  vireonix::strokeRoundedFrame(dirtyRect, [NSColor grayColor], 1.0);
}

@end
