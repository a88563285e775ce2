#import "appkit/theme/gallery.h"

#import "Class/SimpleCell.h"
#import "support/run_loop.h"

@implementation GalleryRows

- (instancetype)init {
  self = [super init];
  rows = [@[
    @[ @"Welcome to the autumn issue", @"24", @"Fade in" ],
    @[ @"\u6b22\u8fce\u9605\u8bfb\u79cb\u5b63\u520a", @"18", @"Slide" ],
    @[
      @"\u0414\u043e\u0431\u0440\u043e \u043f\u043e\u0436\u0430\u043b\u043e\u0432\u0430\u0442\u044c",
      @"32", @"Zoom"
    ],
    @[ @"\u0645\u0631\u062d\u0628\u0627 \u0628\u0643\u0645", @"20", @"Typewriter" ],
    @[ @"Gr\u00fc\u00dfe aus K\u00f6ln", @"16", @"Fade in" ], @[ @"Seven", @"12", @"Slide" ],
    @[ @"Eight", @"12", @"Slide" ], @[ @"Nine", @"12", @"Slide" ], @[ @"Ten", @"12", @"Slide" ],
    @[ @"Eleven", @"12", @"Slide" ], @[ @"Twelve", @"12", @"Slide" ]
  ] retain];
  return self;
}

- (void)dealloc {
  [rows release];
  [super dealloc];
}

- (NSInteger)numberOfRowsInTableView:(NSTableView *)table {
  return static_cast<NSInteger>([rows count]);
}

- (id)tableView:(NSTableView *)table
    objectValueForTableColumn:(NSTableColumn *)column
                          row:(NSInteger)row {
  NSArray *record = [rows objectAtIndex:static_cast<NSUInteger>(row)];
  return [record objectAtIndex:static_cast<NSUInteger>([[column identifier] intValue])];
}

@end

