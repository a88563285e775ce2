// Visibility, size, the run loop's modes, and that nothing is left of a view.
#import "Bridge/text.h"
#import "appkit/webview_support.h"
#import "support/run_loop.h"

#include <clocale>
#include <csignal>
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <optional>
#include <sys/wait.h>
#include <unistd.h>

using namespace vireonix::test;
using vireonix::bridge::utf8;

namespace {

const char *const kCounting = "<script>window.frames_ = 0;"
                              "const next = () => { ++frames_; requestAnimationFrame(next) };"
                              "next()</script>";

struct sigaction disposition(int number) {
  struct sigaction action {};
  sigaction(number, nullptr, &action);
  return action;
}

/// What belongs to the host and not to the engine.
struct HostState {
  std::string locale = std::setlocale(LC_ALL, nullptr);
  struct sigaction children = disposition(SIGCHLD);
  struct sigaction pipes = disposition(SIGPIPE);
  const char *bridge = std::getenv("NO_AT_BRIDGE");
};

std::optional<HostState> stateBeforeAnyView;

} // namespace

class WebViewLifecycle : public WebViewTest {
protected:
  static void SetUpTestSuite() { stateBeforeAnyView.emplace(); }

  int frames() { return std::atoi(run("frames_").c_str()); }

  bool animates() {
    const int before = frames();
    pumpEventsFor(0.5);
    return frames() > before + 5;
  }

  /// Waits for the page to have noticed.
  bool animationBecomes(bool expected) {
    return pumpEventsUntil([&] { return animates() == expected; }, 5);
  }

  static bool processesEnd() {
    return pumpEventsUntil([] { return descendants("WebKit").empty(); });
  }
};

TEST_F(WebViewLifecycle, ThePageIsAsLargeAsItsView) {
  show("");
  EXPECT_EQ(run("innerWidth + 'x' + innerHeight"), "400x300");
  [view setFrame:NSMakeRect(20, 20, 250, 200)];
  EXPECT_TRUE(becomes("innerWidth + 'x' + innerHeight", "250x200"));
  [window setContentSize:NSMakeSize(700, 500)];
  const std::string expected =
      utf8([NSString stringWithFormat:@"%gx%g", NSWidth([view bounds]), NSHeight([view bounds])]);
  EXPECT_EQ(expected, "450x300");
  EXPECT_TRUE(becomes("innerWidth + 'x' + innerHeight", expected));
}

TEST_F(WebViewLifecycle, AHiddenViewStopsAnimating) {
  show(kCounting);
  ASSERT_TRUE(animationBecomes(true));
  [view setHidden:YES];
  EXPECT_TRUE(animationBecomes(false));
  [view setHidden:NO];
  EXPECT_TRUE(animationBecomes(true));
}

TEST_F(WebViewLifecycle, AWindowThatIsOrderedOutStopsItsPage) {
  show(kCounting);
  ASSERT_TRUE(animationBecomes(true));
  [window orderOut:nil];
  EXPECT_TRUE(animationBecomes(false));
  [window makeKeyAndOrderFront:nil];
  EXPECT_TRUE(animationBecomes(true));
  [window close];
  EXPECT_TRUE(animationBecomes(false));
}

TEST_F(WebViewLifecycle, AViewWithoutAWindowLoadsAndPaintsOnceItIsShown) {
  [[view retain] removeFromSuperview];
  ASSERT_TRUE(loadAndWait(
      page("index.html", "<body style='margin:0;background:#00ff00'><title>Deferred</title>")));
  EXPECT_EQ(run("document.title"), "Deferred");
  [[window contentView] addSubview:view];
  [view release];
  EXPECT_TRUE(waitForColour(50, 50, "00ff00"));
}

TEST_F(WebViewLifecycle, APageLoadsInTheModalPanelMode) {
  load(page("index.html", "<title>Modal</title>"));
  EXPECT_TRUE(
      pumpUntil([&] { return [recorder count:"finish"] == 1; }, 10, NSModalPanelRunLoopMode));
}

