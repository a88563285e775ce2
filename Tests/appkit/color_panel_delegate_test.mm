#import "vireonix/ColorPanelDelegate.h"

#import <AppKit/AppKit.h>

#include <gtest/gtest.h>

TEST(ColorPanelDelegate, EndsTheModalSessionWhenThePanelCloses) {
  NSPanel *panel = [[[NSPanel alloc] initWithContentRect:NSMakeRect(0, 0, 50, 50)
                                               styleMask:NSTitledWindowMask
                                                 backing:NSBackingStoreBuffered
                                                   defer:NO] autorelease];
  [panel setReleasedWhenClosed:NO];
  ColorPanelDelegate *delegate = [[[ColorPanelDelegate alloc] init] autorelease];
  [panel setDelegate:delegate];
  EXPECT_FALSE([delegate isClosed]);
  NSModalSession session = [NSApp beginModalSessionForWindow:panel];
  EXPECT_EQ([NSApp runModalSession:session], NSRunContinuesResponse);
  [panel close];
  EXPECT_TRUE([delegate isClosed]);
  EXPECT_EQ([NSApp runModalSession:session], NSRunStoppedResponse);
  [NSApp endModalSession:session];
  [panel setDelegate:nil];
}

TEST(ColorPanelDelegate, APanelThatClosesOutsideAModalSessionIsClosedToo) {
  ColorPanelDelegate *delegate = [[[ColorPanelDelegate alloc] init] autorelease];
  [delegate windowWillClose:nil];
  EXPECT_TRUE([delegate isClosed]);
}
