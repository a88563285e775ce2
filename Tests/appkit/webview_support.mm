#import "appkit/webview_support.h"

#import "Bridge/text.h"
#import "support/run_loop.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <map>

using vireonix::bridge::utf8;

@implementation WebViewRecorder

- (void)dealloc {
  [lastError release];
  [super dealloc];
}

- (void)watch:(WebView *)view {
  [view setPolicyDelegate:self];
  [view setFrameLoadDelegate:self];
  [view setUIDelegate:self];
  [view setResourceLoadDelegate:self];
  [view setDownloadDelegate:self];
}

- (int)count:(const std::string &)event {
  return static_cast<int>(std::count(events.begin(), events.end(), event));
}

- (void)webView:(WebView *)webView
    decidePolicyForNavigationAction:(NSDictionary *)actionInformation
                            request:(NSURLRequest *)request
                              frame:(WebFrame *)frame
                   decisionListener:(id<WebPolicyDecisionListener>)listener {
  navigations.push_back(utf8([[request URL] absoluteString]));
  if (onNavigation)
    onNavigation({webView, actionInformation, request, listener});
  else
    [listener use];
}

- (WebView *)webView:(WebView *)sender createWebViewWithRequest:(NSURLRequest *)request {
  windows.push_back(utf8([[request URL] absoluteString]));
  return onWindow ? onWindow(request) : nil;
}

- (void)webView:(WebView *)sender didStartProvisionalLoadForFrame:(WebFrame *)frame {
  events.emplace_back("start");
}

- (void)webView:(WebView *)sender didCommitLoadForFrame:(WebFrame *)frame {
  events.emplace_back("commit");
}

- (void)webView:(WebView *)sender didReceiveTitle:(NSString *)title forFrame:(WebFrame *)frame {
  events.push_back("title " + utf8(title));
}

- (void)webView:(WebView *)sender didFinishLoadForFrame:(WebFrame *)frame {
  events.emplace_back("finish");
  if (onFinish)
    onFinish();
}

- (void)keepError:(NSError *)error {
  [lastError release];
  lastError = [error retain];
}

- (void)webView:(WebView *)sender
    didFailProvisionalLoadWithError:(NSError *)error
                           forFrame:(WebFrame *)frame {
  events.emplace_back("fail");
  [self keepError:error];
}

- (void)webView:(WebView *)sender didFailLoadWithError:(NSError *)error forFrame:(WebFrame *)frame {
  events.emplace_back("fail late");
  [self keepError:error];
}

- (id)webView:(WebView *)sender
    identifierForInitialRequest:(NSURLRequest *)request
                 fromDataSource:(WebDataSource *)dataSource {
  return [[[request URL] path] lastPathComponent];
}

- (void)webView:(WebView *)sender
                          resource:(id)identifier
    didFinishLoadingFromDataSource:(WebDataSource *)dataSource {
  resources.push_back("finish " + utf8(identifier));
}

- (void)webView:(WebView *)sender
                   resource:(id)identifier
    didFailLoadingWithError:(NSError *)error
             fromDataSource:(WebDataSource *)dataSource {
  resources.push_back("fail " + utf8(identifier));
}

@end

