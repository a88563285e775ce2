#import "Platform/desktop.h"
#import "Platform/wake_event.h"

#import <AppKit/AppKit.h>
#import <GNUstepGUI/GSDisplayServer.h>

#include <array>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vireonix::platform {
namespace {

// The desktop's own opener. A shell in between starts it in the background, so no zombie is left to
// collect.
bool spawnOpener(const char *address) {
  std::array<const char *, 6> arguments = {
      "sh",
      "-c",
      "command -v xdg-open >/dev/null && { xdg-open \"$1\" >/dev/null 2>&1 & }",
      "xdg-open",
      address,
      nullptr};
  pid_t child = 0;
  if (posix_spawnp(&child, "sh", nullptr, nullptr, const_cast<char **>(arguments.data()),
                   environ) != 0)
    return false;
  int status = 0;
  while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
  }
  return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

// The loop looks at its stop flag only after an event, and finds one that was not sent by the user
// only when something fires. Closed by a timer or by the host, the window would otherwise leave its
// session waiting for the next movement of the mouse.
void wakeModalLoop() {
  [NSApp postEvent:wakeEvent() atStart:NO];
  [NSApp performSelector:@selector(self) withObject:nil afterDelay:0
                 inModes:@[ NSModalPanelRunLoopMode ]];
}

} // namespace

void openWithDefaultApplication(NSURL *address) {
  // GNUstep's workspace knows only its own services; the freedesktop opener knows the user's
  // browser.
  if (!spawnOpener([[address absoluteString] UTF8String]))
    [[NSWorkspace sharedWorkspace] openURL:address];
}

void stopModalSession(NSInteger code) {
  // GNUstep raises where AppKit does nothing.
  if ([NSApp modalWindow] == nil)
    return;
  [NSApp stopModalWithCode:code];
  wakeModalLoop();
}

// GNUstep centres a panel when its session begins, unless it is on the display already. A panel
// that the window manager has framed before then comes back larger than it draws itself, and takes
// clicks for places beside them.
void prepareForModalSession(NSWindow *panel) {
  static NSMutableSet *const placed = [[NSMutableSet alloc] init];
  if ([panel isVisible])
    return;
  [panel orderFront:nil];
  NSValue *key = [NSValue valueWithNonretainedObject:panel];
  if (![placed containsObject:key])
    [panel center];
  [placed addObject:key];
}

// GNUstep's display server reads the mouse's settings at the first click, after starting a service
// that tells of their changes, and takes events while it waits for that. The release of a quick
// click overtakes its press then, and the control under it stays pressed. Once the settings are
// read, the service is not asked for.
void prepareForFirstClick() {
  SEL readSettings = NSSelectorFromString(@"mouseOptionsChanged:");
  id server = GSCurrentServer();
  if ([server respondsToSelector:readSettings])
    [server performSelector:readSettings withObject:nil];
}

// GNUstep's tables leave the style mask alone.
void showSolidGrid(NSTableView *table) {
  [table setDrawsGrid:YES];
}

void releaseTopLevelObjects(NSArray *objects) {
  [objects makeObjectsPerformSelector:@selector(release)];
}

} // namespace vireonix::platform
