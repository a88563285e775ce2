// Combo boxes: those in which nothing can be typed open their list wherever they are clicked, and
// by the keys that open a menu.
#import "Theme/GNUstep/Replacement.h"

#import <AppKit/AppKit.h>

#include <algorithm>

using namespace vireonix::host;

// What the toolkit's own button of a combo box does.
@interface NSComboBoxCell (ListOpening)
- (void)_didClickWithinButton:(id)sender;
@end

namespace {

constexpr CGFloat kListRowHeight = 22;
constexpr CGFloat kListBorder = 1;

bool offersAChoiceOnly(NSComboBox *box) {
  return [box isEnabled] && ![box isEditable] && [box numberOfItems] > 0;
}

// The item that the box showed when a list was opened here; -1 for none.
NSInteger shownItem = -1;

// The text may show another item than the selected one.
NSInteger itemShownBy(NSComboBox *box) {
  const NSInteger item = [box indexOfItemWithObjectValue:[box stringValue]];
  return item != NSNotFound ? item : [box indexOfSelectedItem];
}

void openList(NSComboBox *box) {
  const NSInteger item = [box indexOfSelectedItem];
  NSString *text = [box stringValue];
  shownItem = itemShownBy(box);
  [static_cast<NSComboBoxCell *>([box cell]) _didClickWithinButton:box];
  shownItem = -1;
  // A list that was left by Escape has changed the choice behind the text that it left alone.
  if (item >= 0 && [[box stringValue] isEqualToString:text])
    [box selectItemAtIndex:item];
}

Replacement<void, NSEvent *> mouseDown;
void openListOnMouseDown(id receiver, SEL, NSEvent *event) {
  NSComboBox *box = receiver;
  if (!offersAChoiceOnly(box)) {
    mouseDown(receiver, event);
    return;
  }
  [[box window] makeFirstResponder:box];
  openList(box);
}

// The box's own ground shows behind the editor that holds its text.
Replacement<void, NSRect, NSView *, NSText *, id, NSInteger, NSInteger> showEditor;
void showEditorWithoutGround(id receiver, SEL, NSRect frame, NSView *view, NSText *editor,
                             id delegate, NSInteger start, NSInteger length) {
  showEditor(receiver, frame, view, editor, delegate, start, length);
  if ([static_cast<NSComboBoxCell *>(receiver) isEditable])
    return;
  [editor setDrawsBackground:NO];
  if ([[editor superview] isKindOfClass:[NSClipView class]])
    [static_cast<NSClipView *>([editor superview]) setDrawsBackground:NO];
}

bool opensList(unichar key) {
  return key == NSDownArrowFunctionKey || key == NSUpArrowFunctionKey || key == NSF4FunctionKey ||
         key == ' ';
}

// Whether the key was for the box. The toolkit would hand all of them on to the window, which knows
// nothing of the box behind the field editor.
bool handleKey(NSComboBox *box, unichar key) {
  if (opensList(key))
    openList(box);
  else if (key == NSTabCharacter)
    [[box window] selectKeyViewFollowingView:box];
  else if (key == NSBackTabCharacter)
    [[box window] selectKeyViewPrecedingView:box];
  else
    return false;
  return true;
}

// The box whose text an editor holds, where nothing can be typed; nil for another editor.
NSComboBox *choiceBehind(NSTextView *editor) {
  id owner = [editor isFieldEditor] ? [editor delegate] : nil;
  return [owner isKindOfClass:[NSComboBox class]] && offersAChoiceOnly(owner) ? owner : nil;
}

Replacement<void, NSEvent *> keyDown;
void handleKeyDown(id receiver, SEL, NSEvent *event) {
  NSComboBox *box = choiceBehind(receiver);
  NSString *characters = [event characters];
  if (box != nil && [characters length] > 0 && handleKey(box, [characters characterAtIndex:0]))
    return;
  keyDown(receiver, event);
}

// The editor covers the text of the box that has the keyboard.
Replacement<void, NSEvent *> mouseDownInEditor;
void openListOnMouseDownInEditor(id receiver, SEL, NSEvent *event) {
  NSComboBox *box = choiceBehind(receiver);
  if (box != nil)
    openList(box);
  else
    mouseDownInEditor(receiver, event);
}

// The toolkit's list has cells that do not know the colour of selected text.
Replacement<id, NSRect, NSUInteger, NSBackingStoreType, BOOL> initList;
id initReadableList(id receiver, SEL, NSRect content, NSUInteger style, NSBackingStoreType backing,
                    BOOL defer) {
  id list = initList(receiver, content, style, backing, defer);
  NSTableView *table = [list valueForKey:@"_tableView"];
  NSTextFieldCell *cell = [[[NSTextFieldCell alloc] initTextCell:@""] autorelease];
  [[[table tableColumns] objectAtIndex:0] setDataCell:cell];
  return list;
}

// As high as what it shows, its edge at the box kept.
NSRect fittedToRows(NSRect frame, NSTableView *table, NSComboBoxCell *cell) {
  const NSInteger rows = std::min([cell numberOfItems], [cell numberOfVisibleItems]);
  const CGFloat height = static_cast<CGFloat>(rows) * [table rowHeight] + 2 * kListBorder;
  NSView *box = [cell controlView];
  const NSRect boxFrame = [box convertRect:[box bounds] toView:nil];
  const NSPoint boxOrigin = [[box window] convertBaseToScreen:boxFrame.origin];
  if (NSMidY(frame) < boxOrigin.y)
    frame.origin.y += NSHeight(frame) - height;
  frame.size.height = height;
  return frame;
}

// The list is as wide as its box, its rows are as wide as the list, and it has a scroller only when
// there is something to scroll to.
Replacement<void, NSComboBoxCell *> layOut;
void layOutWithScrollerForLongLists(id receiver, SEL, NSComboBoxCell *cell) {
  [cell setHasVerticalScroller:[cell numberOfItems] > [cell numberOfVisibleItems]];
  layOut(receiver, cell);
}

Replacement<void, NSComboBoxCell *> place;
void placeAsWideAsBox(id receiver, SEL, NSComboBoxCell *cell) {
  place(receiver, cell);
  NSWindow *list = receiver;
  NSTableView *table = [list valueForKey:@"_tableView"];
  NSRect frame = [list frame];
  frame.size.width = std::max(NSWidth(frame), NSWidth([[cell controlView] bounds]));
  [list setFrame:fittedToRows(frame, table, cell) display:NO];
  NSScrollView *scroll = [table enclosingScrollView];
  [scroll setHasVerticalScroller:[cell hasVerticalScroller]];
  [scroll setFrame:[[list contentView] bounds]];
  const CGFloat room = [scroll contentSize].width - [table intercellSpacing].width;
  [[[table tableColumns] objectAtIndex:0] setWidth:room];
}

// The toolkit marks the first item that begins with the box's text, which need not be the shown
// one.
Replacement<void, NSComboBoxCell *> runList;
void runListFromShownItem(id receiver, SEL, NSComboBoxCell *cell) {
  NSTableView *table = [receiver valueForKey:@"_tableView"];
  if (shownItem >= 0 && shownItem < [table numberOfRows]) {
    [table selectRowIndexes:[NSIndexSet indexSetWithIndex:static_cast<NSUInteger>(shownItem)]
        byExtendingSelection:NO];
    [table scrollRowToVisible:shownItem];
  }
  runList(receiver, cell);
}

Replacement<CGFloat> itemHeight;
CGFloat roomyItemHeight(id receiver, SEL) {
  return std::max(itemHeight(receiver), kListRowHeight);
}

} // namespace

void vireonix::host::replaceComboMethods() {
  Class list = NSClassFromString(@"GSComboWindow");
  mouseDown.install([NSComboBox class], @selector(mouseDown:), &openListOnMouseDown);
  keyDown.install([NSTextView class], @selector(keyDown:), &handleKeyDown);
  mouseDownInEditor.install([NSTextView class], @selector(mouseDown:),
                            &openListOnMouseDownInEditor);
  showEditor.install([NSComboBoxCell class],
                     @selector(selectWithFrame:inView:editor:delegate:start:length:),
                     &showEditorWithoutGround);
  initList.install(list, @selector(initWithContentRect:styleMask:backing:defer:),
                   &initReadableList);
  layOut.install(list, @selector(layoutWithComboBoxCell:), &layOutWithScrollerForLongLists);
  place.install(list, @selector(positionWithComboBoxCell:), &placeAsWideAsBox);
  runList.install(list, @selector(runLoopWithComboBoxCell:), &runListFromShownItem);
  itemHeight.install([NSComboBoxCell class], @selector(itemHeight), &roomyItemHeight);
}
