// Every nib of every language has what the code relies on.
#import "Class/SimpleCell.h"
#import "resources/nib_window.h"

#include <gtest/gtest.h>

using namespace vireonix::test;

static int probesAlive = 0;

/// A subview that tells by its end when the view around it has gone.
@interface LifeProbe : NSView
@end

@implementation LifeProbe

- (id)initWithFrame:(NSRect)frame {
  self = [super initWithFrame:frame];
  ++probesAlive;
  return self;
}

- (void)dealloc {
  --probesAlive;
  [super dealloc];
}

@end

namespace {

void addProbe(NSView *view) {
  [view addSubview:[[[LifeProbe alloc] initWithFrame:NSZeroRect] autorelease]];
}

class Nib : public testing::TestWithParam<std::string> {
protected:
  NibWindow nibs{folderOf(GetParam())};
};

NSArray *stringsOf(NSComboBox *box) {
  NSMutableArray *found = [NSMutableArray array];
  for (NSInteger i = 0; i < [box numberOfItems]; ++i)
    [found addObject:[box itemObjectValueAtIndex:i]];
  return found;
}

// The items translated through the language's own table.
NSArray *translated(const std::string &language, NSArray *keys) {
  NSDictionary *table = [NSDictionary
      dictionaryWithContentsOfFile:[folderOf(language)
                                       stringByAppendingPathComponent:@"PluginLocale.strings"]];
  NSMutableArray *found = [NSMutableArray array];
  for (NSString *key in keys)
    [found addObject:[table objectForKey:key] != nil ? [table objectForKey:key] : @""];
  return found;
}

bool inWindow(NSView *view, NSWindow *window) {
  return view != nil && [view window] == window;
}

} // namespace

TEST_P(Nib, SetsEveryOutletOfTheController) {
  const NibOwner *owner = nibs.owner();
  ASSERT_NE(nibs.window(), nil);
  NSArray *views = @[
    static_cast<id>(owner->iWebView), owner->positionDrawView, owner->txtLeft, owner->txtTop,
    owner->txtRight, owner->txtBottom, owner->txtTransparency, owner->sldTrans, owner->matLayer,
    owner->btnDefault, owner->btnCancel, owner->btnOK
  ];
  for (NSView *view in views)
    EXPECT_TRUE(inWindow(view, nibs.window())) << [[view description] UTF8String];
  EXPECT_TRUE([owner->iWebView isKindOfClass:NSClassFromString(@"WebView")]);
}

TEST_P(Nib, SetsEveryOutletOfThePanel) {
  PrivateView *panel = nibs.panel();
  ASSERT_NE(panel, nil);
  NSArray *views = @[
    [panel tableView],      [panel tbContent],         [panel btnAdd],
    [panel btnRemove],      [panel btnSave],           [panel btnBrowse],
    [panel txtFileName],    [panel btnContentAdd],     [panel btnContentRemove],
    [panel btnContentSave], [panel txtCaption],        [panel comAlign],
    [panel comTextAlign],   [panel txtInTime],         [panel comTextAnimation],
    [panel txtStayTime],    [panel comStartDirection], [panel btnTextColor],
    [panel txtTextSize],    [panel comStyle]
  ];
  EXPECT_EQ([views count], 20U);
  for (NSView *view in views)
    EXPECT_TRUE(inWindow(view, nibs.window())) << [[view description] UTF8String];
}

TEST_P(Nib, MakesTheControllerTheWindowsDelegate) {
  EXPECT_EQ([nibs.window() delegate], static_cast<id>(nibs.owner()));
}

TEST_P(Nib, OffersOneRadioButtonToEachLayer) {
  NSMatrix *layers = nibs.owner()->matLayer;
  ASSERT_EQ([[layers cells] count], 2U);
  for (int tag = 0; tag < 2; ++tag) {
    ASSERT_TRUE([layers selectCellWithTag:tag]);
    EXPECT_EQ([[layers selectedCell] tag], tag);
  }
  EXPECT_FALSE([layers allowsEmptySelection]);
  NSArray *titles = @[ [[layers cellWithTag:0] title], [[layers cellWithTag:1] title] ];
  EXPECT_TRUE([titles isEqual:translated(GetParam(), @[ @"Below the page", @"Above the page" ])]);
}

