// The picture that a window manager shows for a window (_NET_WM_ICON of the Extended Window Manager
// Hints). X11's names stay in the one file behind this header.
#pragma once

#include <vector>

namespace vireonix::host {

/// A square picture: rows from the top, each pixel 0xAARRGGBB, not premultiplied.
struct IconPixels {
  int side = 0;
  std::vector<unsigned long> pixels;
};

/// `display` is the X11 connection that owns the window.
void showWindowIcon(void* display, unsigned long window, const IconPixels& icon);

} // namespace vireonix::host
