// The player in the plug-in's own preview: the built page, opened from a folder in the web view.
#import "appkit/webview_support.h"
#import "support/run_loop.h"

#include <array>
#include <filesystem>
#include <set>

using namespace vireonix::test;

namespace {

struct Colour {
  unsigned char red;
  unsigned char green;
  unsigned char blue;
};

/// A bitmap of one pixel, which the page stretches over the slide.
std::string picture(Colour colour) {
  const std::string head("BM\x3a\0\0\0\0\0\0\0\x36\0\0\0", 14);
  const std::string info(
      "\x28\0\0\0\x01\0\0\0\x01\0\0\0\x01\0\x18\0\0\0\0\0\x04\0\0\0\0\0\0\0\0\0\0\0"
      "\0\0\0\0\0\0\0\0",
      40);
  const std::array<unsigned char, 4> pixel{colour.blue, colour.green, colour.red, 0};
  return head + info + std::string(pixel.begin(), pixel.end());
}

/// A movie of two frames that shows nothing but its ground, "0ac828".
std::string movie() {
  const std::array<unsigned char, 65> bytes{
      0x46, 0x57, 0x53, 0x08, 0x41, 0x00, 0x00, 0x00, 0x78, 0x00, 0x03, 0x20, 0x00,
      0x00, 0x07, 0xd0, 0x00, 0x00, 0x0c, 0x02, 0x00, 0x7f, 0x11, 0x04, 0x00, 0x00,
      0x00, 0x00, 0x00, 0x00, 0x00, 0x7f, 0x02, 0x03, 0x00, 0x00, 0x00, 0x0a, 0xc8,
      0x28, 0x3f, 0x03, 0x01, 0x00, 0x00, 0x00, 0x00, 0x7f, 0x00, 0x00, 0x00, 0x00,
      0x00, 0x7f, 0x00, 0x00, 0x00, 0x00, 0x00, 0x3f, 0x00, 0x00, 0x00, 0x00, 0x00};
  return {bytes.begin(), bytes.end()};
}

std::string slide(const std::string &media, const std::string &caption) {
  return "<slide Background_image=\"" + media +
         "\"><text set_animation_style=\"None\" Align=\"TL\" In_Time=\"0\" "
         "Stay_Time=\"0\"><text><![CDATA[<b>"
         "<font size=\"12\" color=\"#FFFFFF\">" +
         caption + "</font></b>]]></text></text></slide>";
}

class PlayerPreview : public WebViewTest {
protected:
  void SetUp() override {
    std::filesystem::copy(VIREONIX_PLAYER_HTML, folder.path(),
                          std::filesystem::copy_options::recursive);
    folder.write("a.jpg", picture({0x12, 0xab, 0x34}));
    folder.write("b.jpg", picture({0x34, 0x12, 0xab}));
  }

  void showSlides(const std::string &slides) {
    folder.write("intro_asset/data.xml", "<?xml version=\"1.0\" encoding=\"utf-8\"?><main>"
                                         "<define_animation_Style/><data>" +
                                             slides + "</data></main>");
    reload();
  }

  void reload() {
    ASSERT_TRUE(loadAndWait([NSURL fileURLWithPath:ns(folder.at("index.html"))]));
    ASSERT_TRUE(becomes("'ready' in document.documentElement.dataset", "true"));
  }
};

TEST_F(PlayerPreview, ShowsThePictureAndTheCaptionOfAFolder) {
  showSlides(slide("a.jpg", "Hello & <you>"));
  EXPECT_EQ(run("document.querySelector('.shown').textContent"), "Hello & <you>");
  EXPECT_TRUE(waitForColour(300, 200, "12ab34"));
}

TEST_F(PlayerPreview, GoesOnWhereItWasWhenNothingChanged) {
  showSlides(slide("a.jpg", "one") + slide("b.jpg", "two"));
  run("vireonixPlayer.pause(), vireonixPlayer.goTo(1), vireonixPlayer.seek(1234)");
  ASSERT_TRUE(becomes("vireonixPlayer.currentSlide", "1"));
  run("vireonixPlayer.seek(1234)");
  reload();
  EXPECT_EQ(run("[vireonixPlayer.currentSlide, vireonixPlayer.time, vireonixPlayer.paused].join()"),
            "1,1234,true");
}

TEST_F(PlayerPreview, GoesToTheSlideThatChanged) {
  showSlides(slide("a.jpg", "one") + slide("b.jpg", "two"));
  EXPECT_EQ(run("vireonixPlayer.currentSlide"), "0");
  showSlides(slide("a.jpg", "one") + slide("b.jpg", "changed"));
  EXPECT_EQ(run("vireonixPlayer.currentSlide"), "1");
  EXPECT_TRUE(waitForColour(300, 200, "3412ab"));
}

TEST_F(PlayerPreview, SeesAPictureThatWasReplacedUnderItsName) {
  showSlides(slide("a.jpg", "one"));
  ASSERT_TRUE(waitForColour(300, 200, "12ab34"));
  folder.write("a.jpg", picture({0xab, 0x34, 0x12}));
  reload();
  EXPECT_TRUE(waitForColour(300, 200, "ab3412"));
}

TEST_F(PlayerPreview, KeepsThePictureInViewWhileThePageLoadsAgain) {
  showSlides(slide("a.jpg", "one"));
  ASSERT_TRUE(waitForColour(300, 200, "12ab34"));
  std::set<std::string> seen;
  const int before = [recorder count:"finish"];
  load([NSURL fileURLWithPath:ns(folder.at("index.html"))]);
  ASSERT_TRUE(pumpEventsUntil([&] {
    seen.insert(colour(300, 200));
    return [recorder count:"finish"] > before;
  }));
  pumpEventsUntil([&] { return seen.insert(colour(300, 200)).second; }, 0.5);
  EXPECT_EQ(seen, std::set<std::string>{"12ab34"});
}

TEST_F(PlayerPreview, SaysWhatIsMissing) {
  showSlides(slide("gone.jpg", "one"));
  EXPECT_TRUE(becomes("document.querySelector('.notice').textContent",
                      "\u201cgone.jpg\u201d cannot be shown."));
}

TEST_F(PlayerPreview, PlaysAMovieBehindTheCaptions) {
  folder.write("m.swf", movie());
  showSlides(slide("m.swf", "above"));
  ASSERT_TRUE(becomes("'playing' in document.querySelector('.movie').dataset", "true", 60));
  EXPECT_TRUE(waitForColour(300, 200, "0ac828", 30));
}

} // namespace
