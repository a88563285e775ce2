// What the content editor does with its tables, combo boxes and buttons in several places, robust
// against a control that the nib lacks. Main thread only.
#pragma once

#import <AppKit/AppKit.h>

@class TableViewProtocol;

namespace vireonix {

/// The selected row when it is a row of `protocol`'s list, else -1.
NSInteger selectedRow(NSTableView *table, TableViewProtocol *protocol);

/// A table without columns or data source has nothing to reload, select or deselect, and GNUstep's
/// raises.
void reloadTable(NSTableView *table);
void deselectRows(NSTableView *table);
/// Selects one row and nothing else.
void selectRow(NSTableView *table, NSInteger row);

/// Replaces the table's columns by one for each key of `protocol`, which becomes the table's data
/// source and delegate. Without a protocol the table is left with no columns.
void buildColumns(NSTableView *table, TableViewProtocol *protocol);

/// Makes the column of a table that has one as wide as what is seen of the table; not every
/// platform does so by itself when the table grows or shrinks.
void fillWithOnlyColumn(NSTableView *table);

/// Selects an item and shows its text; item 0 for an index out of range.
void selectComboItem(NSComboBox *combo, NSInteger index);

/// Makes the list tall enough for all items, up to a dozen.
void showAllItems(NSComboBox *combo);

/// A button's cell's background colour as a record holds it: "#" and six digits.
NSString *colorTextOfButton(NSButton *button);

/// The colour of a record; black when it is none.
NSColor *colorOfText(NSString *text);

/// Opaque and enabled, or transparent and disabled.
void setButtonUsable(NSButton *button, BOOL isUsable);

} // namespace vireonix
