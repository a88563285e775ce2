// Windows with the application's icon: GNUstep gives each window the icon that the application had
// when the first one was made, which is always GNUstep's own.
#import "Theme/GNUstep/ThemeClass.h"
#import "Theme/GNUstep/window_icon.h"

#import <AppKit/AppKit.h>
#import <GNUstepGUI/GSDisplayServer.h>

using namespace vireonix::host;

namespace {

unsigned long argb(NSBitmapImageRep *picture, NSInteger x, NSInteger y) {
  constexpr unsigned kByte = 8;
  NSUInteger samples[5] = {};
  [picture getPixel:samples atX:x y:y];
  const NSUInteger alpha = [picture hasAlpha] ? samples[3] : 255;
  unsigned long pixel = alpha;
  for (int channel = 0; channel < 3; ++channel)
    pixel = pixel << kByte | samples[channel];
  return pixel;
}

// Only a square picture of pixels is one that window managers can show; empty for another.
IconPixels pixelsOf(NSImage *image) {
  IconPixels icon;
  for (NSImageRep *rep in [image representations]) {
    if (![rep isKindOfClass:[NSBitmapImageRep class]] || [rep pixelsWide] != [rep pixelsHigh])
      continue;
    auto *picture = static_cast<NSBitmapImageRep *>(rep);
    icon.side = static_cast<int>([picture pixelsWide]);
    for (NSInteger y = 0; y < icon.side; ++y)
      for (NSInteger x = 0; x < icon.side; ++x)
        icon.pixels.push_back(argb(picture, x, y));
    break;
  }
  return icon;
}

} // namespace

void vireonix::host::showApplicationIcon(NSWindow *window) {
  const IconPixels icon = pixelsOf([NSApp applicationIconImage]);
  GSDisplayServer *server = GSServerForWindow(window);
  if (icon.side == 0 || server == nil)
    return;
  showWindowIcon([server serverDevice], reinterpret_cast<unsigned long>([window windowRef]), icon);
}
