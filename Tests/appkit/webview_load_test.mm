// Loading, painting and scripts.
#import "appkit/webview_support.h"
#import "support/run_loop.h"

#include <algorithm>

using namespace vireonix::test;

using Events = std::vector<std::string>;

class WebViewLoad : public WebViewTest {};

TEST_F(WebViewLoad, APageLoadsAnswersScriptsAndIsPainted) {
  show("<title>First</title><div id=d style='width:100px;height:100px;background:#12ab34'></div>");
  EXPECT_EQ(run("document.title"), "First");
  EXPECT_EQ(run("6*7"), "42");
  EXPECT_TRUE(waitForColour(50, 50, "12ab34"));
  EXPECT_EQ(colour(150, 150), "ffffff");
}

TEST_F(WebViewLoad, DelegatesHearStartCommitAndFinishInThisOrderAndTheTitle) {
  show("<title>First</title>");
  ASSERT_TRUE(pumpEventsUntil([&] { return [recorder count:"title First"] == 1; }));
  Events &events = recorder->events;
  events.erase(std::remove(events.begin(), events.end(), "title First"), events.end());
  EXPECT_EQ(events, (Events{"start", "commit", "finish"}));
  EXPECT_FALSE([view isLoading]);
}

TEST_F(WebViewLoad, AMissingFileFailsAndDoesNotFinish) {
  load([NSURL fileURLWithPath:ns(folder.at("missing.html"))]);
  ASSERT_TRUE(pumpEventsUntil([&] { return [recorder count:"fail"] == 1; }));
  pumpFor(0.3);
  EXPECT_EQ([recorder count:"finish"], 0);
  EXPECT_EQ([recorder->lastError code], NSURLErrorFileDoesNotExist);
}

TEST_F(WebViewLoad, APathWithSpacesUmlautsAndMarksLoads) {
  show("<title>odd</title>", "a b \xC3\xA4 #1 100%.html");
  EXPECT_EQ(run("document.title"), "odd");
}

TEST_F(WebViewLoad, AResourceThatItsDelegateLeavesUnnamedIsHeardOfWithoutAName) {
  show("<img src='data:image/gif;base64,R0lGODlhAQABAAAAACwAAAAAAQABAAA='>"
       "<script>document.body.append(Object.assign(new Image,"
       " {src: URL.createObjectURL(new Blob(['<svg xmlns=\"http://www.w3.org/2000/svg\"/>'],"
       " {type: 'image/svg+xml'}))}))</script>");
  const std::vector<std::string> &heard = recorder->resources;
  EXPECT_TRUE(pumpEventsUntil(
      [&] { return std::find(heard.begin(), heard.end(), "finish ") != heard.end(); }));
}
