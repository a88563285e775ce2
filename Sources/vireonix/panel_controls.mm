#import "vireonix/panel_controls.h"

#import "Class/FieldText.h"
#import "Class/Mode/UtilityFunction.h"
#import "Class/TableViewProtocol.h"
#import "Platform/desktop.h"

#include <algorithm>
#include <cmath>

namespace vireonix {

namespace {

constexpr CGFloat kLeastColumnWidth = 100;
constexpr NSInteger kMostVisibleItems = 12;

bool isReady(NSTableView *table) {
  return table != nil && [table dataSource] != nil && [table numberOfColumns] > 0;
}

void removeColumns(NSTableView *table) {
  NSArray *columns = [NSArray arrayWithArray:[table tableColumns]];
  for (NSTableColumn *column in [columns reverseObjectEnumerator])
    [table removeTableColumn:column];
}

void addColumns(NSTableView *table, CGFloat tableWidth, NSArray *keys, NSDictionary *titles) {
  const CGFloat width =
      std::max(kLeastColumnWidth, tableWidth / static_cast<CGFloat>([keys count]));
  for (NSUInteger i = 0; i < [keys count]; ++i) {
    NSString *identifier = [NSString stringWithFormat:@"%i", static_cast<int>(i)];
    NSTableColumn *column = [[[NSTableColumn alloc] initWithIdentifier:identifier] autorelease];
    NSString *title = [titles objectForKey:[keys objectAtIndex:i]];
    [column setWidth:width];
    [[column headerCell] setStringValue:title != nil ? title : @""];
    [column setHeaderToolTip:title];
    [[column headerCell] setLineBreakMode:NSLineBreakByTruncatingTail];
    [[column dataCell] setLineBreakMode:NSLineBreakByTruncatingTail];
    [column setResizingMask:NSTableColumnAutoresizingMask | NSTableColumnUserResizingMask];
    [table addTableColumn:column];
  }
}

} // namespace

NSInteger selectedRow(NSTableView *table, TableViewProtocol *protocol) {
  const NSInteger row = table != nil ? [table selectedRow] : -1;
  return row >= 0 && row < static_cast<NSInteger>([[protocol list] count]) ? row : -1;
}

void reloadTable(NSTableView *table) {
  if (isReady(table))
    [table reloadData];
}

void deselectRows(NSTableView *table) {
  if (isReady(table))
    [table deselectAll:nil];
}

void selectRow(NSTableView *table, NSInteger row) {
  if (isReady(table))
    [table selectRowIndexes:[NSIndexSet indexSetWithIndex:static_cast<NSUInteger>(row)]
        byExtendingSelection:NO];
}

void buildColumns(NSTableView *table, TableViewProtocol *protocol) {
  if (table == nil)
    return;
  // Before the columns go: a table may shrink with them.
  const CGFloat tableWidth = NSWidth([table frame]);
  removeColumns(table);
  if ([[protocol getKeys] count] > 0)
    addColumns(table, tableWidth, [protocol getKeys], [protocol getTitles]);
  [table setColumnAutoresizingStyle:NSTableViewLastColumnOnlyAutoresizingStyle];
  [table setAllowsColumnSelection:NO];
  platform::showSolidGrid(table);
  if (protocol != nil) {
    [table setDelegate:protocol];
    [table setDataSource:protocol];
  }
  deselectRows(table);
}

void fillWithOnlyColumn(NSTableView *table) {
  if (!isReady(table) || [table numberOfColumns] != 1)
    return;
  NSTableColumn *column = [[table tableColumns] objectAtIndex:0];
  const CGFloat missing = NSWidth([[table superview] bounds]) - NSMaxX([table rectOfColumn:0]);
  if (std::abs(missing) >= 1)
    [column setWidth:std::max(kLeastColumnWidth, [column width] + missing)];
}

void selectComboItem(NSComboBox *combo, NSInteger index) {
  const NSInteger count = [combo numberOfItems];
  if (count == 0)
    return;
  const NSInteger item = index >= 0 && index < count ? index : 0;
  [combo selectItemAtIndex:item];
  showTextInField(combo, [[combo itemObjectValueAtIndex:item] description]);
}

void showAllItems(NSComboBox *combo) {
  [combo setNumberOfVisibleItems:std::min([combo numberOfItems], kMostVisibleItems)];
}

NSString *colorTextOfButton(NSButton *button) {
  return [[UtilityFunction colorToHexRGB:[[button cell] backgroundColor]]
      stringByReplacingOccurrencesOfString:@"0x"
                                withString:@"#"];
}

NSColor *colorOfText(NSString *text) {
  NSString *number = [text stringByReplacingOccurrencesOfString:@"#" withString:@"0x"];
  NSColor *color = [UtilityFunction colorFromHexRGB:number];
  return color != nil ? color : [NSColor blackColor];
}

void setButtonUsable(NSButton *button, BOOL isUsable) {
  [button setTransparent:!isUsable];
  [button setEnabled:isUsable];
}

} // namespace vireonix
