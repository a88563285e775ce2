// The user's language and the plug-in bundle's path, kept for the whole process, and the plug-in's
// own strings table. All of it is for the main thread. The names are exported with C linkage, so a
// host can call them.
#import <Foundation/Foundation.h>

#import "Bridge/export.h"

VIREONIX_EXPORT_BEGIN

/// Keeps a copy of the language code, such as "en"; it also names the folder of localised nibs.
void setDefaultLanguageCode(NSString *code);
/// The stored language code, or nil.
NSString *defaultLanguageCode(void);

/// Keeps a copy of the absolute path of the plug-in bundle.
void setDefaultBundlePath(NSString *path);
/// The stored bundle path, or nil.
NSString *defaultBundlePath(void);

/// The translation of `key`, or `defaultString` when there is none or when it equals the key. The
/// table is loaded once per process, at the first successful lookup.
NSString *loadAppString(NSString *key, NSString *defaultString);

VIREONIX_EXPORT_END
