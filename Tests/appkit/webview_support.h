// What the tests of the web view share: a window with a view, a delegate that writes down what it
// hears, and the processes and descriptors of this program.
#pragma once

#import <WebKit/WebKit.h>

#include "support/temporary_folder.h"

#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <sys/types.h>
#include <vector>

namespace vireonix::test {
struct HeardNavigation {
  WebView *view;
  NSDictionary *action;
  NSURLRequest *request;
  id<WebPolicyDecisionListener> listener;
};
} // namespace vireonix::test

/// Every delegate of a view at once. Navigations are used unless `onNavigation` is set.
@interface WebViewRecorder : NSObject <WebPolicyDelegate, WebFrameLoadDelegate, WebUIDelegate,
                                       WebResourceLoadDelegate, WebDownloadDelegate> {
@public
  std::vector<std::string> events;
  std::vector<std::string> navigations;
  std::vector<std::string> windows;
  std::vector<std::string> resources;
  std::function<void(const vireonix::test::HeardNavigation &)> onNavigation;
  std::function<WebView *(NSURLRequest *)> onWindow;
  std::function<void()> onFinish;
  NSError *lastError;
}
- (void)watch:(WebView *)view;
/// How often `event` was heard.
- (int)count:(const std::string &)event;
@end

namespace vireonix::test {

/// A window on the screen with a view of 400 x 300 at (20, 20) in it, and a folder for its pages.
class WebViewTest : public testing::Test {
protected:
  WebViewTest();
  ~WebViewTest() override;

  /// Writes a page into the folder; answers its URL.
  NSURL *page(const std::string &name, const std::string &html) const;
  void load(NSURL *url);
  /// Loads a page with `html` in its body and waits until it is painted.
  void show(const std::string &html, const std::string &name = "index.html");
  bool loadAndWait(NSURL *url);
  /// Waits until the page's script answers `expected`.
  bool becomes(const char *script, const std::string &expected, double seconds = 10);
  std::string run(const char *script);
  /// Waits until the page may have been painted as it is now.
  bool waitForColour(double x, double y, const std::string &rgb, double seconds = 10);
  /// The window's pixel at a place of the view, measured from its top left corner, as "rrggbb".
  std::string colour(double x, double y);
  /// Releases the view and its window and waits for its processes to end.
  void release();

  /// The view's place (x, y from its top left corner) in its window.
  NSPoint windowPoint(double x, double y);
  NSEvent *mouse(NSEventType type, double x, double y, int clicks = 1);
  void click(double x, double y, int clicks = 1);
  void key(const char *text, NSUInteger flags = 0);

  TemporaryFolder folder;
  NSWindow *window = nil;
  WebView *view = nil;
  WebViewRecorder *recorder = nil;

private:
  NSAutoreleasePool *pool = [NSAutoreleasePool new];
};

NSString *ns(const std::string &text);

/// The descendants of this process whose name contains `part`.
std::vector<pid_t> descendants(const std::string &part);
/// This process' open descriptors.
std::size_t openDescriptors();

} // namespace vireonix::test
