// The contract between the plug-in and its host: everything that a host calls, on the main thread.
//
//   NSBundle *bundle = [NSBundle bundleWithPath:path];
//   id<VireonixSettings> settings = [[[bundle principalClass] alloc] initWithLanguageCode:@"en"
//   bundlePath:path]; [settings setWorkSpace:folder];   // optional [settings setModalMode:YES]; //
//   before the window, if it will run modally NSInteger outcome = [NSApp
//   runModalForWindow:[settings window]];   // equals [settings closeMode] [settings release];
#import <AppKit/AppKit.h>

@protocol VireonixSettings <NSObject>

/// The user's language, such as "en", and the bundle's absolute path. One object is one session.
- (id)initWithLanguageCode:(NSString *)code bundlePath:(NSString *)path;

/// The folder that holds the slider. Without one, the user's own workspace is used.
- (void)setWorkSpace:(NSString *)folder;

/// YES when the window will run in a modal session. Before the first call of `window`.
- (void)setModalMode:(BOOL)modal;

/// The settings window; the first call loads it. Nil when the bundle holds no nib for it.
- (NSWindow *)window;

/// After the session. 1: the workspace is as edited. 0: it is as it was when the window opened.
- (int32_t)closeMode;

/// YES once the session is over and the object may be released.
- (BOOL)isCloseBundle;

@end
