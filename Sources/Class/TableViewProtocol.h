// Data source and delegate of a table whose rows are records (string-keyed dictionaries).
//
// A column's identifier is the index of its key in the key list, written "%i". Main thread only,
// apart from `tableViewSelectionDidChange:`.
#import <AppKit/AppKit.h>

#include <cstdint>

@class XMLElement;

@interface TableViewProtocol : NSObject <NSTableViewDataSource, NSTableViewDelegate> {
  NSMutableArray *list;
  id ower;
  NSMutableArray *keys;
  NSMutableDictionary *titles;
}

- (id)init;
/// A list filled from the children of an element; see `recordFromElement:type:`.
- (id)initWithXMLElement:(XMLElement *)element type:(int32_t)type Ower:(id)owner;

/// A record of an element's attributes (type 1) or of its named child nodes (type 0); empty for any
/// other type. While there are no keys, the record's names become the keys, and their own titles.
- (NSMutableDictionary *)recordFromElement:(XMLElement *)element type:(int32_t)type;
/// Replaces the list by one record for each child of the element.
- (void)loadRecordsFromElement:(XMLElement *)element type:(int32_t)type;

/// The column keys, in column order. Setting copies the contents.
- (NSArray *)getKeys;
- (void)setKeys:(NSArray *)newKeys;
/// The column titles by key. Setting copies the contents.
- (NSDictionary *)getTitles;
- (void)setTitles:(NSDictionary *)newTitles;

- (NSInteger)numberOfRowsInTableView:(NSTableView *)table;
/// Nil for a column without key and for a record without a value.
- (id)tableView:(NSTableView *)table
    objectValueForTableColumn:(NSTableColumn *)column
                          row:(NSInteger)row;
/// A new text cell for each request; nil for no column, so that no row spans the table.
- (NSCell *)tableView:(NSTableView *)table
    dataCellForTableColumn:(NSTableColumn *)column
                       row:(NSInteger)row;

/// Hands the notification to `ower`, asynchronously on the main thread: once for each change, in
/// their order, also in modal sessions and while events are tracked. An owner that is gone by then
/// must have set `ower` to nil.
- (void)tableViewSelectionDidChange:(NSNotification *)notification;

/// The rows.
@property(retain) NSMutableArray *list;
/// Receives `tableViewSelectionDidChange:`; not retained.
@property(nonatomic, assign) id ower;

@end
