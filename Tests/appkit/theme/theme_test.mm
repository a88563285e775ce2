#import "Theme/HostTheme.h"
#import "appkit/theme/gallery.h"
#import "support/before_application.h"
#import "support/contrast.h"

#import <GNUstepGUI/GSTheme.h>

#include <gtest/gtest.h>

using namespace vireonix::test;

// The toolkit's class for the tool tips of one view; it has no public header.
@interface GSToolTips : NSObject
+ (GSToolTips *)tipsForView:(NSView *)view;
- (unsigned)count;
@end

void vireonix::test::beforeApplication() {
  InstallHostTheme(HostThemeLight);
}

namespace {

class Theme : public testing::TestWithParam<HostThemeVariant> {
protected:
  void SetUp() override { InstallHostTheme(GetParam()); }
};

NSString *picturePath(NSString *name) {
  return [@VIREONIX_PICTURES stringByAppendingPathComponent:name];
}

NSRect inside(NSView *view, CGFloat dx, CGFloat dy) {
  return NSInsetRect([view bounds], dx, dy);
}

bool isAccent(Pixel pixel) {
  return isNear(pixel, {0x2F, 0x6F, 0xDE}, 12);
}

bool isFocusRing(Pixel pixel) {
  return isAccent(pixel) || isNear(pixel, {0x6F, 0xA0, 0xF7}, 12);
}

} // namespace

TEST_P(Theme, LeavesAPictureOfEveryControl) {
  Gallery gallery;
  gallery.focus(gallery.field);
  NSString *name = GetParam() == HostThemeDark ? @"theme-dark.png" : @"theme-light.png";
  EXPECT_TRUE(gallery.picture(gallery.content).write(picturePath(name)));
}

TEST_P(Theme, TextIsReadableInEveryEnabledControl) {
  Gallery gallery;
  const auto contrastIn = [&](NSView *view) {
    return textContrast(gallery.picture(view), inside(view, 12, 7));
  };
  EXPECT_GE(contrastIn(gallery.plainButton), kReadable);
  EXPECT_GE(contrastIn(gallery.defaultButton), kReadable);
  EXPECT_GE(contrastIn(gallery.pressedButton), kReadable);
  EXPECT_GE(contrastIn(gallery.field), kReadable);
  EXPECT_GE(contrastIn(gallery.combo), kReadable);
  EXPECT_GE(contrastIn(gallery.popUp), kReadable);
}

TEST_P(Theme, RowsAreReadableStripedAndSelectedInTheAccentColour) {
  Gallery gallery;
  const Picture picture = gallery.picture(gallery.table);
  const auto row = [&](NSInteger index) {
    return NSInsetRect([gallery.table frameOfCellAtColumn:0 row:index], 2, 2);
  };
  for (NSInteger index = 0; index < 3; ++index)
    EXPECT_GE(textContrast(picture, row(index)), kReadable) << "row " << index;
  EXPECT_NE(commonest(picture, row(0)), commonest(picture, row(1)));
  EXPECT_TRUE(isAccent(commonest(picture, row(2))));
  NSView *header = [gallery.table headerView];
  EXPECT_GE(textContrast(gallery.picture(header), NSMakeRect(4, 4, 200, 12)), kReadable);
}

TEST_P(Theme, DisabledControlsLookDisabled) {
  Gallery gallery;
  const auto contrastIn = [&](NSView *view) {
    return textContrast(gallery.picture(view), inside(view, 12, 7));
  };
  EXPECT_LT(contrastIn(gallery.disabledButton), 0.7 * contrastIn(gallery.plainButton));
  EXPECT_LT(contrastIn(gallery.disabledField), 0.7 * contrastIn(gallery.field));
  EXPECT_LT(contrastIn(gallery.disabledCombo), 0.7 * contrastIn(gallery.combo));
  EXPECT_GT(gallery.picture(gallery.checkOn).count(isAccent), 100);
  EXPECT_EQ(gallery.picture(gallery.checkDisabled).count(isAccent), 0);
}

TEST_P(Theme, OnlyTheFocusedFieldHasARing) {
  Gallery gallery;
  EXPECT_EQ(gallery.picture(gallery.field).count(isFocusRing), 0);
  gallery.focus(gallery.field);
  EXPECT_GT(gallery.picture(gallery.field).count(isFocusRing), 300);
  gallery.focus(gallery.combo);
  EXPECT_EQ(gallery.picture(gallery.field).count(isFocusRing), 0);
  EXPECT_GT(gallery.picture(gallery.combo).count(isFocusRing), 300);
}

