// Alerts show all of their text, in every language, with the application's icon beside it.
#import "support/contrast.h"
#import "support/pixels.h"

#import <AppKit/AppKit.h>

#include <gtest/gtest.h>

#include <filesystem>

using namespace vireonix::test;

namespace {

NSArray *messageKeys() {
  return @[
    @"Do you want to apply the settings?", @"The caption is null, please input the caption first!",
    @"The In-Time value range 0-200 is recommended, Are you insist to use the input value ?",
    @"The Stay-Time value range 0-200 is recommended, Are you insist to use the input value ?",
    @"The text size range 10-60 is recommended, Are you insist to use the input value ?"
  ];
}

// What each language says, by the built bundle's tables.
NSArray *messages() {
  NSMutableArray *found = [NSMutableArray array];
  for (NSString *name in [[NSFileManager defaultManager]
           contentsOfDirectoryAtPath:@VIREONIX_BUNDLE "/Contents/Resources"
                               error:nullptr]) {
    if (![[name pathExtension] isEqualToString:@"lproj"])
      continue;
    NSString *path = [NSString
        stringWithFormat:@"%s/Contents/Resources/%@/PluginLocale.strings", VIREONIX_BUNDLE, name];
    NSDictionary *table = [NSDictionary dictionaryWithContentsOfFile:path];
    for (NSString *key in messageKeys())
      if ([table objectForKey:key] != nil)
        [found addObject:[table objectForKey:key]];
  }
  return found;
}

void expectWholeText(NSTextField *field) {
  const NSSize room = NSMakeSize(NSWidth([field bounds]), 10000);
  EXPECT_LE([[field cell] cellSizeForBounds:NSMakeRect(0, 0, room.width, room.height)].height,
            NSHeight([field bounds]) + 1)
      << [[field stringValue] UTF8String] << " is clipped";
}

void expectSoundLayout(NSView *content) {
  NSArray *views = [content subviews];
  for (NSUInteger i = 0; i < [views count]; ++i) {
    NSView *view = [views objectAtIndex:i];
    EXPECT_TRUE(NSContainsRect([content bounds], [view frame])) << [[view description] UTF8String];
    for (NSUInteger j = i + 1; j < [views count]; ++j)
      EXPECT_FALSE(NSIntersectsRect([view frame], [[views objectAtIndex:j] frame]))
          << [[view description] UTF8String];
    if ([view isKindOfClass:[NSTextField class]])
      expectWholeText(static_cast<NSTextField *>(view));
  }
}

} // namespace

TEST(Alerts, ShowAllOfTheirTextInEveryLanguage) {
  NSArray *all = messages();
  ASSERT_EQ([all count], 50U) << "five messages in ten languages";
  for (NSString *message in all) {
    NSPanel *panel = NSGetAlertPanel(message, @"%@", @"YES", @"NO", nil, message);
    expectSoundLayout([panel contentView]);
    NSReleaseAlertPanel(panel);
  }
}
