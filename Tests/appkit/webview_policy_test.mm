// Who decides which navigations happen and which windows open.
#import "Bridge/text.h"
#import "appkit/webview_support.h"
#import "support/run_loop.h"

using namespace vireonix::test;
using vireonix::bridge::utf8;

class WebViewPolicy : public WebViewTest {
protected:
  /// The last part of the URL of each navigation heard.
  std::vector<std::string> navigated() const {
    std::vector<std::string> names;
    for (const std::string &url : recorder->navigations)
      names.push_back(url.substr(url.rfind('/') + 1));
    return names;
  }

  void showLink(const char *attributes) {
    page("second.html", "<title>Second</title>");
    show(std::string("<title>First</title><a id=a ") + attributes +
         " style='display:block;width:200px;height:50px'>link</a>");
    recorder->navigations.clear();
  }

  void follow() { run("document.getElementById('a').click()"); }
};

TEST_F(WebViewPolicy, ALoadAsksWithTheTypeOther) {
  NSInteger type = -1;
  recorder->onNavigation = [&](const HeardNavigation &heard) {
    type = [[heard.action objectForKey:WebActionNavigationTypeKey] integerValue];
    [heard.listener use];
  };
  show("");
  EXPECT_EQ(type, WebNavigationTypeOther);
  EXPECT_EQ(navigated(), std::vector<std::string>{"index.html"});
}

TEST_F(WebViewPolicy, ALinkThatIsUsedIsFollowed) {
  showLink("href=second.html");
  NSInteger type = -1;
  NSInteger button = -2;
  recorder->onNavigation = [&](const HeardNavigation &heard) {
    type = [[heard.action objectForKey:WebActionNavigationTypeKey] integerValue];
    button = [[heard.action objectForKey:WebActionButtonKey] integerValue];
    [heard.listener use];
  };
  click(20, 20);
  EXPECT_TRUE(becomes("document.title", "Second"));
  EXPECT_EQ(type, WebNavigationTypeLinkClicked);
  EXPECT_EQ(button, 0);
}

TEST_F(WebViewPolicy, ALinkThatIsIgnoredIsNotFollowed) {
  showLink("href=https://example.invalid/x");
  NSURL *asked = nil;
  recorder->onNavigation = [&](const HeardNavigation &heard) {
    asked = [[heard.request URL] retain];
    [heard.listener ignore];
  };
  follow();
  ASSERT_TRUE(pumpEventsUntil([&] { return asked != nil; }));
  pumpFor(0.3);
  EXPECT_EQ(utf8([asked absoluteString]), "https://example.invalid/x");
  EXPECT_EQ(run("document.title"), "First");
  [asked release];
}

TEST_F(WebViewPolicy, AnAnswerMayComeLate) {
  showLink("href=second.html");
  id<WebPolicyDecisionListener> listener = nil;
  recorder->onNavigation = [&](const HeardNavigation &heard) {
    listener = [heard.listener retain];
  };
  follow();
  ASSERT_TRUE(pumpEventsUntil([&] { return listener != nil; }));
  pumpFor(0.3);
  EXPECT_EQ(run("document.title"), "First");
  [listener use];
  [listener release];
  EXPECT_TRUE(becomes("document.title", "Second"));
}

TEST_F(WebViewPolicy, OnlyTheFirstAnswerCounts) {
  showLink("href=second.html");
  recorder->onNavigation = [&](const HeardNavigation &heard) {
    [heard.listener ignore];
    [heard.listener use];
  };
  follow();
  ASSERT_TRUE(pumpEventsUntil([&] { return !recorder->navigations.empty(); }));
  pumpFor(0.3);
  EXPECT_EQ(run("document.title"), "First");
}

TEST_F(WebViewPolicy, AListenerDroppedWithoutAnAnswerIgnores) {
  showLink("href=second.html");
  recorder->onNavigation = [](const HeardNavigation &) {};
  follow();
  ASSERT_TRUE(pumpEventsUntil([&] { return !recorder->navigations.empty(); }));
  pumpFor(0.3);
  EXPECT_EQ(run("document.title"), "First");
  // The page goes on living.
  recorder->onNavigation = nullptr;
  follow();
  EXPECT_TRUE(becomes("document.title", "Second"));
}

TEST_F(WebViewPolicy, AnAnswerAfterTheViewIsGoneTouchesNothing) {
  showLink("href=second.html");
  id<WebPolicyDecisionListener> listener = nil;
  recorder->onNavigation = [&](const HeardNavigation &heard) {
    listener = [heard.listener retain];
  };
  follow();
  ASSERT_TRUE(pumpEventsUntil([&] { return listener != nil; }));
  release();
  [listener use];
  [listener release];
  pumpFor(0.2);
}