namespace vireonix::test {
namespace {

template <typename View> View *add(NSView *parent, NSRect frame) {
  View *view = [[[View alloc] initWithFrame:frame] autorelease];
  [parent addSubview:view];
  return view;
}

NSTextField *addLabel(NSView *parent, NSString *text, NSRect frame) {
  NSTextField *label = add<NSTextField>(parent, frame);
  [label setStringValue:text];
  [label setBezeled:NO];
  [label setBordered:NO];
  [label setDrawsBackground:NO];
  [label setEditable:NO];
  [label setSelectable:NO];
  return label;
}

NSButton *addPushButton(NSView *parent, NSString *title, CGFloat x) {
  NSButton *button = add<NSButton>(parent, NSMakeRect(x, 20, 110, 32));
  [button setTitle:title];
  [button setButtonType:NSMomentaryPushInButton];
  [button setBezelStyle:NSRoundedBezelStyle];
  return button;
}

NSButton *addCheckBox(NSView *parent, NSString *title, CGFloat x, NSInteger state) {
  NSButton *button = add<NSButton>(parent, NSMakeRect(x, 72, 110, 20));
  [button setButtonType:NSSwitchButton];
  [button setTitle:title];
  [button setAllowsMixedState:state == NSMixedState];
  [button setState:state];
  return button;
}

NSButton *addFlatButton(NSView *parent, NSString *title, CGFloat x) {
  NSButton *button = add<NSButton>(parent, NSMakeRect(x, 104, 90, 26));
  SimpleCell *cell = [[[SimpleCell alloc] initTextCell:title] autorelease];
  [cell setImagePosition:NSNoImage];
  [button setCell:cell];
  return button;
}

} // namespace

Gallery::Gallery() : rows_([[GalleryRows alloc] init]) {
  window = [[NSWindow alloc] initWithContentRect:NSMakeRect(120, 120, 880, 620)
                                       styleMask:NSTitledWindowMask | NSClosableWindowMask
                                         backing:NSBackingStoreBuffered
                                           defer:NO];
  [window setReleasedWhenClosed:NO];
  [window setTitle:@"Controls"];
  Canvas *canvas = [[[Canvas alloc] initWithFrame:NSMakeRect(0, 0, 880, 620)] autorelease];
  [canvas setFlipped:YES];
  [window setContentView:canvas];
  content = canvas;
  buildButtons();
  buildMarks();
  buildFields();
  buildChoices();
  buildTable();
  buildScripts();
  buildBox();
  [window makeKeyAndOrderFront:nil];
  pumpEventsUntil([this] { return [window isKeyWindow]; });
  [window makeFirstResponder:nil];
  [window display];
}

Gallery::~Gallery() {
  [table setDataSource:nil];
  [window orderOut:nil];
  [window release];
  [rows_ release];
}

Picture Gallery::picture(NSView *view) const {
  [window display];
  return Picture(view);
}

void Gallery::focus(NSView *view) const {
  [window makeFirstResponder:view];
  pumpFor(0.02);
}

void Gallery::buildButtons() {
  plainButton = addPushButton(content, @"Browse\u2026", 20);
  defaultButton = addPushButton(content, @"OK", 140);
  [defaultButton setKeyEquivalent:@"\r"];
  pressedButton = addPushButton(content, @"Pressed", 260);
  [[pressedButton cell] setHighlighted:YES];
  disabledButton = addPushButton(content, @"Disabled", 380);
  [disabledButton setEnabled:NO];
  NSButton *disabledDefault = addPushButton(content, @"Apply", 500);
  [disabledDefault setKeyEquivalent:@"\r"];
  [disabledDefault setEnabled:NO];
  NSButton *square = add<NSButton>(content, NSMakeRect(630, 23, 80, 26));
  [square setTitle:@"Square"];
  [square setBezelStyle:NSRegularSquareBezelStyle];
  NSButton *toggle = add<NSButton>(content, NSMakeRect(720, 23, 80, 26));
  [toggle setTitle:@"Toggled"];
  [toggle setButtonType:NSPushOnPushOffButton];
  [toggle setState:NSOnState];
  addFlatButton(content, @"Flat", 20);
  [[addFlatButton(content, @"Hovered", 120) cell] mouseEntered:nil];
  [addFlatButton(content, @"Pressed", 220) highlight:YES];
  [addFlatButton(content, @"Disabled", 320) setEnabled:NO];
}

void Gallery::buildMarks() {
  checkOn = addCheckBox(content, @"Checked", 20, NSOnState);
  checkOff = addCheckBox(content, @"Unchecked", 130, NSOffState);
  checkMixed = addCheckBox(content, @"Mixed", 240, NSMixedState);
  checkDisabled = addCheckBox(content, @"Disabled", 350, NSOnState);
  [checkDisabled setEnabled:NO];
  NSButtonCell *prototype = [[[NSButtonCell alloc] initTextCell:@""] autorelease];
  [prototype setButtonType:NSRadioButton];
  radios = [[[NSMatrix alloc] initWithFrame:NSMakeRect(470, 72, 380, 20) mode:NSRadioModeMatrix
                                  prototype:prototype
                               numberOfRows:1
                            numberOfColumns:3] autorelease];
  [radios setCellSize:NSMakeSize(110, 20)];
  [[radios cellAtRow:0 column:0] setTitle:@"In front"];
  [[radios cellAtRow:0 column:1] setTitle:@"Behind"];
  [[radios cellAtRow:0 column:2] setTitle:@"Disabled"];
  [[radios cellAtRow:0 column:2] setEnabled:NO];
  [radios selectCellAtRow:0 column:0];
  [content addSubview:radios];
}

void Gallery::buildFields() {
  addLabel(content, @"Caption", NSMakeRect(20, 152, 70, 18));
  field = add<NSTextField>(content, NSMakeRect(100, 150, 200, 24));
  [field setStringValue:@"Gentle rain (jgpqy)"];
  addLabel(content, @"Disabled", NSMakeRect(20, 186, 70, 18));
  disabledField = add<NSTextField>(content, NSMakeRect(100, 184, 200, 24));
  [disabledField setStringValue:@"Not now"];
  [disabledField setEnabled:NO];
  addLabel(content, @"Empty", NSMakeRect(20, 220, 70, 18));
  NSTextField *empty = add<NSTextField>(content, NSMakeRect(100, 218, 200, 22));
  [[empty cell] setPlaceholderString:@"Placeholder"];
  NSSecureTextField *secure = add<NSSecureTextField>(content, NSMakeRect(100, 250, 200, 24));
  [secure setStringValue:@"secret"];
}

void Gallery::buildChoices() {
  NSArray *items = @[ @"Top left", @"Centre", @"Bottom right" ];
  combo = add<NSComboBox>(content, NSMakeRect(340, 150, 180, 24));
  [combo addItemsWithObjectValues:items];
  [combo setStringValue:@"Centre"];
  disabledCombo = add<NSComboBox>(content, NSMakeRect(340, 184, 180, 24));
  [disabledCombo addItemsWithObjectValues:items];
  [disabledCombo setStringValue:@"Top left"];
  [disabledCombo setEnabled:NO];
  popUp = add<NSPopUpButton>(content, NSMakeRect(340, 218, 180, 26));
  [popUp addItemsWithTitles:items];
  slider = add<NSSlider>(content, NSMakeRect(550, 152, 200, 20));
  [slider setMinValue:0];
  [slider setMaxValue:100];
  [slider setDoubleValue:35];
  NSSlider *disabled = add<NSSlider>(content, NSMakeRect(550, 186, 200, 20));
  [disabled setDoubleValue:0.6];
  [disabled setEnabled:NO];
  NSSlider *tall = add<NSSlider>(content, NSMakeRect(780, 150, 20, 120));
  [tall setDoubleValue:0.7];
  NSProgressIndicator *progress = add<NSProgressIndicator>(content, NSMakeRect(550, 222, 200, 10));
  [progress setIndeterminate:NO];
  [progress setDoubleValue:60];
  NSColorWell *well = add<NSColorWell>(content, NSMakeRect(550, 246, 60, 28));
  [well setColor:[NSColor orangeColor]];
}

void Gallery::buildTable() {
  scrollView = add<NSScrollView>(content, NSMakeRect(20, 300, 500, 180));
  [scrollView setBorderType:NSBezelBorder];
  [scrollView setHasVerticalScroller:YES];
  [scrollView setHasHorizontalScroller:YES];
  table = [[[NSTableView alloc] initWithFrame:NSMakeRect(0, 0, 480, 150)] autorelease];
  NSArray *titles = @[ @"Text objects in slider", @"Size", @"Style" ];
  const CGFloat widths[] = {250, 90, 250};
  for (NSUInteger index = 0; index < [titles count]; ++index) {
    NSString *identifier = [NSString stringWithFormat:@"%d", static_cast<int>(index)];
    NSTableColumn *column = [[[NSTableColumn alloc] initWithIdentifier:identifier] autorelease];
    [[column headerCell] setStringValue:[titles objectAtIndex:index]];
    [column setWidth:widths[index]];
    [table addTableColumn:column];
  }
  [table setRowHeight:22];
  [table setUsesAlternatingRowBackgroundColors:YES];
  [table setDrawsGrid:YES];
  [table setDataSource:rows_];
  [scrollView setDocumentView:table];
  [table reloadData];
  [table selectRowIndexes:[NSIndexSet indexSetWithIndex:2] byExtendingSelection:NO];
}

void Gallery::buildScripts() {
  NSArray *samples = @[
    @"Latin: The quick brown fox jumps over the lazy dog",
    @"Cyrillic: \u0421\u044a\u0435\u0448\u044c \u0435\u0449\u0451 \u0431\u0443\u043b\u043e\u043a",
    @"Greek: \u039e\u03b5\u03c3\u03ba\u03b5\u03c0\u03ac\u03b6\u03c9",
    @"Chinese: \u5e7b\u706f\u7247\u8bbe\u7f6e \u5e7b\u71c8\u7247\u8a2d\u5b9a",
    @"Japanese: \u30b9\u30e9\u30a4\u30c9\u306e\u8a2d\u5b9a",
    @"Korean: \uc2ac\ub77c\uc774\ub4dc \uc124\uc815",
    @"Arabic: \u0645\u0631\u062d\u0628\u0627 \u0628\u0643\u0645",
    @"Hebrew: \u05e9\u05dc\u05d5\u05dd",
    @"Thai: \u0e2a\u0e27\u0e31\u0e2a\u0e14\u0e35",
  ];
  CGFloat y = 300;
  for (NSString *sample in samples) {
    addLabel(content, sample, NSMakeRect(550, y, 320, 20));
    y += 22;
  }
}

void Gallery::buildBox() {
  NSBox *box = add<NSBox>(content, NSMakeRect(20, 500, 500, 100));
  [box setTitle:@"Position on the page"];
  NSTextField *inside =
      addLabel([box contentView], @"Margins in percent of the page", NSMakeRect(12, 30, 300, 20));
  [inside setTextColor:[NSColor secondaryLabelColor]];
  NSBox *rule = add<NSBox>(content, NSMakeRect(550, 540, 300, 1));
  [rule setBoxType:NSBoxSeparator];
  NSTextView *text = add<NSTextView>(content, NSMakeRect(550, 555, 300, 45));
  [text setString:@"Free text in a text view, with a selection."];
  [text setSelectedRange:NSMakeRange(5, 9)];
}

} // namespace vireonix::test
