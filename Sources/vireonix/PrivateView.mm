#import "vireonix/PrivateView.h"

#import "Class/FieldText.h"
#import "Class/PluginSettingsInfo.h"
#import "Class/RoundedFrame.h"
#import "Class/TableViewProtocol.h"
#import "Class/XMLElement.h"
#import "Locale.h"
#import "vireonix/ColorButtonCell.h"
#import "vireonix/PrivateView+SetUp.h"
#import "vireonix/panel_controls.h"

using namespace vireonix;

static NSString *const kIdentifier = @"vireonix";

@implementation PrivateView

@synthesize workSpace;
@synthesize ower;
@synthesize bundlePath;
@synthesize tableView;
@synthesize tbContent;
@synthesize btnAdd;
@synthesize btnRemove;
@synthesize btnSave;
@synthesize btnBrowse;
@synthesize txtFileName;
@synthesize btnContentAdd;
@synthesize btnContentRemove;
@synthesize btnContentSave;
@synthesize txtCaption;
@synthesize comAlign;
@synthesize comTextAlign;
@synthesize txtInTime;
@synthesize comTextAnimation;
@synthesize txtStayTime;
@synthesize comStartDirection;
@synthesize btnTextColor;
@synthesize txtTextSize;
@synthesize comStyle;

- (void)dealloc {
  [[NSNotificationCenter defaultCenter] removeObserver:self];
  [tableViewProtocol setOwer:nil];
  [tbContentProtocol setOwer:nil];
  // The tables, released with the view's other subviews, refer to their data sources to the end.
  [tableViewProtocol autorelease];
  [tbContentProtocol autorelease];
  [settingsInfo release];
  [StyleXML release];
  [SlideXML release];
  [AlignShortCut release];
  [shownSlide release];
  [workSpace release];
  [bundlePath release];
  [super dealloc];
}

- (void)resizeSubviewsWithOldSize:(NSSize)oldSize {
  [super resizeSubviewsWithOldSize:oldSize];
  fillWithOnlyColumn(tableView);
}

- (BOOL)isDrawnAsAWhole {
  return YES;
}

- (void)drawRect:(NSRect)rect {
  if (coversWholeView(rect, self))
    strokeRoundedFrame(rect, [NSColor grayColor], 1);
  else
    [super drawRect:rect];
}

- (void)loadDispInfo {
  [self makeSettingsInfo];
  [self resetControls];
  [self readWorkspaceDocument];
  if (StyleXML == nil)
    [self loadStyleXML];
  [self loadSlideXML];
  buildColumns(tableView, tableViewProtocol);
  buildColumns(tbContent, tbContentProtocol);
  selectedIndex = -1;
  [self onTableViewChange];
  [self onContentViewChange];
  [self wireControls];
}

- (void)makeSettingsInfo {
  settingsInfo = [[PluginSettingsInfo alloc] init];
  [settingsInfo setWorkSpace:[self workSpace]];
  [settingsInfo setIdentifier:kIdentifier];
  [settingsInfo setBundlePath:[self bundlePath]];
  [settingsInfo installWorkSpace];
}

- (void)resetControls {
  [btnTextColor setCell:[[[ColorButtonCell alloc] init] autorelease]];
  for (NSComboBox *combo in [self comboBoxes])
    selectComboItem(combo, 0);
  showTextInField(txtInTime, @"0");
  showTextInField(txtStayTime, @"1");
  showTextInField(txtTextSize, @"10");
  AlignShortCut = [@[ @"TL", @"TC", @"TR", @"CL", @"C", @"CR", @"BL", @"BC", @"BR" ] retain];
}

// Those that the nib has.
- (NSArray *)comboBoxes {
  NSMutableArray *combos = [NSMutableArray array];
  NSComboBox *const all[] = {comAlign, comTextAlign, comTextAnimation, comStartDirection, comStyle};
  for (NSComboBox *combo : all) {
    if (combo != nil)
      [combos addObject:combo];
  }
  return combos;
}

- (void)wireControls {
  [self wireButton:btnAdd action:@selector(onAdd:)];
  [self wireButton:btnRemove action:@selector(onRemove:)];
  [self wireButton:btnSave action:@selector(onSave:)];
  [self wireButton:btnBrowse action:@selector(onBrowse:)];
  [btnTextColor setTarget:self];
  [btnTextColor setAction:@selector(onColorSelect:)];
  [self wireButton:btnContentAdd action:@selector(onContentAdd:)];
  [self wireButton:btnContentRemove action:@selector(onContentRemove:)];
  [self wireButton:btnContentSave action:@selector(onContentSave:)];
  NSTextField *const fields[] = {txtFileName, txtCaption, txtInTime, txtStayTime, txtTextSize};
  for (NSTextField *field : fields)
    [field setDelegate:self];
  for (NSComboBox *combo in [self comboBoxes]) {
    [combo setTarget:self];
    [combo setAction:@selector(onTypeButtonChange:)];
    showAllItems(combo);
  }
  [comAlign setIntercellSpacing:NSMakeSize(1, 2)];
  [[txtFileName cell]
      setPlaceholderString:loadAppString(@"No slide selected", @"No slide selected")];
  [[txtCaption cell] setPlaceholderString:loadAppString(@"Type a caption", @"Type a caption")];
}

- (void)wireButton:(NSButton *)button action:(SEL)action {
  [button setShowsBorderOnlyWhileMouseInside:YES];
  [button setTarget:self];
  [button setAction:action];
}

@end
