#include "Theme/GNUstep/window_icon.h"

#include <X11/Xatom.h>
#include <X11/Xlib.h>

namespace vireonix::host {

void showWindowIcon(void* display, unsigned long window, const IconPixels& icon) {
  auto* connection = static_cast<Display*>(display);
  const auto side = static_cast<unsigned long>(icon.side);
  std::vector<unsigned long> values{side, side};
  values.insert(values.end(), icon.pixels.begin(), icon.pixels.end());
  // Values of 32 bits travel as longs.
  constexpr int kBits = 32;
  XChangeProperty(connection, window, XInternAtom(connection, "_NET_WM_ICON", False), XA_CARDINAL,
                  kBits, PropModeReplace, reinterpret_cast<const unsigned char*>(values.data()),
                  static_cast<int>(values.size()));
}

} // namespace vireonix::host
