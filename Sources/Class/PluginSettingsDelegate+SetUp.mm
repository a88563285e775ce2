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
  repeatTimer = [[NSTimer alloc] initWithFireDate:[NSDate date] interval:kPreviewInterval
                                           target:self
                                         selector:@selector(onRepeatTimer:)
                                         userInfo:nil
                                          repeats:YES];
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

- (void)detachFromViews {
  [self wireWebView:nil];
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