TEST_F(WebViewLifecycle, APageLoadsInTheEventTrackingMode) {
  load(page("index.html", "<title>Tracking</title>"));
  EXPECT_TRUE(
      pumpUntil([&] { return [recorder count:"finish"] == 1; }, 10, NSEventTrackingRunLoopMode));
}

TEST_F(WebViewLifecycle, ARunLoopRunFromACallBackLeavesThePageAlive) {
  int nested = 0;
  recorder->onNavigation = [&](const HeardNavigation &heard) {
    pumpFor(0.1);
    pumpFor(0.1, NSModalPanelRunLoopMode);
    EXPECT_EQ(run("2+2"), "4");
    ++nested;
    [heard.listener use];
  };
  for (int i = 0; i < 3; ++i)
    show("<div style='width:100px;height:100px;background:#00ff00'></div>" +
         std::string(kCounting));
  EXPECT_EQ(nested, 3);
  EXPECT_TRUE(waitForColour(50, 50, "00ff00"));
  EXPECT_TRUE(animationBecomes(true));
}

TEST_F(WebViewLifecycle, APageWhoseProcessWasKilledIsBlankUntilItIsLoadedAgain) {
  const std::string body = "<div style='width:100px;height:100px;background:#00ff00'></div>";
  for (const bool reload : {false, true}) {
    show(body);
    ASSERT_TRUE(waitForColour(50, 50, "00ff00"));
    const std::vector<pid_t> pages = descendants("WebKitWeb");
    ASSERT_EQ(pages.size(), 1U);
    kill(pages[0], SIGKILL);
    EXPECT_TRUE(waitForColour(50, 50, "ffffff"));
    if (reload) {
      [view reload:nil];
      EXPECT_TRUE(waitForColour(50, 50, "00ff00"));
    }
  }
}

TEST_F(WebViewLifecycle, AReleasedViewLeavesNoProcess) {
  show("");
  EXPECT_FALSE(descendants("WebKit").empty());
  release();
  EXPECT_TRUE(processesEnd());
}

TEST_F(WebViewLifecycle, AViewReleasedWhileItsProcessStartsLeavesNoProcess) {
  ASSERT_TRUE(pumpEventsUntil([] { return descendants("WebKitWeb").size() == 1; }));
  release();
  EXPECT_TRUE(processesEnd());
}

TEST_F(WebViewLifecycle, AReleaseDuringACallBackIsHarmless) {
  recorder->onFinish = [&] {
    [view removeFromSuperview];
    [view release];
    view = nil;
  };
  load(page("index.html", ""));
  EXPECT_TRUE(pumpEventsUntil([&] { return view == nil; }));
  release();
  EXPECT_TRUE(processesEnd());
}

TEST_F(WebViewLifecycle, AViewInAWindowStartsItsProcessBeforeTheFirstLoad) {
  EXPECT_TRUE(pumpEventsUntil([] { return descendants("WebKitWeb").size() == 1; }));
  EXPECT_TRUE(recorder->events.empty());
  const std::vector<pid_t> before = descendants("WebKitWeb");
  show("");
  EXPECT_EQ(descendants("WebKitWeb"), before);
}

TEST_F(WebViewLifecycle, AViewOutsideAnyWindowStartsNothing) {
  [view close];
  ASSERT_TRUE(processesEnd());
  WebView *hidden = [[WebView alloc] initWithFrame:NSMakeRect(0, 0, 100, 100)];
  EXPECT_FALSE(pumpEventsUntil([] { return !descendants("WebKit").empty(); }, 1));
  [hidden release];
}

TEST_F(WebViewLifecycle, ManyViewsLeaveNoDescriptorsBehind) {
  [view close];
  const auto liveAndDie = [&] {
    @autoreleasepool {
      WebView *short_ = [[WebView alloc] initWithFrame:NSMakeRect(0, 0, 100, 100)];
      [[window contentView] addSubview:short_];
      EXPECT_EQ(utf8([short_ stringByEvaluatingJavaScriptFromString:@"1+1"]), "2");
      [short_ removeFromSuperview];
      [short_ release];
    }
    EXPECT_TRUE(processesEnd());
  };
  for (int i = 0; i < 3; ++i)
    liveAndDie();
  const std::size_t before = openDescriptors();
  for (int i = 0; i < 10; ++i)
    liveAndDie();
  // The last process is gone a moment before its connection is closed.
  EXPECT_TRUE(pumpEventsUntil([&] { return openDescriptors() <= before; }, 5))
      << openDescriptors() << " instead of " << before;
}

