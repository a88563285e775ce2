#import "session.h"

#import "Platform/wake_event.h"
#import "VireonixSettings.h"
#import "icon.h"

// Ends the application's run loop once the settings window has closed.
@interface SessionEnd : NSObject <NSApplicationDelegate> {
  id<VireonixSettings> settings;
}
- (id)initWithSettings:(id<VireonixSettings>)watched;
@end

@implementation SessionEnd

- (id)initWithSettings:(id<VireonixSettings>)watched {
  if ((self = [super init])) {
    settings = watched;
    [[NSNotificationCenter defaultCenter] addObserver:self selector:@selector(windowWillClose:)
                                                 name:NSWindowWillCloseNotification
                                               object:[settings window]];
  }
  return self;
}

- (void)dealloc {
  [[NSNotificationCenter defaultCenter] removeObserver:self];
  [super dealloc];
}

// The end of the session ends the loop, not the closing of a window: the outcome is still to be
// read, and the plug-in may be asking a question meanwhile.
- (BOOL)applicationShouldTerminateAfterLastWindowClosed:(NSApplication *)application {
  return NO;
}

// The plug-in's own handler of the same notification may still have to run.
- (void)windowWillClose:(NSNotification *)notification {
  [self performSelector:@selector(stopWhenOver) withObject:nil afterDelay:0];
}

- (void)stopWhenOver {
  if (![settings isCloseBundle])
    return;
  [NSApp stop:self];
  // The loop looks at its stop flag only after an event.
  [NSApp postEvent:vireonix::platform::wakeEvent() atStart:NO];
}

@end

namespace vireonix::host {
namespace {

NSString *stringOf(const std::string &path) {
  return [[NSFileManager defaultManager] stringWithFileSystemRepresentation:path.data()
                                                                     length:path.size()];
}

Class loadPrincipalClass(NSString *path) {
  NSBundle *bundle = [NSBundle bundleWithPath:path];
  Class principal = [bundle principalClass];
  // Not by the protocol: an executable in which no class adopts it holds no usable protocol object
  // on gcc's runtime.
  const BOOL isOurs = [principal instancesRespondToSelector:@selector(initWithLanguageCode:
                                                                                bundlePath:)];
  return isOurs ? principal : Nil;
}

void runUntilClosed(id<VireonixSettings> settings, NSWindow *window) {
  SessionEnd *end = [[SessionEnd alloc] initWithSettings:settings];
  [NSApp setDelegate:end];
  [window makeKeyAndOrderFront:nil];
  [NSApp run];
  [NSApp setDelegate:nil];
  [end release];
}

Outcome runWindow(id<VireonixSettings> settings, NSWindow *window, bool modal) {
  Outcome outcome;
  [window center];
  [NSApp activateIgnoringOtherApps:YES];
  if (modal)
    outcome.stopCode = static_cast<int>([NSApp runModalForWindow:window]);
  else
    runUntilClosed(settings, window);
  [window orderOut:nil];
  outcome.closeMode = [settings closeMode];
  outcome.isCloseBundle = [settings isCloseBundle];
  return outcome;
}

} // namespace

SessionResult runSession(const Options &options, const std::string &bundlePath) {
  @autoreleasepool {
    NSString *path = stringOf(bundlePath);
    Class principal = loadPrincipalClass(path);
    if (principal == Nil)
      return "not a vireonix plug-in: " + bundlePath;

    id<VireonixSettings> settings =
        [[principal alloc] initWithLanguageCode:stringOf(options.language) bundlePath:path];
    if (!options.workspace.empty())
      [settings setWorkSpace:stringOf(options.workspace)];
    [settings setModalMode:options.modal];
    // Here, because loading a bundle puts GNUstep's own icon back; windows take it when they are
    // made.
    [NSApp setApplicationIconImage:applicationIcon()];
    NSWindow *window = [settings window];
    SessionResult result = "the plug-in has no settings window: " + bundlePath;
    if (window != nil)
      result = runWindow(settings, window, options.modal);
    [settings release];
    return result;
  }
}

} // namespace vireonix::host