namespace vireonix::test {
namespace {

constexpr double kViewWidth = 400;
constexpr double kViewHeight = 300;

// The window manager has given the keyboard to the window, and the window knows.
bool hasKeyboard(NSWindow *window) {
  FILE *command = popen("xdotool getwindowfocus 2>/dev/null", "r");
  unsigned long focused = 0;
  const bool read = command != nullptr && std::fscanf(command, "%lu", &focused) == 1;
  if (command != nullptr)
    pclose(command);
  return read && focused == reinterpret_cast<uintptr_t>([window windowRef]) && [window isKeyWindow];
}

std::string hex(double component) {
  char digits[3];
  std::snprintf(digits, sizeof digits, "%02x", static_cast<unsigned>(std::lround(component * 255)));
  return digits;
}

// The fields of /proc/<pid>/stat that matter here.
struct Process {
  std::string name;
  pid_t parent = 0;
  char state = 0;
};

std::map<pid_t, Process> processes() {
  std::map<pid_t, Process> result;
  for (const auto &entry : std::filesystem::directory_iterator("/proc")) {
    const pid_t pid = std::atoi(entry.path().filename().c_str());
    std::string line;
    if (pid <= 0 || !std::getline(std::ifstream(entry.path() / "stat"), line))
      continue;
    const std::size_t open = line.find('(');
    const std::size_t close = line.rfind(')');
    Process process;
    process.name = line.substr(open + 1, close - open - 1);
    std::sscanf(line.c_str() + close + 1, " %c %d", &process.state, &process.parent);
    result[pid] = process;
  }
  return result;
}

} // namespace

NSString *ns(const std::string &text) {
  return bridge::string(text);
}

std::vector<pid_t> descendants(const std::string &part) {
  const std::map<pid_t, Process> all = processes();
  std::vector<pid_t> result;
  for (const auto &[pid, process] : all) {
    auto ancestor = all.find(process.parent);
    while (ancestor != all.end() && ancestor->first != getpid())
      ancestor = all.find(ancestor->second.parent);
    if (ancestor != all.end() && process.name.find(part) != std::string::npos)
      result.push_back(pid);
  }
  return result;
}

std::size_t openDescriptors() {
  const std::filesystem::directory_iterator entries("/proc/self/fd");
  return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
}

WebViewTest::WebViewTest() {
  const NSUInteger style = NSTitledWindowMask | NSClosableWindowMask | NSResizableWindowMask |
                           NSMiniaturizableWindowMask;
  window = [[NSWindow alloc] initWithContentRect:NSMakeRect(100, 200, 500, 400) styleMask:style
                                         backing:NSBackingStoreBuffered
                                           defer:NO];
  [window setReleasedWhenClosed:NO];
  view = [[WebView alloc] initWithFrame:NSMakeRect(20, 20, kViewWidth, kViewHeight)];
  [view setAutoresizingMask:NSViewWidthSizable | NSViewHeightSizable];
  [[window contentView] addSubview:view];
  recorder = [WebViewRecorder new];
  [recorder watch:view];
  [NSApp activateIgnoringOtherApps:YES];
  [window makeKeyAndOrderFront:nil];
  [window makeFirstResponder:nil];
  // Closing the last test's window may deactivate the application late.
  pumpEventsUntil([this] {
    if (![NSApp isActive])
      [NSApp activateIgnoringOtherApps:YES];
    if (![window isKeyWindow])
      [window makeKeyWindow];
    return hasKeyboard(window);
  }, 3);
}

WebViewTest::~WebViewTest() {
  release();
  [pool release];
}

void WebViewTest::release() {
  [view removeFromSuperview];
  [view release];
  view = nil;
  [window close];
  [window release];
  window = nil;
  [pool release];
  pool = [NSAutoreleasePool new];
  [recorder release];
  recorder = nil;
}

NSURL *WebViewTest::page(const std::string &name, const std::string &html) const {
  return [NSURL fileURLWithPath:ns(folder.write(name, html))];
}

void WebViewTest::load(NSURL *url) {
  [[view mainFrame] loadRequest:[NSURLRequest requestWithURL:url]];
}

bool WebViewTest::loadAndWait(NSURL *url) {
  const int before = [recorder count:"finish"];
  load(url);
  return pumpEventsUntil([&] { return [recorder count:"finish"] > before; });
}

void WebViewTest::show(const std::string &html, const std::string &name) {
  ASSERT_TRUE(
      loadAndWait(page(name, "<!doctype html><meta charset=utf-8><body style='margin:0'>" + html)));
  // A page takes clicks once it has been laid out and painted.
  run("requestAnimationFrame(() => requestAnimationFrame(() => { window.wasPainted = 1 }))");
  ASSERT_TRUE(becomes("window.wasPainted", "1"));
}

std::string WebViewTest::run(const char *script) {
  return utf8([view stringByEvaluatingJavaScriptFromString:ns(script)]);
}

bool WebViewTest::becomes(const char *script, const std::string &expected, double seconds) {
  return pumpEventsUntil([&] { return run(script) == expected; }, seconds);
}

std::string WebViewTest::colour(double x, double y) {
  [view lockFocus];
  const NSRect place = NSMakeRect(x, NSMaxY([view bounds]) - y - 1, 1, 1);
  NSBitmapImageRep *bitmap = [[[NSBitmapImageRep alloc] initWithFocusedViewRect:place] autorelease];
  [view unlockFocus];
  NSColor *pixel = [[bitmap colorAtX:0 y:0] colorUsingColorSpaceName:NSDeviceRGBColorSpace];
  return pixel == nil
             ? "none"
             : hex([pixel redComponent]) + hex([pixel greenComponent]) + hex([pixel blueComponent]);
}

bool WebViewTest::waitForColour(double x, double y, const std::string &rgb, double seconds) {
  return pumpEventsUntil([&] { return colour(x, y) == rgb; }, seconds);
}

NSPoint WebViewTest::windowPoint(double x, double y) {
  return [view convertPoint:NSMakePoint(x, NSMaxY([view bounds]) - y) toView:nil];
}

NSEvent *WebViewTest::mouse(NSEventType type, double x, double y, int clicks) {
  return [NSEvent mouseEventWithType:type location:windowPoint(x, y) modifierFlags:0 timestamp:0
                        windowNumber:[window windowNumber]
                             context:[window graphicsContext]
                         eventNumber:0
                          clickCount:clicks
                            pressure:1];
}

void WebViewTest::click(double x, double y, int clicks) {
  [window sendEvent:mouse(NSLeftMouseDown, x, y, clicks)];
  [window sendEvent:mouse(NSLeftMouseUp, x, y, clicks)];
}

void WebViewTest::key(const char *text, NSUInteger flags) {
  for (const NSEventType type : {NSKeyDown, NSKeyUp})
    [window sendEvent:[NSEvent keyEventWithType:type location:NSZeroPoint modifierFlags:flags
                                            timestamp:0
                                         windowNumber:[window windowNumber]
                                              context:[window graphicsContext]
                                           characters:ns(text)
                          charactersIgnoringModifiers:ns(text)
                                            isARepeat:NO
                                              keyCode:0]];
}

} // namespace vireonix::test