TEST_F(WebViewLifecycle, FiftyReloadsLeaveNoDescriptorsBehind) {
  NSURL *url = page("index.html", "<title>x</title><img src=none.png>");
  for (int i = 0; i < 3; ++i)
    ASSERT_TRUE(loadAndWait(url));
  const std::size_t before = openDescriptors();
  for (int i = 0; i < 50; ++i)
    ASSERT_TRUE(loadAndWait(url));
  EXPECT_LE(openDescriptors(), before + 1);
  EXPECT_EQ(descendants("WebKitWeb").size(), 1U);
}

TEST_F(WebViewLifecycle, TheHostsLocaleAndSignalsStayAsTheyWere) {
  show("");
  const HostState now;
  EXPECT_EQ(stateBeforeAnyView->locale, now.locale);
  EXPECT_EQ(stateBeforeAnyView->children.sa_handler, now.children.sa_handler);
  EXPECT_EQ(stateBeforeAnyView->pipes.sa_handler, now.pipes.sa_handler);
  EXPECT_EQ(stateBeforeAnyView->bridge, now.bridge);
  NSTask *task = [NSTask launchedTaskWithLaunchPath:@"/bin/sh" arguments:@[ @"-c", @"exit 7" ]];
  [task waitUntilExit];
  EXPECT_EQ([task terminationStatus], 7);
}

TEST_F(WebViewLifecycle, AStillPageCostsNothing) {
  show("still");
  pumpEventsFor(1);
  const std::clock_t before = std::clock();
  [[NSRunLoop currentRunLoop] runUntilDate:[NSDate dateWithTimeIntervalSinceNow:4]];
  const double share = static_cast<double>(std::clock() - before) / CLOCKS_PER_SEC / 4;
  EXPECT_LT(share, 0.005);
}

TEST_F(WebViewLifecycle, AnUnarchivedViewWorks) {
  NSData *data = [NSKeyedArchiver archivedDataWithRootObject:view];
  WebView *copy = [[NSKeyedUnarchiver unarchiveObjectWithData:data] retain];
  EXPECT_EQ(utf8([copy stringByEvaluatingJavaScriptFromString:@"1+1"]), "2");
  EXPECT_EQ([[copy mainFrame] webView], copy);
  [copy release];
}

TEST_F(WebViewLifecycle, AFrameThatOutlivesItsViewDoesNothing) {
  WebFrame *frame = [[view mainFrame] retain];
  release();
  EXPECT_EQ([frame webView], nil);
  [frame loadHTMLString:@"x" baseURL:nil];
  [frame reload];
  [frame release];
}

// Run by the test below, in a program of its own: whether there is a display is found out once.
TEST(WebViewWithoutDisplay, DISABLED_StaysBlank) {
  unsetenv("DISPLAY");
  WebView *view = [[WebView alloc] initWithFrame:NSMakeRect(0, 0, 100, 100)];
  [[view mainFrame] loadHTMLString:@"x" baseURL:nil];
  [view setMainFrameURL:@"file:///"];
  EXPECT_EQ(utf8([view stringByEvaluatingJavaScriptFromString:@"1+1"]), "");
  EXPECT_FALSE([view isLoading]);
  [view reload:nil];
  [view stopLoading:nil];
  [view release];
}

TEST(WebViewWithoutDisplay, SaysSoOnceAndStaysBlank) {
  const TemporaryFolder folder;
  const std::string program = utf8([[NSBundle mainBundle] executablePath]);
  const std::string command = "'" + program +
                              "' --gtest_filter=WebViewWithoutDisplay.DISABLED_StaysBlank"
                              " --gtest_also_run_disabled_tests 2> " +
                              folder.at("errors");
  EXPECT_EQ(std::system(command.c_str()), 0);
  EXPECT_EQ(fileBytes(folder.at("errors")),
            "WebView: no X display could be opened; pages are not shown.\n");
}
