// Scripts run from outside, and what pages ask of a person.
#import "Bridge/text.h"
#import "appkit/webview_support.h"
#import "support/run_loop.h"

#include <chrono>

using namespace vireonix::test;
using vireonix::bridge::utf8;

class WebViewScript : public WebViewTest {};

TEST_F(WebViewScript, ResultsAreTextsAndFailuresAreEmpty) {
  show("");
  EXPECT_EQ(run("'a\xC3\xA4' + 1"), "a\xC3\xA4"
                                    "1");
  EXPECT_EQ(run("true"), "true");
  EXPECT_EQ(run("undefined"), "");
  EXPECT_EQ(run("null"), "");
  EXPECT_EQ(run("throw new Error('x')"), "");
  EXPECT_EQ(run("this is no script"), "");
}

TEST_F(WebViewScript, AScriptRunsBeforeAnyPageIsLoaded) {
  EXPECT_EQ(run("1 + 1"), "2");
}

TEST_F(WebViewScript, AnEndlessScriptEndsTheWaitAfterFiveSeconds) {
  show("");
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(run("for (;;) {}"), "");
  const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
  EXPECT_GT(taken.count(), 4.5);
  EXPECT_LT(taken.count(), 6.5);
}

TEST_F(WebViewScript, ADelegateMayRunScripts) {
  std::string answer;
  recorder->onFinish = [&] { answer = run("6*7"); };
  show("");
  EXPECT_EQ(answer, "42");
}

TEST_F(WebViewScript, AViewMayBeReleasedByItsDelegateWhileItsScriptRuns) {
  show("<title>First</title>");
  recorder->onNavigation = [&](const HeardNavigation &heard) {
    [heard.listener ignore];
    [view close];
  };
  EXPECT_EQ(run("location.href = 'https://example.invalid/';"
                "const end = Date.now() + 300; while (Date.now() < end); 'done'")
                    .size() < 5,
            true);
  recorder->onNavigation = nullptr;
  show("<title>Again</title>");
  EXPECT_EQ(run("document.title"), "Again");
}

TEST_F(WebViewScript, DialogsAreAnsweredAtOnce) {
  show("");
  EXPECT_EQ(run("alert('x'); 'went on'"), "went on");
  EXPECT_EQ(run("confirm('x')"), "false");
  EXPECT_EQ(run("prompt('x', 'y') === null"), "true");
}

TEST_F(WebViewScript, APageThatAsksWhetherToLeaveIsLeft) {
  show("<title>First</title><script>onbeforeunload = e => { e.preventDefault(); return 'no' }"
       "</script>");
  click(50, 50);
  ASSERT_TRUE(loadAndWait(page("second.html", "<title>Second</title>")));
  EXPECT_EQ(run("document.title"), "Second");
}

TEST_F(WebViewScript, PermissionsAreDenied) {
  show("<script>Notification.requestPermission().then(p => { window.answer = p })</script>");
  EXPECT_TRUE(becomes("window.answer", "denied"));
}

TEST_F(WebViewScript, APageReadsFilesBesideItself) {
  folder.write("data.xml", "<a>by request</a>");
  show("<script>const r = new XMLHttpRequest(); r.open('GET', 'data.xml');"
       "r.onload = () => { window.byRequest = r.responseText }; r.send();"
       "fetch('data.xml').then(a => a.text()).then(t => { window.byFetch = t })</script>");
  EXPECT_TRUE(becomes("window.byRequest", "<a>by request</a>"));
  EXPECT_TRUE(becomes("window.byFetch", "<a>by request</a>"));
}

// A reload keeps pictures in memory, so that nothing flashes; a page that wants the file's present
// content asks under a new name.
TEST_F(WebViewScript, APictureAskedForAnewShowsWhatItsFileHoldsNow) {
  const char *const kPage = "<img id=p style='display:block'>"
                            "<script>p.src = 'p.svg?' + performance.timeOrigin</script>";
  const char *const kPicture = "<svg xmlns='http://www.w3.org/2000/svg' width='100' height='100'>"
                               "<rect width='100' height='100' fill='%s'/></svg>";
  const auto picture = [&](const char *colour) {
    folder.write("p.svg", utf8([NSString stringWithFormat:ns(kPicture), colour]));
  };
  picture("#ff0000");
  show(kPage);
  ASSERT_TRUE(waitForColour(50, 50, "ff0000"));
  picture("#0000ff");
  show(kPage);
  EXPECT_TRUE(waitForColour(50, 50, "0000ff"));
}
