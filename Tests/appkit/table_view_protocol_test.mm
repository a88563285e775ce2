#import "Class/TableViewProtocol.h"

#import "Class/XMLElement.h"
#import "support/run_loop.h"

#include <gtest/gtest.h>

using vireonix::test::pumpFor;
using vireonix::test::pumpUntil;

@interface SelectionListener : NSObject {
@public
  NSMutableArray *heard;
  NSMutableArray *selectedRows;
  BOOL isOffMainThread;
}
@end

@implementation SelectionListener
- (id)init {
  self = [super init];
  heard = [[NSMutableArray alloc] init];
  selectedRows = [[NSMutableArray alloc] init];
  return self;
}
- (void)dealloc {
  [heard release];
  [selectedRows release];
  [super dealloc];
}
- (void)tableViewSelectionDidChange:(NSNotification *)notification {
  isOffMainThread = isOffMainThread || ![NSThread isMainThread];
  [heard addObject:notification];
  if ([[notification object] isKindOfClass:[NSTableView class]])
    [selectedRows addObject:[NSNumber numberWithInteger:[[notification object] selectedRow]]];
}
@end

namespace {

NSNotification *notificationOf(NSString *name) {
  return [NSNotification notificationWithName:name object:nil];
}

XMLElement *parsed(NSString *markup) {
  return [XMLElement elementWithXMLString:markup];
}

NSTableColumn *columnOf(NSString *identifier) {
  return [[[NSTableColumn alloc] initWithIdentifier:identifier] autorelease];
}

class Records : public testing::Test {
protected:
  Records() {
    [[protocol_ list] setArray:@[ @{@"a" : @"1", @"b" : @""}, @{@"c" : @"3"} ]];
    [protocol_ setKeys:@[ @"a", @"b", @"c" ]];
  }
  ~Records() override {
    [protocol_ release];
    [pool_ release];
  }
  Records(const Records &) = delete;
  Records &operator=(const Records &) = delete;

  id value(NSString *identifier, NSInteger row) {
    return [protocol_ tableView:nil objectValueForTableColumn:columnOf(identifier) row:row];
  }

  NSAutoreleasePool *pool_ = [[NSAutoreleasePool alloc] init];
  TableViewProtocol *protocol_ = [[TableViewProtocol alloc] init];
};

class Selections : public testing::Test {
protected:
  ~Selections() override {
    [protocol_ release];
    [listener_ release];
    [pool_ release];
  }
  Selections() { [protocol_ setOwer:listener_]; }
  Selections(const Selections &) = delete;
  Selections &operator=(const Selections &) = delete;

  NSAutoreleasePool *pool_ = [[NSAutoreleasePool alloc] init];
  TableViewProtocol *protocol_ = [[TableViewProtocol alloc] init];
  SelectionListener *listener_ = [[SelectionListener alloc] init];
};

} // namespace

TEST_F(Records, AnswerTheTable) {
  EXPECT_EQ([protocol_ numberOfRowsInTableView:nil], 2);
  EXPECT_TRUE([value(@"0", 0) isEqual:@"1"]);
  EXPECT_TRUE([value(@"2", 1) isEqual:@"3"]);
  EXPECT_EQ(value(@"0", 1), nil);
  EXPECT_EQ(value(@"5", 0), nil);
  EXPECT_EQ(value(@"-1", 0), nil);
  EXPECT_EQ([protocol_ tableView:nil objectValueForTableColumn:nil row:0], nil);
  [protocol_ setList:nil];
  EXPECT_EQ([protocol_ numberOfRowsInTableView:nil], 0);
  EXPECT_EQ(value(@"0", 0), nil);
}

TEST_F(Records, GiveEachCellItsTextAndSpanNoRow) {
  NSCell *cell = [protocol_ tableView:nil dataCellForTableColumn:columnOf(@"0") row:0];
  EXPECT_TRUE([[cell stringValue] isEqualToString:@"1"]);
  EXPECT_TRUE([cell isKindOfClass:[NSTextFieldCell class]]);
  NSCell *empty = [protocol_ tableView:nil dataCellForTableColumn:columnOf(@"1") row:0];
  EXPECT_TRUE([[empty stringValue] isEqualToString:@""]);
  EXPECT_NE(empty, [protocol_ tableView:nil dataCellForTableColumn:columnOf(@"1") row:0]);
  EXPECT_EQ([protocol_ tableView:nil dataCellForTableColumn:nil row:0], nil);
}

TEST_F(Records, KeysAndTitlesAreCopiedByContents) {
  NSMutableArray *keys = [NSMutableArray arrayWithObject:@"x"];
  [protocol_ setKeys:keys];
  [keys addObject:@"y"];
  EXPECT_TRUE([[protocol_ getKeys] isEqual:@[ @"x" ]]);
  [protocol_ setKeys:[protocol_ getKeys]];
  EXPECT_TRUE([[protocol_ getKeys] isEqual:@[ @"x" ]]);
  [protocol_ setTitles:@{@"x" : @"X"}];
  [protocol_ setTitles:[protocol_ getTitles]];
  EXPECT_TRUE([[protocol_ getTitles] isEqual:@{@"x" : @"X"}]);
  [protocol_ setKeys:nil];
  [protocol_ setTitles:nil];
  EXPECT_EQ([[protocol_ getKeys] count], 0U);
  EXPECT_EQ([[protocol_ getTitles] count], 0U);
}

