// Texts are shown with real letters in every script, and whole: where a title is cut, its tool tip
// has all of it.
#import "appkit/looks/looks_of_views.h"

#include <gtest/gtest.h>

using namespace vireonix::test;

namespace {

NSTextField *makeLabel(NSString *text) {
  NSTextField *label = [[[NSTextField alloc] initWithFrame:NSMakeRect(0, 0, 160, 24)] autorelease];
  [label setBezeled:NO];
  [label setEditable:NO];
  [label setStringValue:text];
  return label;
}

// What a label shows of a text in the window's font.
Picture shown(NSString *text) {
  NSTextField *label = makeLabel(text);
  NSWindow *window = windowShowing(label);
  Picture picture = shownBy(label);
  [window orderOut:nil];
  return picture;
}

// A character that no font has, drawn as often as the text is long.
NSString *missing(NSUInteger count) {
  // U+10FFFD, for private use.
  NSString *nothing = @"\U0010FFFD";
  return [@"" stringByPaddingToLength:count * [nothing length] withString:nothing
                      startingAtIndex:0];
}

int inked(const Picture &picture) {
  const Pixel ground = picture.at(1, 1);
  return picture.count([&](Pixel pixel) { return !isNear(pixel, ground, 40); });
}

} // namespace

TEST(Texts, OfEveryScriptAreDrawnWithRealLetters) {
  for (NSString *text in @[ @"保存する", @"저장하기", @"保存设置", @"Сохранить", @"Größe" ]) {
    const Picture letters = shown(text);
    EXPECT_GT(inked(letters), 80) << [text UTF8String];
    EXPECT_GT(changedPixels(letters, shown(missing([text length]))), 80) << [text UTF8String];
  }
}

TEST(Texts, DifferentIdeographsLookDifferent) {
  // Boxes for what is missing would all look the same.
  EXPECT_GT(changedPixels(shown(@"保保保"), shown(@"削削削")), 60);
  EXPECT_GT(changedPixels(shown(@"저저저"), shown(@"삭삭삭")), 60);
  EXPECT_EQ(changedPixels(shown(@"保保保"), shown(@"保保保")), 0);
}

TEST(Texts, EachColumnsTitleIsInItsToolTipAsAWhole) {
  const ShownWindow window;
  for (NSString *name in @[ @"tableView", @"tbContent" ]) {
    NSArray *columns = [window.control(name) tableColumns];
    EXPECT_GE([columns count], 1U);
    for (NSTableColumn *column in columns) {
      NSString *title = [[column headerCell] stringValue];
      EXPECT_GT([title length], 0U);
      EXPECT_TRUE([[column headerToolTip] isEqualToString:title]) << [title UTF8String];
    }
  }
}

TEST(Texts, EmptyFieldsSayWhatTheyAreFor) {
  const ShownWindow window;
  moveOntoGround(window.window());
  for (NSString *name in @[ @"txtFileName", @"txtCaption" ]) {
    NSTextField *field = window.control(name);
    [field setStringValue:@""];
    const Picture hinted = shownBy(field);
    EXPECT_GT([[[field cell] placeholderString] length], 0U) << [name UTF8String];
    [[field cell] setPlaceholderString:@""];
    [field setNeedsDisplay:YES];
    EXPECT_GT(changedPixels(hinted, shownBy(field)), 80) << [name UTF8String];
  }
}

TEST(Texts, OfColumnsTitlesFitTheirColumnsInEveryOtherLanguage) {
  constexpr CGFloat kNarrowestColumn = 100;
  NSString *resources = @VIREONIX_BUNDLE "/Contents/Resources";
  int languages = 0;
  for (NSString *name in [[NSFileManager defaultManager] contentsOfDirectoryAtPath:resources
                                                                             error:nullptr]) {
    if (![[name pathExtension] isEqualToString:@"lproj"] || [name hasPrefix:@"en"])
      continue;
    ++languages;
    NSDictionary *table = [NSDictionary
        dictionaryWithContentsOfFile:[[resources stringByAppendingPathComponent:name]
                                         stringByAppendingPathComponent:@"PluginLocale.strings"]];
    for (NSString *key in @[
           @"Text objects in slider", @"Size", @"Color", @"Style", @"Align", @"In Time",
           @"Stay Time", @"Text Align", @"Text Animation", @"Start Direction", @"ID"
         ]) {
      NSString *title = [table objectForKey:key];
      NSCell *header = [[[NSTableHeaderCell alloc] initTextCell:title] autorelease];
      EXPECT_LE([header cellSize].width, kNarrowestColumn) << [title UTF8String];
    }
  }
  EXPECT_EQ(languages, 9);
}
