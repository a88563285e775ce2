#import "Class/Mode/UtilityFunction.h"

#import "Bridge/text.h"

#include "Core/colour_text.h"
#include "Core/number_text.h"

#include <string>
#include <string_view>

using namespace vireonix;

static NSString *filtered(NSString *text, std::u16string_view (*filter)(std::u16string_view)) {
  const std::u16string units = bridge::utf16(text);
  const std::u16string_view kept = filter(units);
  if (kept.empty())
    return @"";
  return kept.size() == units.size() ? text : [text substringToIndex:kept.size()];
}

@implementation UtilityFunction

+ (NSString *)checkFloatValueStringFrom:(NSString *)text {
  return filtered(text, core::filterFloatText);
}

+ (NSString *)checkIntegerValueStringFrom:(NSString *)text {
  return filtered(text, core::filterIntegerText);
}

// Nil where there is none; some platforms raise instead for a pattern.
+ (NSColor *)calibratedColor:(NSColor *)color {
  @try {
    return [color colorUsingColorSpaceName:NSCalibratedRGBColorSpace];
  } @catch (NSException *) {
    return nil;
  }
}

+ (NSString *)colorToHexRGB:(NSColor *)color {
  NSColor *calibrated = [self calibratedColor:color];
  if (calibrated == nil)
    return @"0x000000";
  return bridge::string(core::colourText({static_cast<float>([calibrated redComponent]),
                                          static_cast<float>([calibrated greenComponent]),
                                          static_cast<float>([calibrated blueComponent])}));
}

+ (NSColor *)colorFromHexRGB:(NSString *)text {
  const core::Colour colour = core::colourOfText(bridge::utf8(text));
  NSColor *color = [NSColor colorWithCalibratedRed:colour.red green:colour.green blue:colour.blue
                                             alpha:1.0];
  return color != nil ? color : [NSColor blackColor];
}

+ (NSString *)checkUrlString:(NSString *)text {
  if (text == nil)
    return @"http://";
  NSString *copied = [[text copy] autorelease];
  if ([[NSURL URLWithString:copied] scheme] != nil)
    return copied;
  return [@"http://" stringByAppendingString:copied];
}

@end
