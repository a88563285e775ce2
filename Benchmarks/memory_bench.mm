// What the open settings window holds in memory, with the engine's processes, beside a bare window
// whose web view shows the same page of 1,000 captions.
#import "preview_support.h"

#include "measure.h"
#include "own_copy.h"
#include "support/memory_use.h"
#include "support/temporary_folder.h"

#include <cstdlib>
#include <string>
#include <vector>

using namespace vireonix::bench;

namespace {

constexpr double kPatience = 60;
constexpr double kSettling = 4;
constexpr Colour kTeal{20, 110, 120};

// KiB; nothing when the page did not come.
std::vector<double> measure(const std::string &what, const std::string &workspace) {
  [NSApplication sharedApplication];
  [NSApp finishLaunching];
  WebView *view = what == "bare" ? openBareWindow(workspace) : [openSettings(workspace) iWebView];
  if (!runUntil([view] { return middleOf(view) == kTeal; }, kPatience))
    return {};
  runFor(kSettling);
  return {vireonix::test::memoryOfTree()};
}

} // namespace

int main(int argc, char **argv) {
  @autoreleasepool {
    answerAsCopy(argc, argv, measure);
    const vireonix::test::TemporaryFolder folder;
    writeLongWorkspace(folder.path() / "workspace", kTeal);
    const auto measured = [&](const char *what) {
      return measuredInOwnCopy(what, folder.path() / "workspace").front();
    };
    compare(
        {.what = "memory of the open window, 1,000 captions",
         .reference = "an empty window with the same web view",
         .limit = 1.3,
         .unit = "KiB",
         .isInThisProcess = false},
        [&] { return measured("settings"); }, [&] { return measured("bare"); });
  }
  return EXIT_SUCCESS;
}
