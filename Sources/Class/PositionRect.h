// The position record: where the slider stands on the page. The main thread's, apart from the six
// values: any thread may read and write them, each alone or all at once.
#import <AppKit/AppKit.h>

#include "Core/position.h"

#include <cstdint>

@interface PositionRect : NSObject {
  float left;
  float top;
  float right;
  float bottom;
  float transparency;
  int32_t layer;
}

/// The object's rectangle, in points from the lower left, on a canvas of the given size. Margins
/// that add up to more than 100 give a negative size.
- (NSRect)getObjectFrameWithSize:(NSSize)size;

/// Writes the six-line position file in one step. A failure leaves the old file and is not
/// reported. Any thread.
- (void)saveToFile:(NSString *)path;

/// Margins: distance from the page edge of that name in percent of the page's width or height.
@property(assign) float left;
@property(assign) float top;
@property(assign) float right;
@property(assign) float bottom;
/// Percent.
@property(assign) float transparency;
/// The tag of the chosen layer button.
@property(assign) int32_t layer;

/// As getObjectFrameWithSize: of `rect`; a zero rectangle for nil.
+ (NSRect)getObjectFrameWith:(PositionRect *)rect OutlineSize:(NSSize)size;

/// The six values at once, by way of the accessors above. What one thread reads so is never half of
/// what another writes so.
- (vireonix::core::Position)position;
- (void)setPosition:(const vireonix::core::Position &)position;

@end
