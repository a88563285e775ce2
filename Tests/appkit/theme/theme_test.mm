#import "Theme/HostTheme.h"
#import "appkit/theme/gallery.h"
#import "support/before_application.h"

#include <gtest/gtest.h>

using namespace vireonix::test;

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

} // namespace

TEST_P(Theme, LeavesAPictureOfEveryControl) {
  Gallery gallery;
  gallery.focus(gallery.field);
  NSString *name = GetParam() == HostThemeDark ? @"theme-dark.png" : @"theme-light.png";
  EXPECT_TRUE(gallery.picture(gallery.content).write(picturePath(name)));
}

INSTANTIATE_TEST_SUITE_P(BothVariants, Theme, testing::Values(HostThemeLight, HostThemeDark),
                         [](const auto &variant) {
                           return variant.param == HostThemeDark ? "Dark" : "Light";
                         });
