// The live preview in the real window: what it loads, when it loads again, and where links lead.
#import "support/settings_session.h"

#import "Bridge/text.h"
#import "support/run_loop.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

namespace fs = std::filesystem;
using namespace vireonix::test;
using vireonix::bridge::string;
using vireonix::bridge::utf8;

// Answers a navigation in the place of the web view.
@interface RecordingListener : NSObject <WebPolicyDecisionListener> {
@public
  int used;
  int ignored;
  BOOL raises;
}
@end

@implementation RecordingListener
- (void)use {
  ++used;
  if (raises)
    [NSException raise:NSGenericException format:@"listener"];
}
- (void)ignore {
  ++ignored;
}
- (void)download {
}
@end

namespace {

constexpr std::string_view kPage =
    "<!doctype html><title>first</title>"
    "<script>window.made = Math.random()</script>"
    "<a id=web href='http://example.invalid/a%20b?c=d&e'>web</a>"
    "<a id=window target=_blank href='http://example.invalid/new'>w</a>"
    "<a id=file href='other.html'>file</a>";

// A window on a workspace with a page of the test's own, and a desktop opener that writes down what
// it is asked to open.
class Preview : public testing::Test {
protected:
  void SetUp() override {
    session_.folder().write("workspace/index.html", kPage);
    session_.folder().write("workspace/other.html", "<!doctype html><title>other</title>");
    const std::string opener = session_.folder().write(
        "bin/xdg-open", "#!/bin/sh\nprintf '%s\\n' \"$1\" >>'" + opened() + "'\n");
    fs::permissions(opener, fs::perms::owner_all);
    setenv("PATH", (session_.folder().at("bin") + ":" + std::getenv("PATH")).c_str(), 1);
    [session_.window() makeKeyAndOrderFront:nil];
    ASSERT_TRUE(pumpUntil([this] { return script("document.title") == "first"; }));
  }

  void TearDown() override { [session_.field(@"btnCancel") performClick:nil]; }

  [[nodiscard]] std::string opened() const { return session_.folder().at("opened.txt"); }
  [[nodiscard]] std::string script(const std::string &source) const {
    return utf8([web() stringByEvaluatingJavaScriptFromString:string(source)]);
  }
  [[nodiscard]] WebView *web() const { return session_.field(@"iWebView"); }
  void follow(const std::string &link) const {
    (void)script("document.getElementById('" + link + "').click()");
  }
  [[nodiscard]] bool opensInBrowser(const std::string &address) const {
    return pumpUntil([&] { return fileBytes(opened()) == address + "\n"; });
  }
  void decide(NSURLRequest *request, RecordingListener *listener) const {
    [session_.controller() webView:web() decidePolicyForNavigationAction:@{} request:request
                                  frame:[web() mainFrame]
                       decisionListener:listener];
  }

  SettingsSession session_;
};

} // namespace

TEST_F(Preview, AWebLinkOpensInTheBrowserAndThePreviewStays) {
  follow("web");
  EXPECT_TRUE(opensInBrowser("http://example.invalid/a%20b?c=d&e")) << fileBytes(opened());
  EXPECT_EQ(script("document.title"), "first");
}

TEST_F(Preview, AWebLinkToANewWindowOpensInTheBrowserToo) {
  follow("window");
  EXPECT_TRUE(opensInBrowser("http://example.invalid/new")) << fileBytes(opened());
  EXPECT_EQ(script("document.title"), "first");
}

TEST_F(Preview, AFileLinkIsShownUntilTheNextChange) {
  follow("file");
  ASSERT_TRUE(pumpUntil([this] { return script("document.title") == "other"; }));
  EXPECT_FALSE(fs::exists(opened()));
  [session_.controller() saveGlobalSettings];
  EXPECT_TRUE(pumpUntil([this] { return script("document.title") == "first"; }));
}

TEST_F(Preview, NothingIsLoadedAgainWhileNothingChanges) {
  const std::string made = script("window.made");
  pumpFor(1);
  EXPECT_EQ(script("window.made"), made);
  [session_.controller() saveGlobalSettings];
  EXPECT_TRUE(pumpUntil([&] { return script("window.made") != made; }));
}

TEST_F(Preview, TwoSavesBetweenTwoTicksAreOneReload) {
  [session_.controller() saveGlobalSettings];
  [session_.controller() saveGlobalSettings];
  EXPECT_TRUE([session_.controller() isChange]);
  [session_.controller() onRepeatTimer:nil];
  EXPECT_FALSE([session_.controller() isChange]);
}

TEST_F(Preview, AMissingPageLeavesThePreviewStandingAndTheNextChangeShowsIt) {
  fs::remove(session_.inWorkspace("index.html"));
  [session_.controller() saveGlobalSettings];
  ASSERT_TRUE(pumpUntil([this] { return ![session_.controller() isChange]; }));
  session_.folder().write("workspace/index.html", "<!doctype html><title>back</title>");
  [session_.controller() saveGlobalSettings];
  EXPECT_TRUE(pumpUntil([this] { return script("document.title") == "back"; }));
}

TEST_F(Preview, OnlyTheExactSchemeFileIsUsed) {
  RecordingListener *listener = [[RecordingListener new] autorelease];
  decide([NSURLRequest requestWithURL:[NSURL URLWithString:@"file:///tmp/x.html"]], listener);
  EXPECT_EQ(listener->used, 1);
  decide([NSURLRequest requestWithURL:[NSURL URLWithString:@"ftp://example.invalid/"]], listener);
  EXPECT_EQ(listener->ignored, 1);
  decide(nil, listener);
  EXPECT_EQ(listener->used + listener->ignored, 2);
}

TEST_F(Preview, AnExceptionOnTheWayIsWrittenToTheConsole) {
  RecordingListener *listener = [[RecordingListener new] autorelease];
  listener->raises = YES;
  testing::internal::CaptureStderr();
  decide([NSURLRequest requestWithURL:[NSURL URLWithString:@"file:///tmp/x.html"]], listener);
  const std::string console = testing::internal::GetCapturedStderr();
  EXPECT_NE(console.find("Web action exception: "), std::string::npos) << console;
}

TEST_F(Preview, PagesThatOpenWindowsWithoutEndGetAFewHiddenOnes) {
  for (int i = 0; i < 30; ++i) {
    NSURLRequest *request = [NSURLRequest requestWithURL:[NSURL fileURLWithPath:@"/tmp"]];
    WebView *view = [session_.controller() webView:web() createWebViewWithRequest:request];
    EXPECT_EQ([view window], nil);
    EXPECT_EQ([view policyDelegate], session_.controller());
  }
  EXPECT_LE([session_.field(@"hiddenWebViews") count], 8U);
}
