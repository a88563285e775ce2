// The inside of a page, shared by the files that implement it.
#pragma once

#include "WebKit/engine/web_page.h"

#include <functional>
#include <vector>
#include <webkit2/webkit2.h>

namespace vireonix::platform {

class HeldDecision;

/// The start of a page's process. It outlives the page.
struct ProcessStart {
  bool done = false;
  /// What waits for the end of the start.
  std::function<void()> afterwards;
};

struct WebPage::State {
  explicit State(WebPageClient& pageClient) : client(&pageClient) {}

  static WebKitWebView* viewOf(const WebPage& page) { return page.state_->view; }

  WebPageClient* client;
  /// An offscreen window: GTK draws the page into its surface and shows nothing on the screen.
  GtkWidget* window = nullptr;
  WebKitWebView* view = nullptr;
  /// Null when the process was not started ahead.
  std::shared_ptr<ProcessStart> start;
  std::vector<std::weak_ptr<HeldDecision>> decisions;
  std::vector<WebKitWebResource*> resources;
  bool committed = false;
  bool failed = false;
  bool crashed = false;
  /// Whether the process runs a page, be it the one before the load that is under way.
  bool hasPage = false;
  bool focused = false;
  /// GDK's bits of the buttons held down.
  unsigned buttons = 0;
  /// KeyModifier bits of the keys held down.
  unsigned modifiers = 0;
  PageCursor cursor = PageCursor::arrow;
};

/// A decision of WebKit's, held until somebody answers.
class HeldDecision final : public PolicyDecision {
public:
  explicit HeldDecision(WebKitPolicyDecision* decision);
  HeldDecision(const HeldDecision&) = delete;
  HeldDecision& operator=(const HeldDecision&) = delete;
  ~HeldDecision() override;
  void answer(PolicyAnswer answer) override;

private:
  WebKitPolicyDecision* decision_;
};

/// Text of GLib's, which may be null.
std::string text(const char* utf8);

// Each connects the page's signals of its subject; `state` outlives the connections.
void connectPolicySignals(WebPage::State& state);
void connectLoadSignals(WebPage::State& state);
void connectWindowSignals(WebPage::State& state);
void connectRefusals(WebPage::State& state);
void connectInputSignals(WebPage::State& state);
void connectPixelSignals(WebPage::State& state);

/// The keysym of what a key types, or of AppKit's private code of a function key.
guint keyValue(char32_t character);

} // namespace vireonix::platform
