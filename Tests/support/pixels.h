// Reads back what a view has drawn into its window.
#pragma once

#import <AppKit/AppKit.h>

#include <functional>
#include <vector>

namespace vireonix::test {

/// A colour with components from 0 to 255.
struct Pixel {
  int red = 0;
  int green = 0;
  int blue = 0;
  bool operator==(const Pixel &) const = default;
};

/// Whether no component differs by more than `tolerance`.
bool isNear(Pixel a, Pixel b, int tolerance = 3);

/// The picture of a view, pixel (0, 0) at its top left.
class Picture {
public:
  /// Copies what `view` shows; its window has to be on the display.
  explicit Picture(NSView *view);

  [[nodiscard]] int width() const { return width_; }
  [[nodiscard]] int height() const { return height_; }
  [[nodiscard]] Pixel at(int x, int y) const;
  /// Hands over every pixel of a rectangle (from the top left).
  void each(NSRect rect, const std::function<void(Pixel)> &use) const;
  /// How many pixels of a rectangle (from the top left) satisfy a condition.
  [[nodiscard]] int count(NSRect rect, const std::function<bool(Pixel)> &condition) const;
  [[nodiscard]] int count(const std::function<bool(Pixel)> &condition) const;
  /// Writes a PNG file; answers whether that worked.
  [[nodiscard]] bool write(NSString *path) const;

private:
  int width_ = 0;
  int height_ = 0;
  std::vector<Pixel> pixels_;
};

} // namespace vireonix::test

/// A view that draws what a test tells it to.
@interface Canvas : NSView {
  std::function<void(NSView *, NSRect)> drawing;
  BOOL flipped;
}
/// Called with the view and the dirty rectangle.
- (void)setDrawing:(std::function<void(NSView *, NSRect)>)function;
- (void)setFlipped:(BOOL)flag;
@end

namespace vireonix::test {

/// An autoreleased window on the display, as large as `view`, with that view in it. The pixels
/// that the view leaves alone are white.
NSWindow *windowShowing(NSView *view);

} // namespace vireonix::test
