#import "support/pixels.h"

#include <algorithm>
#include <cstdlib>

@implementation Canvas

- (void)setDrawing:(std::function<void(NSView *, NSRect)>)function {
  drawing = std::move(function);
}

- (void)setFlipped:(BOOL)flag {
  flipped = flag;
}

- (BOOL)isFlipped {
  return flipped;
}

- (void)drawRect:(NSRect)dirtyRect {
  if (drawing)
    drawing(self, dirtyRect);
}

@end

namespace vireonix::test {
namespace {} // namespace

bool isNear(Pixel a, Pixel b, int tolerance) {
  return std::abs(a.red - b.red) <= tolerance && std::abs(a.green - b.green) <= tolerance &&
         std::abs(a.blue - b.blue) <= tolerance;
}

Picture::Picture(NSView *view) {
  [view lockFocus];
  NSBitmapImageRep *rep =
      [[[NSBitmapImageRep alloc] initWithFocusedViewRect:[view bounds]] autorelease];
  [view unlockFocus];
  width_ = static_cast<int>([rep pixelsWide]);
  height_ = static_cast<int>([rep pixelsHigh]);
  pixels_.reserve(static_cast<std::size_t>(width_) * height_);
  for (int y = 0; y < height_; ++y) {
    for (int x = 0; x < width_; ++x) {
      NSUInteger samples[5] = {};
      [rep getPixel:samples atX:x y:y];
      pixels_.push_back({static_cast<int>(samples[0]), static_cast<int>(samples[1]),
                         static_cast<int>(samples[2])});
    }
  }
}

Pixel Picture::at(int x, int y) const {
  return pixels_.at(static_cast<std::size_t>(y) * width_ + x);
}

void Picture::each(NSRect rect, const std::function<void(Pixel)> &use) const {
  for (int y = static_cast<int>(NSMinY(rect)); y < static_cast<int>(NSMaxY(rect)); ++y)
    for (int x = static_cast<int>(NSMinX(rect)); x < static_cast<int>(NSMaxX(rect)); ++x)
      use(at(x, y));
}

int Picture::count(NSRect rect, const std::function<bool(Pixel)> &condition) const {
  int found = 0;
  each(rect, [&](Pixel pixel) { found += condition(pixel) ? 1 : 0; });
  return found;
}

int Picture::count(const std::function<bool(Pixel)> &condition) const {
  return count(NSMakeRect(0, 0, width_, height_), condition);
}

bool Picture::write(NSString *path) const {
  NSBitmapImageRep *rep =
      [[[NSBitmapImageRep alloc] initWithBitmapDataPlanes:nullptr pixelsWide:width_
                                               pixelsHigh:height_
                                            bitsPerSample:8
                                          samplesPerPixel:3
                                                 hasAlpha:NO
                                                 isPlanar:NO
                                           colorSpaceName:NSDeviceRGBColorSpace
                                              bytesPerRow:3 * static_cast<NSInteger>(width_)
                                             bitsPerPixel:24] autorelease];
  unsigned char *byte = [rep bitmapData];
  for (const Pixel &pixel : pixels_) {
    *byte++ = static_cast<unsigned char>(pixel.red);
    *byte++ = static_cast<unsigned char>(pixel.green);
    *byte++ = static_cast<unsigned char>(pixel.blue);
  }
  NSData *png = [rep representationUsingType:NSPNGFileType properties:@{}];
  return [png writeToFile:path atomically:YES];
}

NSWindow *windowShowing(NSView *view) {
  const NSRect content = NSMakeRect(200, 300, NSWidth([view frame]), NSHeight([view frame]));
  NSWindow *window = [[[NSWindow alloc] initWithContentRect:content styleMask:NSTitledWindowMask
                                                    backing:NSBackingStoreBuffered
                                                      defer:NO] autorelease];
  [window setReleasedWhenClosed:NO];
  [window setBackgroundColor:[NSColor whiteColor]];
  [[window contentView] addSubview:view];
  [view setFrameOrigin:NSZeroPoint];
  [window orderFront:nil];
  [window display];
  return window;
}

} // namespace vireonix::test
