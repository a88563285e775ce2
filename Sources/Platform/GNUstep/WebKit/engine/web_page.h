// One web page: WebKitGTK behind plain types. No GTK, X11 or Objective-C name crosses this border.
//
// Main thread only. All sizes and positions are in points from the page's top left corner. Texts
// are UTF-8.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace vireonix::platform {

/// Bits of the `modifiers` fields.
enum KeyModifier : unsigned {
  kShiftKey = 1,
  kControlKey = 2,
  kAlternateKey = 4,
  kCommandKey = 8,
};

enum class MouseButton : std::uint8_t { none, left, right, middle };

enum class PolicyAnswer : std::uint8_t { use, ignore, download };

/// One question about a navigation. The first answer counts; destroyed without one, it ignores. It
/// may outlive its page: answers then do nothing.
class PolicyDecision {
public:
  PolicyDecision() = default;
  PolicyDecision(const PolicyDecision&) = delete;
  PolicyDecision& operator=(const PolicyDecision&) = delete;
  virtual ~PolicyDecision() = default;
  virtual void answer(PolicyAnswer answer) = 0;
};

/// What the page wants to do.
struct PolicyRequest {
  enum class Kind : std::uint8_t { navigation, newWindow, content };
  Kind kind = Kind::navigation;
  std::string url;
  /// 0 link, 1 form, 2 back or forward, 3 reload, 4 form again, 5 other.
  int navigationType = 5;
  MouseButton button = MouseButton::none;
  unsigned modifiers = 0;
  /// Of a new window.
  std::string frameName;
  /// Of content.
  std::string mimeType;
  bool canBeShown = true;
};

struct LoadFailure {
  enum class Cause : std::uint8_t { cancelled, refusedByPolicy, fileMissing, other };
  Cause cause = Cause::other;
  std::string url;
  std::string message;
  /// The page had begun to appear.
  bool committed = false;
};

enum class LoadStep : std::uint8_t { started, redirected, committed, finished };

enum class ResourceStep : std::uint8_t { started, finished, failed };

enum class PageCursor : std::uint8_t { arrow, hand, text };

/// Pixels of the page: four bytes each, red, green, blue, 255; rows without padding.
struct PagePixels {
  int width = 0;
  int height = 0;
  /// Pixels to a point.
  int scale = 1;
};

class WebPage;

/// Hears of the page. The page may be destroyed within any of these calls.
class WebPageClient {
public:
  WebPageClient() = default;
  WebPageClient(const WebPageClient&) = delete;
  WebPageClient& operator=(const WebPageClient&) = delete;
  virtual ~WebPageClient() = default;

  virtual void decide(const PolicyRequest& request, std::shared_ptr<PolicyDecision> decision) = 0;
  virtual void loadStepped(LoadStep step) = 0;
  /// A load that failed does not also finish.
  virtual void loadFailed(const LoadFailure& failure) = 0;
  virtual void titleChanged(const std::string& title) = 0;
  virtual void resourceStepped(ResourceStep step, std::uint64_t resource, const std::string& url,
                               const std::string& error) = 0;
  /// A new window was allowed: the page it shall open in, made with this one as its opener and not
  /// yet loaded; null opens none.
  virtual WebPage* openWindow(const std::string& url) = 0;
  virtual void windowIsReady() = 0;
  virtual void windowWantsToClose() = 0;
  /// The page's pixels changed.
  virtual void pixelsChanged() = 0;
  virtual void cursorChanged(PageCursor cursor) = 0;
  /// The keyboard focus went past the page's last element, or before its first one.
  virtual void focusLeft(bool forward) = 0;
  /// The process that runs the page ended by itself; the next load or reload starts another.
  virtual void processEnded() = 0;
};

class WebPage {
public:
  /// Null when there is no display. `client` must outlive the page. A page with an `opener` shares
  /// its process.
  static std::unique_ptr<WebPage> make(WebPageClient& client, const WebPage* opener);

  /// Ends the page: pending decisions ignore, nothing calls the client any more.
  ~WebPage();
  WebPage(const WebPage&) = delete;
  WebPage& operator=(const WebPage&) = delete;

  /// Starts the page's process, so that the first load need not wait for it.
  void warmUp();
  void load(const std::string& url);
  void loadHtml(const std::string& html, const std::string& baseUrl);
  void stop();
  void reload();
  [[nodiscard]] std::string url() const;
  [[nodiscard]] std::string title() const;
  [[nodiscard]] bool isLoading() const;

  void resize(int width, int height);
  /// A page that is not shown neither animates nor paints.
  void setShown(bool shown);

  /// The size of what pixels() would write; nothing when there is no picture yet.
  [[nodiscard]] std::optional<PagePixels> pixelSize() const;
  /// Writes the picture to `rgba`, which has room for `size`; false when there is none.
  bool copyPixels(const PagePixels& size, std::uint8_t* rgba) const;

  void movePointer(double x, double y, unsigned modifiers);
  void pointerEntered(double x, double y);
  void pointerLeft(double x, double y);
  /// `clicks` counts the presses that belong together, from 1.
  void pressButton(MouseButton button, int clicks, double x, double y, unsigned modifiers);
  void releaseButton(MouseButton button, double x, double y, unsigned modifiers);
  /// In lines; positive leads to what lies right and below.
  void scroll(double x, double y, double deltaX, double deltaY, unsigned modifiers);
  /// Whether there is a page to hear of keys. Without one nothing would ever give the focus back.
  [[nodiscard]] bool takesKeys() const;
  /// `character` is what the key types, or AppKit's private code of a function key; `keyCode` the
  /// hardware's, 0 when not known.
  void sendKey(bool pressed, char32_t character, unsigned keyCode, unsigned modifiers);
  /// Shift, Control and the like went down or up by themselves.
  void setModifiers(unsigned modifiers);
  void setFocused(bool focused);
  /// Gives the focus to the page's first element, or to its last one. It leaves a page that has
  /// none.
  void focusEnd(bool first);
  /// "Copy", "Cut", "Paste", "SelectAll", "Undo", "Redo".
  void edit(const char* command);

  /// Runs `script` and waits for its result as text; nothing when it fails, answers nothing or
  /// takes longer. The client hears of the page meanwhile and may even destroy it.
  std::optional<std::string> evaluate(const std::string& script, double seconds);

  struct State;

private:
  explicit WebPage(std::unique_ptr<State> state);
  std::unique_ptr<State> state_;
};

} // namespace vireonix::platform
