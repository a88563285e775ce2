// The box that stands for the slider on the position canvas. It finds out where it was grabbed and
// passes the mouse events on to the canvas. Main thread only.
#import <AppKit/AppKit.h>

#include <cstdint>

/// Where a mouse gesture on the box stands: the values of `mouseState`.
inline constexpr int32_t kMouseIdle = 0;
inline constexpr int32_t kMousePressed = 1;
inline constexpr int32_t kMouseDragging = 2;
inline constexpr int32_t kMouseReleased = 3;

@interface ObjectView : NSView {
  id ower;
  int32_t mouseState;
  int32_t dragMode;
  NSColor *fillColor;
  NSColor *outlineColor;
}

/// The canvas that contains the box; not retained.
@property(nonatomic, assign) id ower;
@property(nonatomic, assign) int32_t mouseState;
/// The edges that the present gesture moves, combined from vireonix::core::kLeftEdge and its like;
/// 0 moves the whole box.
@property(nonatomic, assign) int32_t dragMode;
/// Not used in drawing; not retained.
@property(nonatomic, assign) NSColor *fillColor;
@property(nonatomic, assign) NSColor *outlineColor;

@end
