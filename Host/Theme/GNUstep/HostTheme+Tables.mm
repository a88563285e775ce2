// Tables, their headers and browsers.
#import "Theme/GNUstep/Palette.h"
#import "Theme/GNUstep/Shapes.h"
#import "Theme/GNUstep/ThemeClass.h"

using namespace vireonix::host;

namespace {

constexpr CGFloat kHeaderMargin = 6;

// The header's ground with the line below it.
void drawHeaderGround(NSRect frame, BOOL flipped) {
  [colour(Ink::header) set];
  NSRectFill(frame);
  [colour(Ink::subtleBorder) set];
  const CGFloat bottom = flipped ? NSMaxY(frame) - 1 : NSMinY(frame);
  NSRectFill(NSMakeRect(NSMinX(frame), bottom, NSWidth(frame), 1));
}

} // namespace

@interface HostTheme (Tables)
@end

@implementation HostTheme (Tables)

- (NSColor *)tableHeaderTextColorForState:(GSThemeControlState)state {
  return colour(Ink::secondaryText);
}

- (NSRect)tableHeaderCellDrawingRectForBounds:(NSRect)bounds {
  return NSInsetRect(bounds, kHeaderMargin, 1);
}

- (void)drawTableHeaderCell:(NSTableHeaderCell *)cell
                  withFrame:(NSRect)frame
                     inView:(NSView *)view
                      state:(GSThemeControlState)state {
  drawHeaderGround(frame, [view isFlipped]);
  NSRectFill(NSMakeRect(NSMaxX(frame) - 1, NSMinY(frame) + 4, 1, NSHeight(frame) - 8));
}

- (void)drawTableCornerView:(NSView *)corner withClip:(NSRect)clip {
  drawHeaderGround([corner bounds], [corner isFlipped]);
}

- (void)highlightTableViewSelectionInClipRect:(NSRect)clip
                                       inView:(NSView *)view
                             selectingColumns:(BOOL)selectingColumns {
  NSTableView *table = static_cast<NSTableView *>(view);
  NSIndexSet *selection =
      selectingColumns ? [table selectedColumnIndexes] : [table selectedRowIndexes];
  [colour(Ink::accent) set];
  for (NSUInteger index = [selection firstIndex]; index != NSNotFound;
       index = [selection indexGreaterThanIndex:index]) {
    const NSInteger place = static_cast<NSInteger>(index);
    const NSRect rect = selectingColumns ? [table rectOfColumn:place] : [table rectOfRow:place];
    NSRectFill(NSIntersectionRect(rect, clip));
  }
}

- (void)drawBrowserHeaderCell:(NSTableHeaderCell *)cell
                    withFrame:(NSRect)rect
                       inView:(NSView *)view {
  drawHeaderGround(rect, [view isFlipped]);
}

- (NSImage *)branchImage {
  return chevronPicture(Direction::right, colour(Ink::secondaryText));
}

- (NSImage *)highlightedBranchImage {
  return chevronPicture(Direction::right, colour(Ink::accentText));
}

@end
