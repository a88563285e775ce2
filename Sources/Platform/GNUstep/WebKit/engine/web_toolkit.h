// What all pages share: GTK, started once, and WebKit's context with its network process, which
// lives as long as any page.
#pragma once

#include <webkit2/webkit2.h>

namespace vireonix::platform {

class WebToolkit {
public:
  static WebToolkit& shared();

  /// Starts GTK on first use. False when there is no display, said once on the console.
  bool start();

  /// The context, made for the first page. Each acquire needs a release.
  WebKitWebContext* acquireContext();
  void releaseContext();

private:
  WebToolkit() = default;
  enum class Started : unsigned char { notYet, yes, failed };
  Started started_ = Started::notYet;
  int pages_ = 0;
  WebKitWebContext* context_ = nullptr;
};

} // namespace vireonix::platform
