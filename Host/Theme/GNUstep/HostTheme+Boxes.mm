// Borders: group boxes, scroll views, panels and colour wells.
#import "Theme/GNUstep/Palette.h"
#import "Theme/GNUstep/Shapes.h"
#import "Theme/GNUstep/ThemeClass.h"

using namespace vireonix::host;

namespace {

NSRect frameLine(NSRect border) {
  [colour(Ink::border) set];
  NSFrameRect(border);
  return NSInsetRect(border, 1, 1);
}

void drawBoxTitle(NSBox *box, bool onBorder) {
  if ([box titlePosition] == NSNoTitle)
    return;
  if (onBorder) {
    [[[box window] backgroundColor] set];
    NSRectFill([box titleRect]);
  }
  [[box titleCell] drawWithFrame:[box titleRect] inView:box];
}

} // namespace

@interface HostTheme (Boxes)
@end

@implementation HostTheme (Boxes)

- (NSSize)sizeForBorderType:(NSBorderType)type {
  return type == NSNoBorder ? NSZeroSize : NSMakeSize(1, 1);
}

- (void)drawBorderType:(NSBorderType)type frame:(NSRect)frame view:(NSView *)view {
  if (type == NSBezelBorder && [view isKindOfClass:[NSForm class]])
    drawBox(frame, kControlRadius, colour(Ink::field), colour(Ink::border));
  else if (type != NSNoBorder)
    frameLine(frame);
}

- (NSRect)drawWhiteBezel:(NSRect)border withClip:(NSRect)clip {
  return frameLine(border);
}

- (NSRect)drawGrayBezel:(NSRect)border withClip:(NSRect)clip {
  return frameLine(border);
}

- (NSRect)drawDarkBezel:(NSRect)border withClip:(NSRect)clip {
  return frameLine(border);
}

- (NSRect)drawLightBezel:(NSRect)border withClip:(NSRect)clip {
  return frameLine(border);
}

- (NSRect)drawGroove:(NSRect)border withClip:(NSRect)clip {
  return frameLine(border);
}

- (NSRect)drawFramePhoto:(NSRect)border withClip:(NSRect)clip {
  return frameLine(border);
}

- (NSRect)drawGradientBorder:(NSGradientType)type inRect:(NSRect)border withClip:(NSRect)clip {
  return border;
}

- (void)drawScrollViewRect:(NSRect)rect inView:(NSView *)view {
  NSScrollView *scroll = static_cast<NSScrollView *>(view);
  if ([scroll borderType] == NSNoBorder)
    return;
  frameLine([view bounds]);
  if (![[view window] isKeyWindow] || [[view window] firstResponder] != [scroll documentView])
    return;
  [colour(Ink::focusRing) set];
  NSFrameRect([view bounds]);
}

- (void)drawBoxInClipRect:(NSRect)clip
                  boxType:(NSBoxType)type
               borderType:(NSBorderType)border
                   inView:(NSBox *)box {
  if (type == NSBoxCustom) {
    [super drawBoxInClipRect:clip boxType:type borderType:border inView:box];
    return;
  }
  if (type == NSBoxSeparator) {
    [colour(Ink::subtleBorder) set];
    NSRectFill([box borderRect]);
    return;
  }
  const bool bordered = border != NSNoBorder;
  if (bordered)
    strokeRounded([box borderRect], kControlRadius + 1, colour(Ink::border));
  const NSTitlePosition position = [box titlePosition];
  drawBoxTitle(box, bordered && (position == NSAtTop || position == NSAtBottom));
}

- (NSRect)drawColorWellBorder:(NSColorWell *)well withBounds:(NSRect)bounds withClip:(NSRect)clip {
  drawBox(bounds, kControlRadius, colour(Ink::button), colour(Ink::border));
  if ([well isActive])
    drawFocusRing(bounds, kControlRadius);
  return NSInsetRect(bounds, 4, 4);
}

@end
