// Everything in the settings window can be done with the keyboard; the keys are the display's.
#import "appkit/looks/shown_window.h"
#import "support/run_loop.h"

#import <WebKit/WebKit.h>

#include <gtest/gtest.h>

#include <vector>

using namespace vireonix::test;

/// Counts notifications.
@interface Count : NSObject {
@public
  int count;
}
- (id)initWithName:(NSString *)name object:(id)object;
@end

@implementation Count

- (id)initWithName:(NSString *)name object:(id)object {
  if ((self = [super init]))
    [[NSNotificationCenter defaultCenter] addObserver:self selector:@selector(happened:) name:name
                                               object:object];
  return self;
}

- (void)happened:(NSNotification *)notification {
  ++count;
}

- (void)dealloc {
  [[NSNotificationCenter defaultCenter] removeObserver:self];
  [super dealloc];
}

@end

namespace {

NSString *inPreview(const ShownWindow &shown, NSString *script) {
  return [shown.control(@"iWebView") stringByEvaluatingJavaScriptFromString:script];
}

// Where the keyboard is: a control's name, and the number of the element in the preview's page.
std::string place(const ShownWindow &shown) {
  const std::string name = shown.focused();
  if (name != "iWebView")
    return name;
  NSString *element =
      inPreview(shown, @"[...document.querySelectorAll('*')].indexOf(document.activeElement)");
  return name + [element UTF8String];
}

// The control that the key gives the keyboard. The page of the preview keeps some Tab keys for its
// own buttons.
std::string afterKey(const ShownWindow &shown, const std::string &key) {
  constexpr int kMostInPage = 12;
  const std::string before = shown.focused();
  for (int i = 0; i < kMostInPage && shown.focused() == before; ++i) {
    const std::string start = place(shown);
    pressKey(key);
    pumpEventsUntil([&] { return place(shown) != start; }, 3);
  }
  return shown.focused();
}

void expectPath(const ShownWindow &shown, const std::string &key,
                const std::vector<std::string> &controls) {
  shown.focus([NSString stringWithUTF8String:controls.front().c_str()]);
  for (std::size_t i = 1; i < controls.size(); ++i)
    ASSERT_EQ(afterKey(shown, key), controls[i]);
}

} // namespace

TEST(Keyboard, TheTabKeyVisitsEveryControlInReadingOrder) {
  const ShownWindow shown;
  expectPath(
      shown, "Tab",
      {"tableView", "btnAdd",          "btnRemove",        "btnSave",        "txtFileName",
       "btnBrowse", "tbContent",       "txtCaption",       "btnTextColor",   "txtTextSize",
       "comStyle",  "comAlign",        "comTextAnimation", "comTextAlign",   "comStartDirection",
       "txtInTime", "txtStayTime",     "btnContentAdd",    "btnContentSave", "btnContentRemove",
       "iWebView",  "txtLeft",         "txtTop",           "txtRight",       "txtBottom",
       "sldTrans",  "txtTransparency", "matLayer",         "btnDefault",     "btnCancel",
       "btnOK",     "tableView"});
}

TEST(Keyboard, TheTabKeyWithShiftGoesBack) {
  const ShownWindow shown;
  expectPath(shown, "shift+Tab",
             {"tableView", "btnOK", "btnCancel", "btnDefault", "matLayer", "txtTransparency",
              "sldTrans", "txtBottom", "txtRight", "txtTop", "txtLeft", "iWebView"});
  expectPath(shown, "shift+Tab",
             {"btnContentRemove", "btnContentSave",    "btnContentAdd", "txtStayTime",
              "txtInTime",        "comStartDirection", "comTextAlign",  "comTextAnimation",
              "comAlign",         "comStyle",          "txtTextSize",   "btnTextColor",
              "txtCaption",       "tbContent",         "btnBrowse",     "txtFileName",
              "btnSave",          "btnRemove",         "btnAdd",        "tableView"});
}

TEST(Keyboard, ThePreviewIsEnteredAndLeftAgainAndAgainEitherWay) {
  const ShownWindow shown;
  ASSERT_TRUE(pumpEventsUntil([&] {
    return [inPreview(shown, @"document.querySelectorAll('[tabindex=\"0\"],button').length > 0")
        isEqualToString:@"true"];
  })) << "the player has something that takes the keyboard";
  for (int round = 0; round < 3; ++round) {
    SCOPED_TRACE(round);
    expectPath(shown, "Tab", {"btnContentRemove", "iWebView", "txtLeft"});
    expectPath(shown, "shift+Tab", {"txtLeft", "iWebView", "btnContentRemove"});
  }
}

