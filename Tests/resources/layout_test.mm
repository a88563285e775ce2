// No control hides another one or loses a letter, in any language and at any size of the window.
#import "Theme/HostTheme.h"
#import "resources/nib_window.h"
#import "support/before_application.h"
#import "support/pixels.h"
#import "support/run_loop.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace vireonix::test;

void vireonix::test::beforeApplication() {
  InstallHostTheme(HostThemeLight);
}

namespace {

struct WindowSize {
  const char *name;
  double width;
  double height;
};

constexpr WindowSize kSizes[] = {
    {"minimum", 960, 640}, {"initial", 1024, 704}, {"large", 1560, 1000}};

// The right column reaches this far past the window's edge, with nothing in it there.
constexpr double kOverhang = 12;

class Layout : public testing::TestWithParam<std::string> {
protected:
  NibWindow nibs { GetParam() == "pseudo" ? @VIREONIX_PSEUDO_NIBS : folderOf(GetParam()) };
};

// The made-up language's choices are longer than any real ones.
class RealLanguage : public Layout {};

std::string describe(NSView *view) {
  NSString *title = @"";
  if ([view isKindOfClass:[NSButton class]])
    title = [static_cast<NSButton *>(view) title];
  else if ([view isKindOfClass:[NSTextField class]])
    title = [static_cast<NSTextField *>(view) stringValue];
  return [[NSString stringWithFormat:@"%@ \"%@\" %@", NSStringFromClass([view class]), title,
                                     NSStringFromRect([view frame])] UTF8String];
}

// The toolkit's own inner views are its own business.
bool isOurs(NSView *view) {
  return ![view isKindOfClass:[NSScrollView class]] && ![view isKindOfClass:[NSControl class]] &&
         ![view isKindOfClass:NSClassFromString(@"WebView")];
}

void forEachGroup(NSView *view, const std::function<void(NSView *)> &visit) {
  if (!isOurs(view))
    return;
  visit(view);
  for (NSView *subview in [view subviews])
    forEachGroup(subview, visit);
}

void expectNoOverlap(NSView *group) {
  NSArray *views = [group subviews];
  for (NSUInteger i = 0; i < [views count]; ++i) {
    for (NSUInteger j = i + 1; j < [views count]; ++j) {
      NSView *a = [views objectAtIndex:i];
      NSView *b = [views objectAtIndex:j];
      const NSRect common = NSIntersectionRect([a frame], [b frame]);
      EXPECT_TRUE(NSWidth(common) < 0.5 || NSHeight(common) < 0.5)
          << describe(a) << " overlaps " << describe(b);
    }
  }
}

void expectInside(NSView *group, NSView *content) {
  for (NSView *view in [group subviews]) {
    NSRect allowed = NSInsetRect([group bounds], -0.5, -0.5);
    if (group == content)
      allowed.size.width += kOverhang;
    EXPECT_TRUE(NSContainsRect(allowed, [view frame]))
        << describe(view) << " leaves " << describe(group);
  }
}

double neededWidth(NSCell *cell) {
  return std::ceil([[cell attributedStringValue] size].width);
}

// What a title may fill of a control's width.
double widthForTitle(NSView *view) {
  constexpr double kLabelPadding = 4;
  constexpr double kButtonPadding = 12;
  const bool isButton = [view isKindOfClass:[NSButton class]];
  return NSWidth([view frame]) - (isButton ? kButtonPadding : kLabelPadding);
}

void expectWholeTitle(NSView *view) {
  const bool isLabel =
      [view isMemberOfClass:[NSTextField class]] && ![static_cast<NSTextField *>(view) isEditable];
  if (![view isKindOfClass:[NSButton class]] && !isLabel)
    return;
  NSCell *cell = [static_cast<NSControl *>(view) cell];
  EXPECT_LE(isLabel ? neededWidth(cell)
                    : std::ceil([[static_cast<NSButton *>(view) attributedTitle] size].width),
            widthForTitle(view))
      << describe(view) << " clips its title";
}

void expectWholeRadioTitles(NSMatrix *matrix) {
  for (NSButtonCell *cell in [matrix cells])
    EXPECT_LE([cell cellSize].width, [matrix cellSize].width)
        << [[cell title] UTF8String] << " is clipped";
  EXPECT_LE([matrix cellSize].width, NSWidth([matrix frame]) + 0.5);
}

void expectWholeItems(NSComboBox *box) {
  constexpr double kArrowAndPadding = 26;
  NSDictionary *look = @{NSFontAttributeName : [box font]};
  for (NSInteger i = 0; i < [box numberOfItems]; ++i) {
    NSString *item = [box itemObjectValueAtIndex:i];
    EXPECT_LE(std::ceil([item sizeWithAttributes:look].width),
              NSWidth([box frame]) - kArrowAndPadding)
        << [item UTF8String] << " is clipped in its combo box";
  }
}

} // namespace

