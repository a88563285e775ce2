#import "Class/TableViewProtocol.h"

#import "Class/DetachedCall.h"
#import "Class/XMLElement.h"

namespace {

enum RecordType : int32_t { kOfChildren = 0, kOfAttributes = 1 };

} // namespace

@implementation TableViewProtocol

@synthesize list;
@synthesize ower;

- (id)init {
  if ((self = [super init]) != nil) {
    list = [[NSMutableArray alloc] init];
    keys = [[NSMutableArray alloc] init];
    titles = [[NSMutableDictionary alloc] init];
  }
  return self;
}

- (id)initWithXMLElement:(XMLElement *)element type:(int32_t)type Ower:(id)owner {
  if ((self = [self init]) != nil) {
    [self loadRecordsFromElement:element type:type];
    ower = owner;
  }
  return self;
}

- (void)dealloc {
  [[NSNotificationCenter defaultCenter] removeObserver:self];
  [list release];
  [keys release];
  [titles release];
  [super dealloc];
}

- (void)setValue:(NSString *)value
         forName:(NSString *)name
        inRecord:(NSMutableDictionary *)record
        teaching:(BOOL)isTeaching {
  if (name == nil || value == nil)
    return;
  if (isTeaching) {
    [keys addObject:name];
    [titles setObject:name forKey:name];
  }
  [record setObject:value forKey:name];
}

- (NSMutableDictionary *)recordFromElement:(XMLElement *)element type:(int32_t)type {
  const BOOL isTeaching = [keys count] == 0;
  if (isTeaching)
    [titles removeAllObjects];
  NSMutableDictionary *record = [NSMutableDictionary dictionary];
  if (type == kOfAttributes) {
    for (NSString *name in [element attributeNames])
      [self setValue:[element attributeForName:name] forName:name inRecord:record
            teaching:isTeaching];
  } else if (type == kOfChildren) {
    for (XMLElement *child in [element children])
      [self setValue:[child stringValue] forName:[child name] inRecord:record teaching:isTeaching];
  }
  return record;
}

- (void)loadRecordsFromElement:(XMLElement *)element type:(int32_t)type {
  [list removeAllObjects];
  for (XMLElement *child in [element children])
    [list addObject:[self recordFromElement:child type:type]];
}

- (NSArray *)getKeys {
  return keys;
}

- (void)setKeys:(NSArray *)newKeys {
  NSArray *contents = newKeys != nil ? [NSArray arrayWithArray:newKeys] : [NSArray array];
  if (keys == nil)
    keys = [[NSMutableArray alloc] init];
  [keys setArray:contents];
}

- (NSDictionary *)getTitles {
  return titles;
}

- (void)setTitles:(NSDictionary *)newTitles {
  NSDictionary *contents = newTitles != nil ? [NSDictionary dictionaryWithDictionary:newTitles]
                                            : [NSDictionary dictionary];
  if (titles == nil)
    titles = [[NSMutableDictionary alloc] init];
  [titles removeAllObjects];
  [titles setValuesForKeysWithDictionary:contents];
}

- (NSInteger)numberOfRowsInTableView:(NSTableView *)table {
  return static_cast<NSInteger>([list count]);
}

// The record's entry for the column, or nil. A table may ask for a row that has just gone.
- (id)valueForColumn:(NSTableColumn *)column row:(NSInteger)row {
  const int index = [[column identifier] intValue];
  if (index < 0 || static_cast<NSUInteger>(index) >= [keys count])
    return nil;
  if (row < 0 || static_cast<NSUInteger>(row) >= [list count])
    return nil;
  NSDictionary *record = [list objectAtIndex:static_cast<NSUInteger>(row)];
  return [record objectForKey:[keys objectAtIndex:static_cast<NSUInteger>(index)]];
}

- (id)tableView:(NSTableView *)table
    objectValueForTableColumn:(NSTableColumn *)column
                          row:(NSInteger)row {
  return column != nil ? [self valueForColumn:column row:row] : nil;
}

- (NSCell *)tableView:(NSTableView *)table
    dataCellForTableColumn:(NSTableColumn *)column
                       row:(NSInteger)row {
  if (column == nil)
    return nil;
  NSTextFieldCell *cell = [[[NSTextFieldCell alloc] initTextCell:@""] autorelease];
  NSString *value = [self valueForColumn:column row:row];
  if ([value length] > 0)
    [cell setTitle:value];
  return cell;
}

- (void)tableViewSelectionDidChange:(NSNotification *)notification {
  if (ower == nil)
    return;
  @autoreleasepool {
    [self performSelectorOnMainThread:@selector(deliverSelectionChange:) withObject:notification
                        waitUntilDone:NO
                                modes:mainThreadModes()];
  }
}

- (void)deliverSelectionChange:(NSNotification *)notification {
  [ower tableViewSelectionDidChange:notification];
}

@end
