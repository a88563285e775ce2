#include "WebKit/engine/web_toolkit.h"

#include "WebKit/engine/x_errors.h"

#include <cstdio>

namespace vireonix::platform {
namespace {

bool startGtk() {
  rememberHostErrorHandlers();
  gdk_set_allowed_backends("x11");
  // Core pointer events: with XInput, GTK would ask the server about the offscreen window, which it
  // does not know.
  gdk_disable_multidevice();
  // The locale is the host's business.
  gtk_disable_setlocale();
  if (gtk_init_check(nullptr, nullptr) == FALSE)
    return false;
  separateErrorHandlers();
  // Which presses belong together is decided by AppKit.
  g_object_set(gtk_settings_get_default(), "gtk-double-click-time", 0, nullptr);
  return true;
}

void refuseDownload(WebKitWebContext*, WebKitDownload* download, gpointer) {
  webkit_download_cancel(download);
}

} // namespace

WebToolkit& WebToolkit::shared() {
  // Never destroyed: a page may still end while the process exits.
  static auto* const toolkit = new WebToolkit;
  return *toolkit;
}

bool WebToolkit::start() {
  if (started_ != Started::notYet)
    return started_ == Started::yes;
  started_ = startGtk() ? Started::yes : Started::failed;
  if (started_ == Started::failed)
    std::fputs("WebView: no X display could be opened; pages are not shown.\n", stderr);
  return started_ == Started::yes;
}

WebKitWebContext* WebToolkit::acquireContext() {
  if (pages_++ > 0)
    return context_;
  context_ = webkit_web_context_new_ephemeral();
  // WebKit keeps what a page has shown, so that the same page loaded again is drawn at once. A page
  // whose files change while it is shown asks for them under new addresses.
  g_signal_connect(context_, "download-started", G_CALLBACK(refuseDownload), nullptr);
  return context_;
}

void WebToolkit::releaseContext() {
  if (--pages_ > 0)
    return;
  g_object_unref(context_);
  context_ = nullptr;
}

} // namespace vireonix::platform