TEST(Keyboard, AComboBoxOpensByAKeyAndTheListTakesTheArrowsAndReturn) {
  const ShownWindow shown;
  NSComboBox *box = shown.control(@"comAlign");
  NSInteger chosen = [box indexOfSelectedItem];
  // "Center" comes after "Center left", which begins with it.
  ASSERT_EQ(chosen, 4);
  for (const std::string opening : {"Down", "alt+Down", "space", "F4"}) {
    shown.focus(@"comAlign");
    pressKeysSoon(opening + " Down Return");
    ++chosen;
    ASSERT_TRUE(pumpEventsUntil([&] { return [box indexOfSelectedItem] == chosen; }, 5)) << opening;
    ASSERT_LT(chosen, [box numberOfItems]);
    NSString *item = [box itemObjectValueAtIndex:chosen];
    EXPECT_TRUE([[box stringValue] isEqualToString:item]) << opening;
    EXPECT_TRUE([shown.window() isVisible]) << "Return was for the list, not for the window";
  }
}

TEST(Keyboard, TheListOfAComboBoxBeginsAtTheShownItem) {
  const ShownWindow shown;
  NSComboBox *box = shown.control(@"comAlign");
  [box selectItemAtIndex:0];
  [box setStringValue:[box itemObjectValueAtIndex:5]];
  shown.focus(@"comAlign");
  pressKeysSoon("space Down Return");
  ASSERT_TRUE(pumpEventsUntil([&] { return [box indexOfSelectedItem] == 6; }, 5));
  EXPECT_TRUE([[box stringValue] isEqualToString:[box itemObjectValueAtIndex:6]]);
}

TEST(Keyboard, EscapeClosesTheListOfAComboBoxAndNothingElse) {
  const ShownWindow shown;
  NSComboBox *box = shown.control(@"comAlign");
  const NSInteger chosen = [box indexOfSelectedItem];
  Count *opened = [[[Count alloc] initWithName:NSComboBoxWillPopUpNotification
                                        object:box] autorelease];
  shown.focus(@"comAlign");
  pressKeysSoon("space Down Escape");
  // Where the list is open the pumping waits for it.
  EXPECT_TRUE(pumpEventsUntil([&] { return opened->count == 1; }, 5));
  pumpEventsFor(0.3);
  EXPECT_EQ([box indexOfSelectedItem], chosen);
  EXPECT_TRUE([shown.window() isVisible]);
}

TEST(Keyboard, ArrowsMoveThroughTheTablesAndTheLayers) {
  const ShownWindow shown;
  NSTableView *slides = shown.control(@"tableView");
  shown.focus(@"tableView");
  pressKey("Down");
  EXPECT_TRUE(pumpEventsUntil([&] { return [slides selectedRow] == 1; }, 3));
  pressKey("Up");
  EXPECT_TRUE(pumpEventsUntil([&] { return [slides selectedRow] == 0; }, 3));
  NSMatrix *layers = shown.control(@"matLayer");
  [layers selectCellWithTag:0];
  shown.focus(@"matLayer");
  pressKey("Down");
  pressKey("space");
  EXPECT_TRUE(pumpEventsUntil([&] { return [[layers selectedCell] tag] == 1; }, 3));
}

TEST(Keyboard, ArrowsMoveTheTransparency) {
  const ShownWindow shown;
  NSSlider *slider = shown.control(@"sldTrans");
  shown.focus(@"sldTrans");
  const double before = [slider doubleValue];
  pressKey("Left");
  EXPECT_TRUE(pumpEventsUntil([&] { return [slider doubleValue] < before; }, 3));
}

TEST(Keyboard, SpacePressesAButton) {
  const ShownWindow shown;
  const NSInteger rows = [shown.control(@"tbContent") numberOfRows];
  ASSERT_EQ(rows, 1);
  shown.focus(@"btnContentAdd");
  pressKey("space");
  EXPECT_TRUE(
      pumpEventsUntil([&] { return [shown.control(@"tbContent") numberOfRows] == rows + 1; }, 3));
}

TEST(Keyboard, SpaceOnTheColourButtonOpensTheColourPanelAndEscapeClosesIt) {
  const ShownWindow shown;
  NSColorPanel *colours = [NSColorPanel sharedColorPanel];
  Count *closed = [[[Count alloc] initWithName:NSWindowWillCloseNotification
                                        object:colours] autorelease];
  shown.focus(@"btnTextColor");
  pressKeysSoon("space Escape");
  EXPECT_TRUE(pumpEventsUntil([&] { return closed->count == 1; }, 5));
  EXPECT_FALSE([colours isVisible]);
  EXPECT_TRUE([shown.window() isVisible]) << "Escape was for the panel";
}

namespace {

// The outcome of a session that a key ends: its closeMode.
int outcomeOfKey(const std::string &key) {
  const ShownWindow shown;
  shown.focus(@"txtLeft");
  pressKey(key);
  EXPECT_TRUE(pumpEventsUntil([&] { return [shown.controller() isCloseBundle]; }, 5)) << key;
  return [shown.controller() closeMode];
}

} // namespace

TEST(Keyboard, ReturnAppliesAndEscapeReverts) {
  EXPECT_EQ(outcomeOfKey("Return"), 1);
  EXPECT_EQ(outcomeOfKey("Escape"), 0);
}
