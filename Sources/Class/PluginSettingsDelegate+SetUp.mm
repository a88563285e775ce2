#import "Class/PluginSettingsDelegate+SetUp.h"

#import "Bridge/text.h"
#import "Class/PluginSettingsInfo.h"
#import "Class/PositionView.h"
#import "NSWindowController+SelectedLanguage.h"
#import "Platform/desktop.h"
#import "vireonix/PrivateView.h"

using vireonix::platform::releaseTopLevelObjects;

static NSString *const kDefaultWorkSpaceName = @"vireonix";
static const NSTimeInterval kPreviewInterval = 0.33;

// Stands between the preview's timer and the controller. A timer retains its target as long as it
// repeats, and nobody but the controller ends it: a host's release would not be the last one.
@interface PreviewTick : NSObject {
  PluginSettingsDelegate *controller; // ends the timer before it goes
}
- (id)initWithController:(PluginSettingsDelegate *)receiver;
- (void)tick:(NSTimer *)timer;
@end

@implementation PreviewTick

- (id)initWithController:(PluginSettingsDelegate *)receiver {
  self = [super init];
  if (self != nil)
    controller = receiver;
  return self;
}

- (void)tick:(NSTimer *)timer {
  // What a page's loading calls may let go of the controller.
  [[controller retain] autorelease];
  [controller onRepeatTimer:timer];
}

@end

@implementation PluginSettingsDelegate (SetUp)

- (void)wireControls {
  [txtLeft setDelegate:static_cast<id>(self)];
  [txtTop setDelegate:static_cast<id>(self)];
  [txtRight setDelegate:static_cast<id>(self)];
  [txtBottom setDelegate:static_cast<id>(self)];
  [txtTransparency setDelegate:static_cast<id>(self)];
  [sldTrans setTarget:self];
  [sldTrans setAction:@selector(onTransparencyChange:)];
  [btnDefault setTarget:self];
  [btnDefault setAction:@selector(onDefault:)];
  [btnCancel setTarget:self];
  [btnCancel setAction:@selector(onCancel:)];
  [btnOK setTarget:self];
  [btnOK setAction:@selector(onOK:)];
}

// The plug-in's bundle where there is one, else the process's.
- (NSBundle *)panelBundle {
  const BOOL exists = [[NSFileManager defaultManager] fileExistsAtPath:bundlePath];
  return exists ? [NSBundle bundleWithPath:bundlePath] : [NSBundle mainBundle];
}

- (void)loadPanel {
  NSNib *nib = [[NSNib alloc] initWithResourceNibName:@"PrivateView" bundle:[self panelBundle]];
  PrivateView *temporaryOwner = [[PrivateView alloc] init];
  NSArray *objects = nil;
  BOOL overRetained = YES;
  @try {
    [nib instantiateNibWithOwner:temporaryOwner topLevelObjects:&objects];
  } @catch (NSException *) {
    overRetained = NO;
    [nib instantiateWithOwner:temporaryOwner topLevelObjects:&objects];
  }
  for (id object in objects) {
    if ([object isKindOfClass:[PrivateView class]]) {
      [object retain];
      [privateView release];
      privateView = object;
    }
  }
  if (overRetained)
    releaseTopLevelObjects(objects);
  [temporaryOwner release];
  [nib release];
}

- (void)setUpPanel {
  [privateView setFrame:PrivateSettingView != nil ? [PrivateSettingView frame] : NSZeroRect];
  [privateView setAutoresizesSubviews:YES];
  if (workSpace == nil) {
    [self setWorkSpace:[[PluginSettingsInfo getSavePluginPath]
                           stringByAppendingPathComponent:kDefaultWorkSpaceName]];
  }
  vireonix::core::clearLeftovers(vireonix::bridge::path(workSpace));
  [privateView setWorkSpace:workSpace];
  [privateView setOwer:self];
  [privateView setBundlePath:bundlePath];
  [privateView loadDispInfo];
}

// The Tab key goes through the panel where it went through the placeholder.
- (void)joinKeyViewLoop {
  NSView *last = privateView;
  while ([[last nextKeyView] isDescendantOf:privateView])
    last = [last nextKeyView];
  [last setNextKeyView:[PrivateSettingView nextKeyView]];
  [[PrivateSettingView previousKeyView] setNextKeyView:privateView];
  [[self window] setInitialFirstResponder:[privateView nextKeyView]];
}

- (void)placePanel {
  if (PrivateSettingView != nil && privateView != nil) {
    [privateView setAutoresizingMask:[PrivateSettingView autoresizingMask]];
    [self joinKeyViewLoop];
  }
  [PrivateSettingView removeFromSuperview];
  PrivateSettingView = nil;
  if (privateView != nil)
    [[[self window] contentView] addSubview:privateView];
}

- (void)startPreviewTimer {
  // The first tick loads the preview: there is nothing to wait for.
  PreviewTick *target = [[PreviewTick alloc] initWithController:self];
  repeatTimer = [[NSTimer alloc] initWithFireDate:[NSDate date] interval:kPreviewInterval
                                           target:target
                                         selector:@selector(tick:)
                                         userInfo:nil
                                          repeats:YES];
  [target release];
  [[NSRunLoop currentRunLoop] addTimer:repeatTimer forMode:isModalMode ? NSModalPanelRunLoopMode
                                                                       : NSDefaultRunLoopMode];
  [repeatTimer release];
}

- (void)stopPreviewTimer {
  if ([repeatTimer isValid])
    [repeatTimer invalidate];
  repeatTimer = nil;
}

- (void)wireWebView:(id)delegate {
  [iWebView setDownloadDelegate:delegate];
  [iWebView setResourceLoadDelegate:delegate];
  [iWebView setUIDelegate:delegate];
  [iWebView setPolicyDelegate:delegate];
  [iWebView setFrameLoadDelegate:delegate];
}

// Controls may outlive the controller for a while, as a window that was never closed does.
- (void)detachFromControls {
  NSTextField *const fields[] = {txtLeft, txtTop, txtRight, txtBottom, txtTransparency};
  for (NSTextField *field : fields) {
    if ([field delegate] == static_cast<id>(self))
      [field setDelegate:nil];
  }
  NSControl *const senders[] = {sldTrans, btnDefault, btnCancel, btnOK};
  for (NSControl *sender : senders) {
    if ([sender target] == self)
      [sender setTarget:nil];
  }
}

- (void)detachFromViews {
  [self wireWebView:nil];
  [self detachFromControls];
  for (WebView *view in hiddenWebViews) {
    [view setPolicyDelegate:nil];
    [view close];
  }
  [privateView setOwer:nil];
  [positionView setOwer:nil];
  if ([self isWindowLoaded] && [[self window] delegate] == static_cast<id>(self))
    [[self window] setDelegate:nil];
}

@end