TEST_F(WebViewPolicy, AnExceptionInADelegateIgnoresTheNavigationAndHarmsNothing) {
  showLink("href=second.html");
  recorder->onNavigation = [](const HeardNavigation &) {
    [NSException raise:NSGenericException format:@"raised by a test"];
  };
  follow();
  ASSERT_TRUE(pumpEventsUntil([&] { return !recorder->navigations.empty(); }));
  pumpFor(0.2);
  EXPECT_EQ(run("document.title"), "First");
}

TEST_F(WebViewPolicy, WithoutAPolicyDelegateEverythingIsUsed) {
  showLink("href=second.html");
  [view setPolicyDelegate:nil];
  follow();
  EXPECT_TRUE(becomes("document.title", "Second"));
}

TEST_F(WebViewPolicy, ATypeThatCannotBeShownIsNotLoaded) {
  folder.write("data.bin", std::string("\0\1\2", 3));
  showLink("href=data.bin");
  follow();
  ASSERT_TRUE(pumpEventsUntil([&] { return !recorder->navigations.empty(); }));
  pumpFor(0.3);
  EXPECT_EQ(run("document.title"), "First");
  EXPECT_TRUE(std::filesystem::exists(folder.at("data.bin")));
}

TEST_F(WebViewPolicy, ATargetBlankLinkOpensInTheViewOfTheUIDelegate) {
  showLink("href=second.html target=_blank");
  WebView *opened = nil;
  WebViewRecorder *openedRecorder = [WebViewRecorder new];
  recorder->onWindow = [&](NSURLRequest *) {
    opened = [[WebView alloc] initWithFrame:NSMakeRect(0, 0, 100, 100)];
    [openedRecorder watch:opened];
    return opened;
  };
  click(20, 20);
  ASSERT_TRUE(pumpEventsUntil([&] { return [openedRecorder count:"finish"] == 1; }));
  EXPECT_EQ(utf8([opened stringByEvaluatingJavaScriptFromString:@"document.title"]), "Second");
  EXPECT_EQ(openedRecorder->navigations.size(), 1U);
  EXPECT_TRUE(recorder->navigations.empty());
  EXPECT_EQ(recorder->windows.size(), 1U);
  EXPECT_EQ(run("document.title"), "First");
  [opened release];
  [openedRecorder release];
}

TEST_F(WebViewPolicy, AWindowOpenedByScriptObeysItsOwnPolicyDelegate) {
  show("<title>First</title>");
  WebView *opened = nil;
  WebViewRecorder *openedRecorder = [WebViewRecorder new];
  openedRecorder->onNavigation = [](const HeardNavigation &heard) { [heard.listener ignore]; };
  recorder->onWindow = [&](NSURLRequest *) {
    opened = [[WebView alloc] initWithFrame:NSMakeRect(0, 0, 100, 100)];
    [openedRecorder watch:opened];
    return opened;
  };
  run("window.open('https://example.invalid/x') && 1");
  ASSERT_TRUE(pumpEventsUntil([&] { return openedRecorder->navigations.size() == 1; }));
  EXPECT_EQ(openedRecorder->navigations[0], "https://example.invalid/x");
  pumpFor(0.2);
  EXPECT_EQ([openedRecorder count:"commit"], 0);
  [opened release];
  [openedRecorder release];
}

TEST_F(WebViewPolicy, AViewThatHasAPageAlreadyLoadsTheNewWindowByItself) {
  showLink("href=second.html target=_blank");
  WebView *other = [[WebView alloc] initWithFrame:NSMakeRect(0, 0, 100, 100)];
  [[other mainFrame] loadHTMLString:@"<title>Third</title>" baseURL:nil];
  ASSERT_TRUE(pumpEventsUntil([&] { return [[other mainFrameTitle] isEqual:@"Third"]; }));
  recorder->onWindow = [&](NSURLRequest *) { return other; };
  follow();
  EXPECT_TRUE(pumpEventsUntil([&] {
    return [[other stringByEvaluatingJavaScriptFromString:@"document.title"] isEqual:@"Second"];
  }));
  [other release];
}

TEST_F(WebViewPolicy, AViewThatIsInAWindowBecomesTheNewWindow) {
  show("<title>First</title>");
  WebView *opened = nil;
  recorder->onWindow = [&](NSURLRequest *) {
    opened = [[[WebView alloc] initWithFrame:NSMakeRect(0, 0, 10, 10)] autorelease];
    [[window contentView] addSubview:opened];
    return opened;
  };
  run("window.opened = window.open('second.html'); 1");
  ASSERT_TRUE(pumpEventsUntil([&] { return opened != nil; }));
  EXPECT_TRUE(pumpEventsUntil([&] {
    return [[opened stringByEvaluatingJavaScriptFromString:@"window.opener !== null && 'child'"]
        isEqual:@"child"];
  }));
  EXPECT_EQ(run("window.opened !== null"), "true");
}

TEST_F(WebViewPolicy, WithoutAUIDelegateNoWindowOpens) {
  showLink("href=second.html target=_blank");
  [view setUIDelegate:nil];
  follow();
  pumpFor(0.3);
  EXPECT_EQ(run("document.title"), "First");
}
