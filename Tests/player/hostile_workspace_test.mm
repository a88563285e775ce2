// A workspace that means harm, in the plug-in's own preview: whatever its document, pictures,
// movies, links and names hold runs no code, reaches no network and reads nothing outside.
#import "appkit/webview_support.h"
#import "support/run_loop.h"

#include "player/watched_folder.h"
#include "player/watched_port.h"

#include <filesystem>
#include <fstream>
#include <memory>

using namespace vireonix::test;

namespace {

// Two bytes, the lower one first.
std::string word(std::size_t value) {
  return {static_cast<char>(value & 0xFF), static_cast<char>(value >> 8)};
}

std::string tag(unsigned code, const std::string &data) {
  return word(code << 6 | 63) + word(data.size()) + word(0) + data;
}

/// The action that opens an address, or with a level as target loads a movie into it.
std::string openAddress(const std::string &address, const std::string &target) {
  const std::string strings = address + '\0' + target + '\0';
  return "\x83" + word(strings.size()) + strings;
}

/// A movie of 400 x 300 on a ground of "0ac828" that does these things on its first frame.
std::string movie(const std::string &actions) {
  const std::string head("\x78\x00\x03\x20\x00\x00\x07\xd0\x00\x00\x0c\x02\x00", 13);
  const std::string show = tag(1, "");
  const std::string body = head + tag(69, std::string(4, '\0')) + tag(9, "\x0a\xc8\x28") +
                           tag(12, actions + '\0') + show + show + tag(0, "");
  return "FWS\x08" + word(body.size() + 8) + word(0) + body;
}

class HostileWorkspace : public WebViewTest {
protected:
  void SetUp() override {
    std::filesystem::copy(VIREONIX_PLAYER_HTML, folder.at("workspace"),
                          std::filesystem::copy_options::recursive);
    folder.write("outside/secret.txt", "secret");
    folder.write("outside/secret.png", "secret");
    watch = std::make_unique<WatchedFolder>(folder.at("outside"));
  }

  void show(const std::string &media, const std::string &caption, const std::string &style = "Fade",
            const std::string &head = "") {
    folder.write("workspace/intro_asset/data.xml",
                 "<?xml version=\"1.0\"?>" + head + "<main><define_animation_Style><s Name=\"" +
                     style + "\"/></define_animation_Style><data><slide Background_image=\"" +
                     media + "\"><text set_animation_style=\"" + style +
                     "\" Align=\"TL\" In_Time=\"0\" Stay_Time=\"0\"><text><![CDATA[" + caption +
                     "]]></text></text></slide></data></main>");
    ASSERT_TRUE(loadAndWait([NSURL fileURLWithPath:ns(folder.at("workspace/index.html"))]));
    ASSERT_TRUE(becomes("'ready' in document.documentElement.dataset", "true"));
  }

  /// Time for whatever was started to arrive somewhere, and that nothing did.
  void expectNoHarm() {
    pumpEventsFor(1);
    EXPECT_EQ(run("String(window.harm)"), "undefined");
    EXPECT_EQ(port.connections(), 0);
    EXPECT_EQ(watch->uses(), "");
    EXPECT_TRUE(recorder->windows.empty());
    for (const std::string &address : recorder->navigations)
      EXPECT_EQ(address.find("http"), std::string::npos) << address;
  }

  [[nodiscard]] std::string address(const std::string &name) const {
    return "http://127.0.0.1:" + std::to_string(port.number()) + "/" + name;
  }

  WatchedPort port;
  std::unique_ptr<WatchedFolder> watch;
};

TEST_F(HostileWorkspace, TheWatchesSeeWhatIsDone) {
  EXPECT_EQ(run("1"), "1");
  std::ifstream(folder.at("outside/secret.txt")).get();
  EXPECT_NE(watch->uses(), "");
  port.connectOnce();
  EXPECT_EQ(port.connections(), 1);
}

TEST_F(HostileWorkspace, CaptionsAndStylesAreNoCode) {
  show("a.jpg",
       "<b><font size=\"12\" color=\"red;background:url(" + address("colour") +
           ")\"><script>window.harm=1</script><img src=x onerror=\"window.harm=2\"><iframe src=\"" +
           address("frame") + "\"></iframe><a href=\"javascript:window.harm=3\">x</a></font></b>",
       "x&quot; onload=&quot;window.harm=4");
  expectNoHarm();
  EXPECT_EQ(
      run("document.querySelector('.shown').querySelectorAll('script, img, iframe, a').length"),
      "0");
}

TEST_F(HostileWorkspace, AddressesAndPathsThatLeadOutsideAreNoPictures) {
  for (const std::string &media :
       {address("picture.png"), "//127.0.0.1:" + std::to_string(port.number()) + "/p.png",
        std::string("../outside/secret.png"), std::string("intro_asset/../../outside/secret.png"),
        std::string("..%2Foutside%2Fsecret.png"), folder.at("outside/secret.png"),
        "file://" + folder.at("outside/secret.png"), std::string("javascript:window.harm=1//.png"),
        std::string("data:text/html,&lt;script>window.harm=1&lt;/script>.png")}) {
    SCOPED_TRACE(media);
    show(media, "<b>text</b>");
    expectNoHarm();
  }
}

TEST_F(HostileWorkspace, EntitiesOfADocumentAreNotRead) {
  show("a.jpg", "<b>text</b>", "Fade",
       "<!DOCTYPE main [<!ENTITY x SYSTEM \"" + address("entity") +
           "\"><!ENTITY y SYSTEM \"../../outside/secret.txt\">]>");
  expectNoHarm();
}

TEST_F(HostileWorkspace, APictureThatIsAPageIsNoPage) {
  folder.write("workspace/a.jpg",
               "<html><script>parent.harm=1;fetch('" + address("page") + "')</script></html>");
  folder.write(
      "workspace/b.png",
      "<svg xmlns=\"http://www.w3.org/2000/svg\"><script>top.harm=1</script><image href=\"" +
          address("image") + "\"/></svg>");
  for (const char *media : {"a.jpg", "b.png"}) {
    show(media, "<b>text</b>");
    expectNoHarm();
  }
}

TEST_F(HostileWorkspace, AMovieOpensNoAddressAndLoadsNothing) {
  folder.write("workspace/m.swf",
               movie(openAddress(address("window"), "_blank") + openAddress(address("self"), "") +
                     openAddress("javascript:parent.harm=1;window.harm=1", "_self") +
                     openAddress("FSCommand:exec", "calc") +
                     openAddress(address("level.swf"), "_level1") +
                     openAddress("../outside/secret.txt", "_level2") +
                     openAddress("file://" + folder.at("outside/secret.txt"), "_level3")));
  show("m.swf", "<b>text</b>");
  ASSERT_TRUE(becomes("'playing' in document.querySelector('.movie').dataset", "true", 60));
  EXPECT_TRUE(waitForColour(300, 200, "0ac828", 30));
  expectNoHarm();
}

} // namespace
