#include "WebKit/engine/x_errors.h"

#include <gdk/gdkx.h>

namespace vireonix::platform {
namespace {

XErrorHandler hostHandler = nullptr;
XIOErrorHandler hostConnectionHandler = nullptr;
XErrorHandler gdkHandler = nullptr;
Display* gdkDisplay = nullptr;

int dispatchError(Display* display, XErrorEvent* event) {
  XErrorHandler handler = display == gdkDisplay ? gdkHandler : hostHandler;
  return handler == nullptr ? 0 : handler(display, event);
}

} // namespace

void rememberHostErrorHandlers() {
  // Xlib tells a handler only when another one takes its place.
  hostHandler = XSetErrorHandler(nullptr);
  XSetErrorHandler(hostHandler);
  hostConnectionHandler = XSetIOErrorHandler(nullptr);
  XSetIOErrorHandler(hostConnectionHandler);
}

void separateErrorHandlers() {
  gdkDisplay = gdk_x11_get_default_xdisplay();
  gdkHandler = XSetErrorHandler(dispatchError);
  XSetIOErrorHandler(hostConnectionHandler);
}

} // namespace vireonix::platform