TEST_P(Layout, HasNoOverlapsAtAnySize) {
  for (const WindowSize &size : kSizes) {
    SCOPED_TRACE(size.name);
    nibs.resize(NSMakeSize(size.width, size.height));
    forEachGroup(nibs.content(), [this](NSView *group) {
      expectNoOverlap(group);
      expectInside(group, nibs.content());
    });
  }
}

TEST_P(Layout, ClipsNoTitleAtAnySize) {
  for (const WindowSize &size : kSizes) {
    SCOPED_TRACE(size.name);
    nibs.resize(NSMakeSize(size.width, size.height));
    forEachGroup(nibs.content(), [](NSView *group) {
      for (NSView *view in [group subviews])
        expectWholeTitle(view);
    });
    expectWholeRadioTitles(nibs.owner()->matLayer);
  }
}

TEST_P(RealLanguage, ClipsNoChoiceAtTheMinimumSize) {
  nibs.resize(NSMakeSize(kSizes[0].width, kSizes[0].height));
  PrivateView *panel = nibs.panel();
  for (NSComboBox *box in @[
         [panel comAlign], [panel comTextAlign], [panel comTextAnimation],
         [panel comStartDirection], [panel comStyle]
       ])
    expectWholeItems(box);
}

TEST_P(Layout, KeepsTheColumnsApartByTheSameGap) {
  NSView *group = [static_cast<NSView *>(static_cast<id>(nibs.owner()->iWebView)) superview];
  for (const WindowSize &size : kSizes) {
    nibs.resize(NSMakeSize(size.width, size.height));
    const double left = NSMaxX([nibs.panel() frame]);
    const double right = [nibs.content() convertPoint:NSZeroPoint fromView:group].x;
    EXPECT_NEAR(right - left, 16, 1) << size.name;
    const double end =
        [nibs.content() convertPoint:NSMakePoint(NSMaxX([group bounds]), 0) fromView:group].x;
    EXPECT_NEAR(size.width - end, 16, 1) << size.name;
  }
}

TEST_P(Layout, LetsThePreviewAndTheTablesGrow) {
  NSView *preview = static_cast<NSView *>(static_cast<id>(nibs.owner()->iWebView));
  NSView *slides = [[nibs.panel() tableView] enclosingScrollView];
  NSView *captions = [[nibs.panel() tbContent] enclosingScrollView];
  nibs.resize(NSMakeSize(kSizes[0].width, kSizes[0].height));
  const NSSize small[] = {[preview frame].size, [slides frame].size, [captions frame].size};
  nibs.resize(NSMakeSize(kSizes[2].width, kSizes[2].height));
  const NSSize large[] = {[preview frame].size, [slides frame].size, [captions frame].size};
  for (int i = 0; i < 3; ++i) {
    EXPECT_GT(large[i].width, small[i].width + 200);
    EXPECT_GT(large[i].height, small[i].height + 100);
  }
}

TEST_P(Layout, LeavesPictures) {
  for (const WindowSize &size : kSizes) {
    nibs.resize(NSMakeSize(size.width, size.height));
    [nibs.window() makeKeyAndOrderFront:nil];
    pumpEventsUntil([this] { return [nibs.window() isKeyWindow]; });
    [nibs.content() setNeedsDisplay:YES];
    [nibs.window() display];
    NSString *name = [NSString stringWithFormat:@"window-%s-%s.png", GetParam().c_str(), size.name];
    EXPECT_TRUE(
        Picture(nibs.content()).write([@VIREONIX_PICTURES stringByAppendingPathComponent:name]));
  }
}

namespace {

std::vector<std::string> languagesAndPseudo() {
  std::vector<std::string> all = languages();
  all.emplace_back("pseudo");
  return all;
}

// Names of tests hold letters and digits only.
std::string testName(const testing::TestParamInfo<std::string> &language) {
  std::string name = language.param;
  std::erase(name, '-');
  return name;
}

} // namespace

INSTANTIATE_TEST_SUITE_P(InEveryLanguage, Layout, testing::ValuesIn(languagesAndPseudo()),
                         testName);
INSTANTIATE_TEST_SUITE_P(InEveryLanguage, RealLanguage, testing::ValuesIn(languages()), testName);
