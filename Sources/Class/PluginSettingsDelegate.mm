#import "Class/PluginSettingsDelegate.h"

#import "Bridge/text.h"
#import "Class/Log/LogAlert.h"
#import "Class/PluginSettingsDelegate+SetUp.h"
#import "Class/PositionRect.h"
#import "Core/workspace_backup.h"
#import "Locale.h"
#import "NSWindowController+SelectedLanguage.h"
#import "Platform/desktop.h"
#import "vireonix/PrivateView.h"

static NSString *const kDisplayTitle = @"vireonix";
static NSString *const kBackupFolderName = @"vireonix";

static const int32_t kCloseModeRevert = 0;
static const int32_t kCloseModeApply = 1;

@implementation PluginSettingsDelegate

@synthesize workSpace;
@synthesize bundlePath;
@synthesize isCloseBundle;
@synthesize isModalMode;
@synthesize closeMode;
@synthesize PrivateSettingView;
@synthesize iWebView;
@synthesize positionDrawView;
@synthesize txtLeft;
@synthesize txtTop;
@synthesize txtRight;
@synthesize txtBottom;
@synthesize txtTransparency;
@synthesize sldTrans;
@synthesize matLayer;
@synthesize btnDefault;
@synthesize btnCancel;
@synthesize btnOK;
@synthesize repeatTimer;

- (id)initWithLanguageCode:(NSString *)code bundlePath:(NSString *)path {
  if (code != nil)
    setDefaultLanguageCode(code);
  if (path != nil)
    setDefaultBundlePath(path);
  self = [self initWithResourceNibName:@"PluginSettingsDelegate"];
  if (self == nil)
    return nil;
  [self setBundlePath:path];
  [self initialParaments];
  return self;
}

- (void)initialParaments {
  ptRect = [[PositionRect alloc] init];
  backupSettingPath =
      [[NSTemporaryDirectory() stringByAppendingPathComponent:kBackupFolderName] copy];
  (void)backup.prepare(vireonix::bridge::path(backupSettingPath));
}

- (void)dealloc {
  [iWebView stopLoading:self];
  [self detachFromViews];
  [ptRect release];
  [self stopPreviewTimer];
  [privateView release];
  [positionView release];
  [hiddenWebViews release];
  [workSpace release];
  [bundlePath release];
  [backupSettingPath release];
  [super dealloc];
}

// Some platforms raise where others log and go on without a window.
- (void)loadWindow {
  @try {
    [super loadWindow];
  } @catch (NSException *exception) {
    NSLog(@"No settings window in %@: %@", defaultBundlePath(), [exception reason]);
  }
}

- (void)awakeFromNib {
  NSString *title = loadAppString(@"Plugin Settings - %@", @"Plugin Settings - %@");
  [[self window] setTitle:[title stringByReplacingOccurrencesOfString:@"%@"
                                                           withString:kDisplayTitle]];
  [self wireControls];
  vireonix::platform::prepareForFirstClick();
  [self loadPanel];
  [self setUpPanel];
  [self placePanel];
  [self loadWorkSpaceSettings];
  [self startPreviewTimer];
  [self wireWebView:self];
  [self setIsChange:YES];
  [self backupWorkSpace];
}

- (void)windowWillClose:(NSNotification *)notification {
  if (hasEnded)
    return;
  hasEnded = YES;
  // A colour that is being chosen belongs to what the question is about.
  [privateView endColorChoice];
  [self stopPreviewTimer];
  if (!isOKCancelButton) {
    NSString *question = @"Do you want to apply the settings?";
    const BOOL apply = [LogAlert askOKCancel:loadAppString(question, question) Text:@""];
    [self setCloseMode:apply ? kCloseModeApply : kCloseModeRevert];
  }
  if ([self closeMode] == kCloseModeApply)
    [self removeBackupWorkSpace];
  else
    [self restoreWorkSpace];
  [self setIsCloseBundle:YES];
  if (![privateView endSessionAfterColorChoice:[self closeMode]])
    vireonix::platform::stopModalSession([self closeMode]);
}

- (IBAction)onCancel:(id)sender {
  if (hasEnded)
    return;
  isOKCancelButton = YES;
  [self setCloseMode:kCloseModeRevert];
  [self close];
}

- (IBAction)onOK:(id)sender {
  if (hasEnded)
    return;
  isOKCancelButton = YES;
  [self setCloseMode:kCloseModeApply];
  [privateView onSave:nil];
  // The panel has the position saved on a thread of its own; a host may end the process before
  // that.
  [self saveGlobalSettings];
  @synchronized(self) {
    isSavedForGood = YES;
  }
  [self close];
}

- (void)setModalMode:(BOOL)modal {
  [self setIsModalMode:modal];
}

- (BOOL)isChange {
  return isChange.load() ? YES : NO;
}

- (void)setIsChange:(BOOL)changed {
  isChange.store(changed);
}

@end
