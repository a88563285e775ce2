// The tables' columns.
#import "vireonix/panel_controls.h"

#import "Class/TableViewProtocol.h"

#include <gtest/gtest.h>

#include <vector>

using vireonix::buildColumns;

namespace {

NSTableView *tableOfWidth(CGFloat width) {
  NSTableView *table =
      [[[NSTableView alloc] initWithFrame:NSMakeRect(0, 0, width, 100)] autorelease];
  for (NSString *identifier in @[ @"left over", @"too" ])
    [table addTableColumn:[[[NSTableColumn alloc] initWithIdentifier:identifier] autorelease]];
  // The columns that were added may have changed it.
  [table setFrameSize:NSMakeSize(width, 100)];
  [table setAllowsColumnSelection:YES];
  [table setDrawsGrid:NO];
  return table;
}

std::vector<double> widthsOf(NSTableView *table) {
  std::vector<double> widths;
  for (NSTableColumn *column in [table tableColumns])
    widths.push_back([column width]);
  return widths;
}

class Columns : public testing::Test {
protected:
  ~Columns() override {
    // With the table, which refers to its data source to the end.
    [pool_ release];
    [protocol_ release];
  }
  Columns() = default;
  Columns(const Columns &) = delete;
  Columns &operator=(const Columns &) = delete;

  void build(CGFloat width, NSUInteger keys) {
    NSMutableArray *names = [NSMutableArray array];
    NSMutableDictionary *titles = [NSMutableDictionary dictionary];
    for (NSUInteger i = 0; i < keys; ++i) {
      NSString *name = [NSString stringWithFormat:@"key %d", static_cast<int>(i)];
      [names addObject:name];
      [titles setObject:[@"title of " stringByAppendingString:name] forKey:name];
    }
    [protocol_ setKeys:names];
    [protocol_ setTitles:titles];
    table_ = tableOfWidth(width);
    buildColumns(table_, protocol_);
  }

  NSAutoreleasePool *pool_ = [[NSAutoreleasePool alloc] init];
  TableViewProtocol *protocol_ = [[TableViewProtocol alloc] init];
  NSTableView *table_ = nil;
};

} // namespace

TEST_F(Columns, ShareTheTablesWidthDownToAHundredPoints) {
  build(150, 1);
  EXPECT_EQ(widthsOf(table_), (std::vector<double>{150}));
  build(600, 11);
  EXPECT_EQ(widthsOf(table_), std::vector<double>(11, 100));
  build(2200, 11);
  EXPECT_EQ(widthsOf(table_), std::vector<double>(11, 200));
  build(60, 1);
  EXPECT_EQ(widthsOf(table_), (std::vector<double>{100}));
}

TEST_F(Columns, AreNumberedAndTitledAndMayBeResized) {
  build(500, 3);
  NSTableColumn *last = [[table_ tableColumns] objectAtIndex:2];
  EXPECT_TRUE([[last identifier] isEqual:@"2"]);
  EXPECT_TRUE([[[last headerCell] stringValue] isEqual:@"title of key 2"]);
  EXPECT_EQ([last resizingMask],
            static_cast<NSUInteger>(NSTableColumnAutoresizingMask | NSTableColumnUserResizingMask));
}

TEST_F(Columns, ComeWithTheTablesSettings) {
  build(500, 2);
  EXPECT_FALSE([table_ allowsColumnSelection]);
  EXPECT_TRUE([table_ drawsGrid]);
  EXPECT_EQ([table_ delegate], protocol_);
  EXPECT_EQ([table_ dataSource], protocol_);
  EXPECT_EQ([table_ selectedRow], -1);
}

TEST_F(Columns, ThatWereThereGoEvenWhenNoneComes) {
  build(500, 0);
  EXPECT_EQ([table_ numberOfColumns], 0);
  NSTableView *other = tableOfWidth(300);
  buildColumns(other, nil);
  EXPECT_EQ([other numberOfColumns], 0);
  EXPECT_EQ([other dataSource], nil);
  EXPECT_EQ([other delegate], nil);
}
