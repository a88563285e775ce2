// The entry point of every test program that needs AppKit: a real application on the display of the
// environment.
#import "support/before_application.h"

#import <AppKit/AppKit.h>

#include <gtest/gtest.h>

int main(int argc, char **argv) {
  // GoogleTest takes its options first; AppKit would open bare words as documents.
  testing::InitGoogleTest(&argc, argv);
  @autoreleasepool {
    if (vireonix::test::beforeLeakCheck != nullptr)
      vireonix::test::beforeLeakCheck();
    if (vireonix::test::beforeApplication != nullptr)
      vireonix::test::beforeApplication();
    [NSApplication sharedApplication];
    [NSApp finishLaunching];
    return RUN_ALL_TESTS();
  }
}