TEST_P(Nib, GivesTheTransparencyARangeOfPercent) {
  EXPECT_EQ([nibs.owner()->sldTrans minValue], 0);
  EXPECT_EQ([nibs.owner()->sldTrans maxValue], 100);
}

TEST_P(Nib, GivesTheButtonsTheirKeys) {
  EXPECT_TRUE([[nibs.owner()->btnOK keyEquivalent] isEqualToString:@"\r"]);
  EXPECT_TRUE([[nibs.owner()->btnCancel keyEquivalent] isEqualToString:@"\033"]);
}

TEST_P(Nib, ListsTheChoicesInTheOrderOfTheirStoredIndexes) {
  PrivateView *panel = nibs.panel();
  NSArray *places = @[
    @"Top left", @"Top center", @"Top right", @"Center left", @"Center", @"Center right",
    @"Bottom left", @"Bottom center", @"Bottom right"
  ];
  NSArray *directions = @[
    @"Left", @"Right", @"Top", @"Bottom", @"Top left", @"Top right", @"Bottom left", @"Bottom right"
  ];
  const std::string &language = GetParam();
  EXPECT_TRUE([stringsOf([panel comAlign]) isEqual:translated(language, places)]);
  EXPECT_TRUE([stringsOf([panel comTextAlign])
      isEqual:translated(language, @[ @"Left", @"Center", @"Right" ])]);
  EXPECT_TRUE([stringsOf([panel comTextAnimation])
      isEqual:translated(language, @[ @"Whole caption", @"Letter by letter", @"Word by word" ])]);
  EXPECT_TRUE([stringsOf([panel comStartDirection]) isEqual:translated(language, directions)]);
  EXPECT_GT([[panel comStyle] numberOfItems], 0);
}

TEST_P(Nib, LetsNobodyTypeIntoAChoice) {
  PrivateView *panel = nibs.panel();
  for (NSComboBox *box in @[
         [panel comAlign], [panel comTextAlign], [panel comTextAnimation],
         [panel comStartDirection], [panel comStyle]
       ])
    EXPECT_FALSE([box isEditable]);
}

TEST_P(Nib, DrawsThePanelsButtonsFlatAndWithoutRoomForAnImage) {
  PrivateView *panel = nibs.panel();
  for (NSButton *button in @[
         [panel btnAdd], [panel btnRemove], [panel btnSave], [panel btnBrowse],
         [panel btnContentAdd], [panel btnContentRemove], [panel btnContentSave]
       ]) {
    EXPECT_TRUE([[button cell] isKindOfClass:[SimpleCell class]]);
    EXPECT_EQ([button imagePosition], NSNoImage);
  }
}

TEST_P(Nib, HasEditableFieldsAndLabelsThatTakeNoKeys) {
  const NibOwner *owner = nibs.owner();
  PrivateView *panel = nibs.panel();
  NSArray *fields = @[
    owner->txtLeft, owner->txtTop, owner->txtRight, owner->txtBottom, owner->txtTransparency,
    [panel txtFileName], [panel txtCaption], [panel txtTextSize], [panel txtInTime],
    [panel txtStayTime]
  ];
  for (NSTextField *field in fields)
    EXPECT_TRUE([field isEditable]);
  for (NSView *group in [panel subviews]) {
    for (NSView *view in [group subviews]) {
      if ([view isMemberOfClass:[NSTextField class]] && ![fields containsObject:view])
        EXPECT_FALSE([static_cast<NSTextField *>(view) acceptsFirstResponder]);
    }
  }
}

TEST_P(Nib, SetsTheGroupsTitlesOffFromTheirLabels) {
  NSString *bold = [[NSFont boldSystemFontOfSize:13] fontName];
  NSArray *titles = translated(
      GetParam(),
      @[ @"Slides", @"Captions of the slide", @"Caption", @"Preview", @"Position on the page" ]);
  for (NSString *title in titles) {
    NSTextField *label = labelOf(nibs.content(), title);
    ASSERT_NE(label, nil) << [title UTF8String];
    EXPECT_STREQ([[[label font] fontName] UTF8String], [bold UTF8String]) << [title UTF8String];
  }
}

