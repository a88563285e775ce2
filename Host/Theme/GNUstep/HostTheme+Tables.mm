// Tables, their headers and browsers.
#import "Theme/GNUstep/Palette.h"
#import "Theme/GNUstep/Replacement.h"
#import "Theme/GNUstep/Shapes.h"
#import "Theme/GNUstep/ThemeClass.h"

#include <cmath>

using namespace vireonix::host;

// The toolkit's class for the tool tips of one view; it has no public header.
@protocol ToolTips
- (void)removeToolTipsInRect:(NSRect)rect;
@end

namespace {

// Any tool tip's rectangle lies in it.
const NSRect kEverywhere = NSMakeRect(-1e6, -1e6, 2e6, 2e6);
// Brings a title above the texts of its column.
constexpr CGFloat kHeaderMargin = 1;
constexpr CGFloat kHeaderFontSize = 12;

// The header's ground with the line below it.
void drawHeaderGround(NSRect frame, BOOL flipped) {
  [colour(Ink::header) set];
  NSRectFill(frame);
  [colour(Ink::subtleBorder) set];
  const CGFloat bottom = flipped ? NSMaxY(frame) - 1 : NSMinY(frame);
  NSRectFill(NSMakeRect(NSMinX(frame), bottom, NSWidth(frame), 1));
}

// A header is above the left edge of what it names, and no louder than a group's title.
Replacement<id, NSString *> initHeader;
id initQuietHeader(id receiver, SEL, NSString *title) {
  NSTableHeaderCell *header = initHeader(receiver, title);
  [header setAlignment:NSLeftTextAlignment];
  [header setFont:[NSFont systemFontOfSize:kHeaderFontSize]];
  return header;
}

// The last column ends where the table does, or where nothing follows.
bool isLastHeader(NSRect frame, NSView *view) {
  if (![view isKindOfClass:[NSTableHeaderView class]])
    return false;
  NSTableHeaderView *headers = static_cast<NSTableHeaderView *>(view);
  const NSInteger last = [[headers tableView] numberOfColumns] - 1;
  return last >= 0 && NSMaxX(frame) >= NSMaxX([headers headerRectOfColumn:last]);
}

// The toolkit keeps the tool tips of the columns to itself.
NSString *toolTipOfColumn(id receiver, SEL, NSView *, NSToolTipTag, NSPoint place, void *) {
  NSTableHeaderView *header = receiver;
  const NSInteger column = [header columnAtPoint:place];
  NSArray *columns = [[header tableView] tableColumns];
  return column < 0 ? nil : [[columns objectAtIndex:static_cast<NSUInteger>(column)] headerToolTip];
}

// The toolkit's own removal of all tool tips of a view passes over every second one.
Replacement<void> removeToolTips;
void removeEveryToolTip(id receiver, SEL) {
  [static_cast<id<ToolTips>>(receiver) removeToolTipsInRect:kEverywhere];
  removeToolTips(receiver);
}

Replacement<void> resetCursorRects;
void resetToolTipsToo(id receiver, SEL) {
  NSTableHeaderView *header = receiver;
  resetCursorRects(header);
  [header removeAllToolTips];
  for (NSInteger column = 0; column < [[header tableView] numberOfColumns]; ++column)
    [header addToolTipRect:[header headerRectOfColumn:column] owner:header userData:nullptr];
}

} // namespace

void vireonix::host::replaceTableMethods() {
  class_addMethod([NSTableHeaderView class], @selector(view:stringForToolTip:point:userData:),
                  reinterpret_cast<IMP>(&toolTipOfColumn), "@@:@q{_NSPoint=dd}^v");
  resetCursorRects.install([NSTableHeaderView class], @selector(resetCursorRects),
                           &resetToolTipsToo);
  removeToolTips.install(NSClassFromString(@"GSToolTips"), @selector(removeAllToolTips),
                         &removeEveryToolTip);
  initHeader.install([NSTableHeaderCell class], @selector(initTextCell:), &initQuietHeader);
}

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
  if (!isLastHeader(frame, view))
    NSRectFill(NSMakeRect(NSMaxX(frame) - 1, NSMinY(frame) + 4, 1, NSHeight(frame) - 8));
}

- (void)drawTableCornerView:(NSView *)corner withClip:(NSRect)clip {
  drawHeaderGround([corner bounds], [corner isFlipped]);
}

// The toolkit forgets whether a table wants stripes; so those with a header have them, and lists
// have not.
- (void)drawTableViewBackgroundInClipRect:(NSRect)clip
                                   inView:(NSView *)view
                      withBackgroundColor:(NSColor *)background {
  NSTableView *table = static_cast<NSTableView *>(view);
  [background set];
  NSRectFill(clip);
  const CGFloat height = NSHeight([table rectOfRow:0]);
  if ([table headerView] == nil || height <= 0)
    return;
  [colour(Ink::alternateRow) set];
  // The stripes go on below the last row.
  const CGFloat pair = 2 * height;
  CGFloat y = std::floor(NSMinY(clip) / pair) * pair + height;
  while (y < NSMaxY(clip)) {
    NSRectFill(NSIntersectionRect(NSMakeRect(NSMinX(clip), y, NSWidth(clip), height), clip));
    y += pair;
  }
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
  return [self branchImage];
}

@end
