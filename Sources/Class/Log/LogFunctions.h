// The logging functions that the bundle offers its host; the plug-in itself never calls them.
// `format` is in the style of +stringWithFormat:. Any thread; each call brings its own autorelease
// pool.
#import <Foundation/Foundation.h>

#import "Bridge/export.h"

VIREONIX_EXPORT_BEGIN

/// Does nothing; the arguments are not formatted.
void logDebug(NSString *format, ...);

/// Adds a time-stamped entry to "Log.txt" in the log folder, which must exist; a file above 4 MiB
/// is first moved to `backupLog`. A nil format writes no entry. Failures are ignored.
void logSave(NSString *format, ...);

/// Writes "Error:" and the message ("nil" for a nil format) to the console.
void logError(NSString *format, ...);

/// Writes "Warn:" and the message ("nil" for a nil format) to the console.
void logWarn(NSString *format, ...);

VIREONIX_EXPORT_END
