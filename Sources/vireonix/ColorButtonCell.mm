#import "vireonix/ColorButtonCell.h"

@implementation ColorButtonCell

- (void)drawWithFrame:(NSRect)cellFrame inView:(NSView *)controlView {
  [[self backgroundColor] set];
  NSRectFill(cellFrame);
}

@end
