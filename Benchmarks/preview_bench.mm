// From a replaced slider document until the changed slide is painted: in the settings window, from
// the tick of its timer on, beside a bare window with the same web view that loads the page again.
#import "preview_support.h"

#include "measure.h"

#include <cstdio>
#include <cstdlib>
#include <vector>

#include <unistd.h>

using namespace vireonix::bench;
namespace fs = std::filesystem;

namespace {

constexpr int kSlides = 20;
constexpr int kCaptionsOfSlide = 5;
constexpr int kRounds = 40;
constexpr double kPatience = 30;
constexpr double kSettling = 0.1;
constexpr double kLongest = 0.150;
constexpr Colour kTeal{20, 110, 120};
constexpr Colour kAmber{190, 130, 30};
// Of these two slides, one changes in each round, and they look different.
constexpr int kTealSlide = 3;
constexpr int kAmberSlide = 12;

std::string document(int tealEdition, int amberEdition) {
  std::string slides;
  for (int slide = 0; slide < kSlides; ++slide) {
    const int edition = slide == kTealSlide ? tealEdition : slide == kAmberSlide ? amberEdition : 0;
    slides += slideElement(slide == kAmberSlide ? "intro_asset/amber.gif" : "intro_asset/teal.gif",
                           kCaptionsOfSlide, ", edition " + std::to_string(edition));
  }
  return documentOf(slides);
}

// A workspace and a web view that shows it.
class Preview {
public:
  explicit Preview(fs::path workspace) : workspace_(std::move(workspace)) {
    writePlayer(workspace_);
    replaceFile(workspace_ / "intro_asset/teal.gif", picture(kTeal));
    replaceFile(workspace_ / "intro_asset/amber.gif", picture(kAmber));
    replaceDocument();
  }

  [[nodiscard]] const fs::path &workspace() const { return workspace_; }

  void setView(WebView *view) {
    view_ = view;
    await(kTeal);
    measure([this] { [[view_ mainFrame] reload]; });
  }

  // Seconds from the call of `reload` until the slide that was changed before it is painted.
  double measure(const std::function<void()> &reload) {
    const bool isAmber = ++round_ % 2 == 1;
    (isAmber ? amberEdition_ : tealEdition_) = round_;
    replaceDocument();
    return secondsOf([&] {
      reload();
      await(isAmber ? kAmber : kTeal);
    });
  }

  [[nodiscard]] WebView *view() const { return view_; }

  // Nothing moves while the other preview is measured.
  void rest() const {
    [view_ stringByEvaluatingJavaScriptFromString:@"vireonixPlayer.pause()"];
    runFor(kSettling);
  }

private:
  void replaceDocument() const {
    replaceFile(workspace_ / "intro_asset/data.xml", document(tealEdition_, amberEdition_));
  }

  void await(Colour colour) const {
    if (runUntil([&] { return middleOf(view_) == colour; }, kPatience))
      return;
    std::fprintf(stderr, "preview_bench: the changed slide was not painted\n");
    std::exit(EXIT_FAILURE);
  }

  fs::path workspace_;
  WebView *view_ = nil;
  int round_ = 0;
  int tealEdition_ = 0;
  int amberEdition_ = 0;
};

void measureBoth(const fs::path &folder) {
  Preview ours(folder / "ours");
  Preview reference(folder / "reference");
  PluginSettingsDelegate *controller = openSettings(ours.workspace());
  ours.setView([controller iWebView]);
  reference.setView(openBareWindow(reference.workspace()));
  WebView *bare = reference.view();
  std::vector<double> samples;
  compare(
      {.what = "change to repainted preview, from the tick, 100 captions",
       .reference = "the page's bare reload in a bare window",
       .limit = 1.2,
       .rounds = kRounds},
      [&] {
        reference.rest();
        const double seconds = ours.measure([&] {
          [controller setIsChange:YES];
          [[controller repeatTimer] fire];
        });
        samples.push_back(seconds);
        ours.rest();
        return seconds;
      }, [&] { return reference.measure([&] { [[bare mainFrame] reload]; }); });
  samples.erase(samples.begin()); // It warmed up.
  report({.what = "change to repainted preview, from the tick, beside a limit",
          .reference = {},
          .limit = kLongest,
          .judged = Judged::Ours,
          .share = 0.95},
         samples, {}, peakMemory());
}

} // namespace

int main() {
  @autoreleasepool {
    [NSApplication sharedApplication];
    [NSApp finishLaunching];
    const fs::path folder =
        fs::temp_directory_path() / ("preview_bench-" + std::to_string(getpid()));
    measureBoth(folder);
    fs::remove_all(folder);
    std::fflush(stdout);
    // Without the application's farewell, which can wait for helper programs.
    _exit(EXIT_SUCCESS);
  }
}