TEST_P(Nib, SendsTheTabKeyThroughEveryControl) {
  // The panel stands where its placeholder stood in the window's loop; the controller closes it.
  NSMutableArray *visited = [NSMutableArray array];
  for (NSView *view = nibs.panel(); view != nil && [visited count] < 100; view = [view nextKeyView])
    [visited addObject:view];
  EXPECT_EQ([visited count], 21U);
  EXPECT_EQ([visited lastObject], [nibs.panel() btnContentRemove]);
  const NibOwner *owner = nibs.owner();
  NSArray *expected = @[
    static_cast<id>(owner->iWebView), owner->txtLeft, owner->txtTop, owner->txtRight,
    owner->txtBottom, owner->sldTrans, owner->txtTransparency, owner->matLayer, owner->btnDefault,
    owner->btnCancel, owner->btnOK
  ];
  for (NSUInteger i = 0; i + 1 < [expected count]; ++i)
    EXPECT_EQ([[expected objectAtIndex:i] nextKeyView], [expected objectAtIndex:i + 1]);
  EXPECT_EQ([nibs.window() initialFirstResponder], static_cast<id>(owner->txtLeft));
}

TEST_P(Nib, ExplainsEveryControlInATip) {
  const NibOwner *owner = nibs.owner();
  PrivateView *panel = nibs.panel();
  for (NSView *view in @[
         static_cast<id>(owner->txtLeft),
         owner->txtTop,
         owner->txtRight,
         owner->txtBottom,
         owner->txtTransparency,
         owner->sldTrans,
         owner->matLayer,
         owner->btnDefault,
         owner->btnCancel,
         owner->btnOK,
         [panel tableView],
         [panel tbContent],
         [panel btnAdd],
         [panel btnRemove],
         [panel btnSave],
         [panel btnBrowse],
         [panel txtFileName],
         [panel btnContentAdd],
         [panel btnContentRemove],
         [panel btnContentSave],
         [panel txtCaption],
         [panel comAlign],
         [panel comTextAlign],
         [panel txtInTime],
         [panel comTextAnimation],
         [panel txtStayTime],
         [panel comStartDirection],
         [panel btnTextColor],
         [panel txtTextSize],
         [panel comStyle]
       ])
    EXPECT_GT([[view toolTip] length], 0U) << [[view description] UTF8String];
}

INSTANTIATE_TEST_SUITE_P(InEveryLanguage, Nib, testing::ValuesIn(languages()),
                         [](const auto &language) {
                           std::string name = language.param;
                           std::erase(name, '-');
                           return name;
                         });

TEST(Nibs, ExistInTenLanguages) {
  const std::vector<std::string> expected = {"de", "en", "es",    "fr", "it",
                                             "ja", "ko", "pt-BR", "ru", "zh-Hans"};
  EXPECT_EQ(languages(), expected);
}

TEST(NibMemory, ThePanelGoesWithTheOneReferenceThatLoadingLeavesToTheCaller) {
  NSView *panel = nil;
  @autoreleasepool {
    NSArray *objects = loadNib([folderOf("en") stringByAppendingPathComponent:@"PrivateView.nib"],
                               [[[PrivateView alloc] init] autorelease]);
    ASSERT_EQ([objects count], 1U);
    panel = [objects lastObject];
    addProbe(panel);
  }
  ASSERT_EQ(probesAlive, 1);
  @autoreleasepool {
    [panel release];
  }
  EXPECT_EQ(probesAlive, 0);
}

TEST(NibMemory, TheWindowGoesWithItsController) {
  NibOwner *owner = [NibOwner alloc];
  @autoreleasepool {
    NSString *path = [folderOf("en") stringByAppendingPathComponent:@"PluginSettingsDelegate.nib"];
    owner = [owner initWithWindowNibPath:path owner:owner];
    addProbe([[owner window] contentView]);
  }
  ASSERT_EQ(probesAlive, 1);
  @autoreleasepool {
    [[owner window] close];
    [owner release];
  }
  EXPECT_EQ(probesAlive, 0);
}
