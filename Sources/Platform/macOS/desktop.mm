#import "Platform/desktop.h"

#import <AppKit/AppKit.h>

namespace vireonix::platform {

void openWithDefaultApplication(NSURL *address) {
  [[NSWorkspace sharedWorkspace] openURL:address];
}

void stopModalSession(NSInteger code) {
  [NSApp stopModalWithCode:code];
}

void prepareForModalSession(NSWindow *panel) {}

void prepareForFirstClick() {}

void showSolidGrid(NSTableView *table) {
  [table setGridStyleMask:NSTableViewSolidVerticalGridLineMask |
                          NSTableViewSolidHorizontalGridLineMask];
}

void releaseTopLevelObjects(NSArray *objects) {
  // The older instantiation call hands each top-level object to its caller with a retain.
  [objects makeObjectsPerformSelector:@selector(release)];
}

} // namespace vireonix::platform