TEST(RecordsFromXml, TheFirstElementWithNamesTeachesTheColumns) {
  @autoreleasepool {
    XMLElement *root = parsed(@"<r><a/> <b x='1' y='2'/><c x='3' z='4'/></r>");
    TableViewProtocol *protocol = [[[TableViewProtocol alloc] initWithXMLElement:root type:1
                                                                            Ower:root] autorelease];
    EXPECT_TRUE([[protocol getKeys] isEqual:(@[ @"x", @"y" ])]);
    EXPECT_TRUE([[protocol getTitles] isEqual:(@{@"x" : @"x", @"y" : @"y"})]);
    EXPECT_EQ([protocol ower], root);
    EXPECT_EQ([[protocol list] count], 4U);
    EXPECT_TRUE([[[protocol list] lastObject] isEqual:(@{@"x" : @"3", @"z" : @"4"})]);
    [protocol loadRecordsFromElement:parsed(@"<r/>") type:1];
    EXPECT_EQ([[protocol list] count], 0U);
  }
}

TEST(RecordsFromXml, AnElementsChildrenMakeARecordToo) {
  @autoreleasepool {
    TableViewProtocol *protocol = [[[TableViewProtocol alloc] init] autorelease];
    NSDictionary *record = [protocol recordFromElement:parsed(@"<r> <a>1</a><b><c>2</c></b></r>")
                                                  type:0];
    EXPECT_TRUE([record isEqual:(@{@"a" : @"1", @"b" : @"2"})]);
    EXPECT_TRUE([[protocol getKeys] isEqual:(@[ @"a", @"b" ])]);
  }
}

TEST(RecordsFromXml, AnotherTypeGivesAnEmptyRecordAndTeachesNothing) {
  @autoreleasepool {
    TableViewProtocol *protocol = [[[TableViewProtocol alloc] init] autorelease];
    [protocol setTitles:@{@"left" : @"over"}];
    EXPECT_EQ([[protocol recordFromElement:parsed(@"<r a='1'><b>2</b></r>") type:2] count], 0U);
    EXPECT_EQ([[protocol getKeys] count], 0U);
    EXPECT_EQ([[protocol getTitles] count], 0U);
  }
}

TEST_F(Selections, AreToldOnceEachInTheirOrderAndLater) {
  for (int i = 0; i < 20; ++i)
    [protocol_ tableViewSelectionDidChange:notificationOf([NSString stringWithFormat:@"%d", i])];
  EXPECT_EQ([listener_->heard count], 0U);
  EXPECT_TRUE(pumpUntil([&] { return [listener_->heard count] >= 20; }));
  pumpFor(0.05);
  ASSERT_EQ([listener_->heard count], 20U);
  for (int i = 0; i < 20; ++i)
    EXPECT_EQ([[[listener_->heard objectAtIndex:i] name] intValue], i);
  EXPECT_FALSE(listener_->isOffMainThread);
}

TEST_F(Selections, AreToldInModalSessionsAndWhileEventsAreTracked) {
  for (NSString *mode in @[ NSModalPanelRunLoopMode, NSEventTrackingRunLoopMode ]) {
    [listener_->heard removeAllObjects];
    [protocol_ tableViewSelectionDidChange:notificationOf(@"n")];
    EXPECT_TRUE(pumpUntil([&] { return [listener_->heard count] == 1; }, 10, mode));
  }
}

TEST_F(Selections, AreNotToldToAnOwnerThatIsGone) {
  [protocol_ tableViewSelectionDidChange:notificationOf(@"n")];
  [protocol_ setOwer:nil];
  [listener_ release];
  pumpFor(0.05);
  listener_ = nil;
  [protocol_ tableViewSelectionDidChange:notificationOf(@"n")];
  pumpFor(0.05);
}

TEST_F(Selections, AreToldOnTheMainThreadWhicheverThreadTheyComeFrom) {
  [NSThread detachNewThreadSelector:@selector(tableViewSelectionDidChange:) toTarget:protocol_
                         withObject:notificationOf(@"n")];
  EXPECT_TRUE(pumpUntil([&] { return [listener_->heard count] == 1; }));
  EXPECT_FALSE(listener_->isOffMainThread);
}

TEST_F(Selections, OfARealTableAreToldAfterTheTableHasChanged) {
  NSTableView *table = [[[NSTableView alloc] initWithFrame:NSMakeRect(0, 0, 200, 200)] autorelease];
  [table addTableColumn:columnOf(@"0")];
  [protocol_ setKeys:@[ @"a" ]];
  [[protocol_ list] setArray:@[ @{@"a" : @"1"}, @{@"a" : @"2"}, @{@"a" : @"3"} ]];
  [table setDataSource:protocol_];
  [table setDelegate:protocol_];
  [table reloadData];
  [table selectRowIndexes:[NSIndexSet indexSetWithIndex:1] byExtendingSelection:NO];
  EXPECT_TRUE(pumpUntil([&] { return [listener_->heard count] == 1; }));
  [table selectRowIndexes:[NSIndexSet indexSetWithIndex:2] byExtendingSelection:NO];
  [table deselectAll:nil];
  EXPECT_TRUE(pumpUntil([&] { return [listener_->heard count] == 3; }));
  EXPECT_TRUE([listener_->selectedRows isEqual:(@[ @1, @-1, @-1 ])]);
  [table setDelegate:nil];
  [table setDataSource:nil];
}
