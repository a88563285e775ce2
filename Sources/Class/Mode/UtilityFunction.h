// Conversions that the editors share. Class methods without side effects; main thread.
#import <AppKit/AppKit.h>

@interface UtilityFunction : NSObject

/// What a numeric field keeps of its content after a key press: a last character that is neither a
/// digit nor the first point is removed. Empty for nil.
+ (NSString *)checkFloatValueStringFrom:(NSString *)text;
/// As above, for digits alone.
+ (NSString *)checkIntegerValueStringFrom:(NSString *)text;

/// "0x" and six upper-case digits for red, green and blue; "0x000000" for a colour that has no RGB
/// form, such as a pattern.
+ (NSString *)colorToHexRGB:(NSColor *)color;
/// The calibrated, opaque colour of a hexadecimal number with or without "0x"; black when there is
/// none. Never nil.
+ (NSColor *)colorFromHexRGB:(NSString *)text;

/// The text when it is a URL with a scheme, else the text behind "http://".
+ (NSString *)checkUrlString:(NSString *)text;

@end
