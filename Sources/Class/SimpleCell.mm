#import "Class/SimpleCell.h"

#import "Class/HoverView.h"
#import "Class/RoundedFrame.h"

@interface SimpleCell ()
- (void)drawBackgroundInFrame:(NSRect)frame;
- (NSRect)drawImageInFrame:(NSRect)frame;
- (void)drawTitleInFrame:(NSRect)frame besideImage:(NSRect)imageRect;
- (void)setHovered:(BOOL)hovered;
@end

@implementation SimpleCell

- (void)drawWithFrame:(NSRect)cellFrame inView:(NSView *)controlView {
  [self setControlView:controlView];
  [HoverView followMouseOverCell:self inView:controlView];
  if ([self isTransparent])
    return;
  [self drawBackgroundInFrame:cellFrame];
  const NSRect imageRect = [self drawImageInFrame:cellFrame];
  [self drawTitleInFrame:cellFrame besideImage:imageRect];
}

- (void)drawBackgroundInFrame:(NSRect)frame {
  if ([self isHighlighted])
    vireonix::fillGreyGradient(frame, 0.9F, 0.6F, 90.0);
  else if (isMouseInsize && [self isEnabled])
    vireonix::strokeRoundedFrame(
        frame, [NSColor colorWithCalibratedRed:0.6F green:0.8F blue:1.0F alpha:1.0F], 4.0);
  vireonix::strokeRoundedFrame(frame, [NSColor grayColor], 1.0);
}

// Answers where the image is: the zero rectangle for a cell without one.
- (NSRect)drawImageInFrame:(NSRect)frame {
  if ([self imagePosition] == NSNoImage)
    return NSZeroRect;
  NSRect imageRect = NSInsetRect(frame, 2, 2);
  if ([[self attributedTitle] length] > 0) {
    const CGFloat side = MIN(NSWidth(imageRect), NSHeight(imageRect));
    imageRect.size = NSMakeSize(side, side);
  }
  [self drawImage:[self image] withFrame:imageRect inView:[self controlView]];
  return imageRect;
}

- (void)drawTitleInFrame:(NSRect)frame besideImage:(NSRect)imageRect {
  NSAttributedString *title = [self attributedTitle];
  if ([self imagePosition] == NSImageOnly || [title length] == 0)
    return;
  // Without an image the title starts 2 points from the view's edge, wherever the frame starts.
  const NSRect titleRect = NSMakeRect(NSMaxX(imageRect) + 2, NSMinY(frame) + 2,
                                      NSWidth(frame) - NSWidth(imageRect) - 6, NSHeight(frame) - 4);
  [self drawTitle:title withFrame:titleRect inView:[self controlView]];
}

- (void)mouseEntered:(NSEvent *)event {
  [self setHovered:YES];
}

- (void)mouseExited:(NSEvent *)event {
  [self setHovered:NO];
}

- (void)setHovered:(BOOL)hovered {
  isMouseInsize = hovered;
  [[self controlView] setNeedsDisplay:YES];
}

- (BOOL)isHovered {
  return isMouseInsize;
}

@end
