// The position canvas: a picture of the book page with the slider on it as a box that the user
// moves and resizes with the mouse. It owns the record that it shows. Main thread only.
#import <AppKit/AppKit.h>

#include <cstdint>

@class ObjectView;
@class PositionRect;

@interface PositionView : NSView {
  PositionRect *positionRect;
  ObjectView *objectView;
  NSPoint initPoint; // in window coordinates, rounded to 32-bit floats
  id ower;
  NSColor *fillColor;
  NSColor *outlineColor;
}

/// Stores the six values in the canvas's own record and redraws. Margins and transparency in
/// percent.
- (void)setLeft:(float)left
             Top:(float)top
           Right:(float)right
          Bottom:(float)bottom
    Transparency:(float)transparency
           Layer:(int32_t)layer;

/// Copies the values of a record into the canvas's own and redraws.
- (void)loadPositionRect:(PositionRect *)rect;

/// The canvas's own record, not a copy.
- (PositionRect *)positionRect;

/// Not retained. After each drag step its method `updatePositionFields` runs on a new thread, which
/// keeps it alive meanwhile.
@property(nonatomic, assign) id ower;
/// Colours of the page; nil stands for the system's. Not retained.
@property(nonatomic, assign) NSColor *fillColor;
@property(nonatomic, assign) NSColor *outlineColor;

@end
