// The settings window's controller: the object that a host creates to open the plug-in's settings.
//
// One controller is one session: initialise, load the window, edit, close. When the window closes,
// the workspace is either kept as edited or put back as it was when the window opened; `closeMode`
// tells which. Main thread only, apart from `saveGlobalSettings` and `updatePositionFields`, which
// may be called from any thread.
#import <AppKit/AppKit.h>
#import <WebKit/WebKit.h>

#import "Core/workspace_backup.h"
#import "VireonixSettings.h"

#include <atomic>
#include <cstdint>

@class PositionRect;
@class PositionView;
@class PrivateView;

@interface PluginSettingsDelegate
    : NSWindowController <VireonixSettings, WebDownloadDelegate, WebResourceLoadDelegate,
                          WebUIDelegate, WebPolicyDelegate, WebFrameLoadDelegate> {
  NSView *PrivateSettingView;
  WebView *iWebView;
  NSView *positionDrawView;
  PositionView *positionView;
  PrivateView *privateView;
  NSTextField *txtLeft;
  NSTextField *txtTop;
  NSTextField *txtRight;
  NSTextField *txtBottom;
  NSTextField *txtTransparency;
  NSSlider *sldTrans;
  NSMatrix *matLayer;
  NSButton *btnDefault;
  NSButton *btnCancel;
  NSButton *btnOK;
  NSString *workSpace;
  NSString *bundlePath;
  BOOL isCloseBundle;
  BOOL isModalMode;
  int32_t closeMode;
  NSTimer *repeatTimer;
  std::atomic<bool> isChange;
  PositionRect *ptRect;
  NSString *backupSettingPath;
  BOOL isOKCancelButton;

  // Beyond the host's contract.
  BOOL hasEnded;   // the window has closed once
  BOOL isReverted; // the backup is back, or being put back: no save may follow. Under
                   // @synchronized(self)
  // OK has saved the position: threads that still want to do so are too late, and the process may
  // end while they write. Under @synchronized(self).
  BOOL isSavedForGood;
  std::atomic<uint64_t> snapshotsTaken; // of the position record, for saves
  uint64_t snapshotSaved; // the newest one that is in the file. Under @synchronized(self)
  vireonix::core::WorkspaceBackup backup; // this session's
  NSMutableArray *hiddenWebViews;         // made for pages that asked for a new window; retained
}

/// `code` is the user's language such as "en", `path` the absolute path of the plug-in bundle. Nil
/// keeps what an earlier controller of this process was given. Empties the backup folder.
- (id)initWithLanguageCode:(NSString *)code bundlePath:(NSString *)path;
- (void)initialParaments;

// Backup of the workspace (PluginSettingsDelegate+Preview.mm).
- (void)backupWorkSpace;
- (void)restoreWorkSpace;
- (void)removeBackupWorkSpace;

// Preview (PluginSettingsDelegate+Preview.mm).
- (void)webView:(WebView *)sender
    decidePolicyForNavigationAction:(NSDictionary *)actionInformation
                            request:(NSURLRequest *)request
                              frame:(WebFrame *)frame
                   decisionListener:(id<WebPolicyDecisionListener>)listener;
- (WebView *)webView:(WebView *)sender createWebViewWithRequest:(NSURLRequest *)request;
- (void)windowWillClose:(NSNotification *)notification;
- (void)onRepeatTimer:(NSTimer *)timer;
- (void)reloadPreview;

/// Same as `setIsModalMode:`. To be called before the window is loaded.
- (void)setModalMode:(BOOL)modal;

// Position (PluginSettingsDelegate+Position.mm).
- (void)saveGlobalSettings;
- (void)loadWorkSpaceSettings;
- (void)loadSettingsFromFile:(NSString *)path;
- (void)updatePositionFields;
- (void)controlTextDidChange:(NSNotification *)notification;
- (NSString *)checkFloatValueString:(NSString *)text;
- (IBAction)onTransparencyChange:(id)sender;
- (IBAction)onDefault:(id)sender;

- (IBAction)onCancel:(id)sender;
- (IBAction)onOK:(id)sender;

/// The folder that the session edits. Set it before the window is loaded; unset, the user's own
/// workspace is used.
@property(copy) NSString *workSpace;
@property(copy) NSString *bundlePath;
/// The session is over and the controller may be released.
@property(nonatomic, assign) BOOL isCloseBundle;
@property(nonatomic, assign) BOOL isModalMode;
/// 1: applied, the workspace is as edited. 0: reverted. Also the stop code of the modal session.
@property(nonatomic, assign) int32_t closeMode;
/// The workspace changed since the preview was last loaded. Any thread.
@property(nonatomic, assign) BOOL isChange;

// Outlets, set by the nib and not retained; `repeatTimer` belongs to the run loop.
@property(nonatomic, assign) IBOutlet NSView *PrivateSettingView;
@property(nonatomic, assign) IBOutlet WebView *iWebView;
@property(nonatomic, assign) IBOutlet NSView *positionDrawView;
@property(nonatomic, assign) IBOutlet NSTextField *txtLeft;
@property(nonatomic, assign) IBOutlet NSTextField *txtTop;
@property(nonatomic, assign) IBOutlet NSTextField *txtRight;
@property(nonatomic, assign) IBOutlet NSTextField *txtBottom;
@property(nonatomic, assign) IBOutlet NSTextField *txtTransparency;
@property(nonatomic, assign) IBOutlet NSSlider *sldTrans;
@property(nonatomic, assign) IBOutlet NSMatrix *matLayer;
@property(nonatomic, assign) IBOutlet NSButton *btnDefault;
@property(nonatomic, assign) IBOutlet NSButton *btnCancel;
@property(nonatomic, assign) IBOutlet NSButton *btnOK;
@property(nonatomic, assign) NSTimer *repeatTimer;

@end