TEST_P(Theme, TheDefaultButtonStandsOut) {
  Gallery gallery;
  EXPECT_GT(gallery.picture(gallery.defaultButton).count(isAccent), 1000);
  EXPECT_EQ(gallery.picture(gallery.plainButton).count(isAccent), 0);
}

TEST_P(Theme, APressedButtonDiffers) {
  Gallery gallery;
  const Picture plain = gallery.picture(gallery.plainButton);
  const Picture pressed = gallery.picture(gallery.pressedButton);
  EXPECT_NE(commonest(plain, inside(gallery.plainButton, 8, 6)),
            commonest(pressed, inside(gallery.pressedButton, 8, 6)));
}

TEST_P(Theme, MarksTellOnFromOffAndFromMixed) {
  Gallery gallery;
  const auto accents = [&](NSView *view) { return gallery.picture(view).count(isAccent); };
  EXPECT_EQ(accents(gallery.checkOff), 0);
  EXPECT_GT(accents(gallery.checkOn), 100);
  EXPECT_GT(accents(gallery.checkMixed), accents(gallery.checkOn)) << "a dash is less than a mark";
  const Picture radios = gallery.picture(gallery.radios);
  EXPECT_GT(radios.count(NSMakeRect(0, 0, 20, 20), isAccent), 80);
  EXPECT_EQ(radios.count(NSMakeRect(110, 0, 20, 20), isAccent), 0);
}

TEST_P(Theme, TheScrollBarIsAtTheRightWithAKnobThatMoves) {
  Gallery gallery;
  NSScroller *scroller = [gallery.scrollView verticalScroller];
  EXPECT_GT(NSMinX([scroller frame]), NSWidth([gallery.scrollView bounds]) / 2);
  const auto knobAt = [&](CGFloat y) {
    const Picture picture = gallery.picture(scroller);
    const int x = picture.width() / 2;
    return contrast(picture.at(x, static_cast<int>(y)), picture.at(0, static_cast<int>(y)));
  };
  const CGFloat bottom = NSHeight([scroller bounds]) - 12;
  EXPECT_GT(knobAt(12), 1.6);
  EXPECT_NEAR(knobAt(bottom), 1, 0.01);
  [gallery.table scrollRowToVisible:[gallery.table numberOfRows] - 1];
  EXPECT_NEAR(knobAt(12), 1, 0.01);
  EXPECT_GT(knobAt(bottom), 1.6);
}

TEST_P(Theme, TheSliderShowsItsValue) {
  Gallery gallery;
  const auto accents = [&] { return gallery.picture(gallery.slider).count(isAccent); };
  [gallery.slider setDoubleValue:20];
  const int low = accents();
  [gallery.slider setDoubleValue:90];
  EXPECT_GT(accents(), 3 * low);
}

TEST_P(Theme, AHeaderHasOneToolTipForEachColumnHoweverOftenItIsLaidOut) {
  Gallery gallery;
  NSTableHeaderView *header = [gallery.table headerView];
  const auto columns = static_cast<unsigned>([gallery.table numberOfColumns]);
  ASSERT_GE(columns, 2U);
  for (int i = 0; i < 10; ++i)
    [header resetCursorRects];
  GSToolTips *tips = [NSClassFromString(@"GSToolTips") tipsForView:header];
  EXPECT_EQ([tips count], columns);
  [header removeAllToolTips];
  EXPECT_EQ([tips count], 0U);
}

INSTANTIATE_TEST_SUITE_P(BothVariants, Theme, testing::Values(HostThemeLight, HostThemeDark),
                         [](const auto &variant) {
                           return variant.param == HostThemeDark ? "Dark" : "Light";
                         });

TEST(ThemeChanges, AChangedDefaultLeavesTheThemeInPlace) {
  GSTheme *theme = [GSTheme theme];
  NSUserDefaults *defaults = [NSUserDefaults standardUserDefaults];
  [defaults setObject:@"/" forKey:@"NSDefaultOpenDirectory"];
  [[NSNotificationCenter defaultCenter] postNotificationName:NSUserDefaultsDidChangeNotification
                                                      object:defaults];
  EXPECT_EQ([GSTheme theme], theme);
}
