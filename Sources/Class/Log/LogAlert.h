// Modal alerts with fixed English buttons. Main thread only; title and text are shown as given,
// already localised.
#import <AppKit/AppKit.h>

@interface LogAlert : NSObject

/// One button, "OK".
+ (void)showMessage:(NSString *)title Text:(NSString *)text;

/// "YES" (Return) and "NO" (Escape). NO only when "NO" ended the alert.
+ (BOOL)askYesNo:(NSString *)title Text:(NSString *)text;

/// "OK" and "Cancel". NO only when "Cancel" ended the alert.
+ (BOOL)askOKCancel:(NSString *)title Text:(NSString *)text;

@end
