// From making the settings controller until its preview is painted, beside a bare window whose web
// view loads the same page directly; and what an open window costs while its page stands still,
// beside an empty window.
#import "preview_support.h"

#include "measure.h"
#include "own_copy.h"
#include "support/temporary_folder.h"

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <string>
#include <unordered_map>
#include <vector>

#include <unistd.h>

using namespace vireonix::bench;
namespace fs = std::filesystem;

namespace {

constexpr double kPatience = 30;
constexpr double kSettling = 4;
constexpr int kIdleSamples = 15;
// Long enough for what happens every few seconds.
constexpr double kIdle = 4;
constexpr double kPercent = 100;
constexpr double kNanosecond = 1e-9;
constexpr Colour kTeal{20, 110, 120};

double now() {
  return [NSDate timeIntervalSinceReferenceDate];
}

// The parents of all processes.
std::unordered_map<pid_t, pid_t> parents() {
  std::unordered_map<pid_t, pid_t> all;
  for (const auto &entry : fs::directory_iterator("/proc")) {
    const pid_t id = std::atoi(entry.path().filename().c_str());
    std::string line;
    if (id > 0 && std::getline(std::ifstream(entry.path() / "stat"), line))
      std::sscanf(line.c_str() + line.rfind(')') + 1, " %*c %d", &all[id]);
  }
  return all;
}

// Processor seconds of this process and all below it.
double processorSeconds() {
  const auto all = parents();
  double seconds = 0;
  for (const auto &[id, parent] : all) {
    pid_t ancestor = id;
    while (ancestor != getpid() && all.contains(ancestor))
      ancestor = all.at(ancestor);
    clockid_t clock{};
    timespec time{};
    if (ancestor == getpid() && clock_getcpuclockid(id, &clock) == 0 &&
        clock_gettime(clock, &time) == 0)
      seconds += static_cast<double>(time.tv_sec) + kNanosecond * static_cast<double>(time.tv_nsec);
  }
  return seconds;
}

// The share of a processor that is used while nothing happens, several times.
std::vector<double> idleShares() {
  runFor(kSettling);
  std::vector<double> shares;
  for (int i = 0; i < (isQuick() ? 2 : kIdleSamples); ++i) {
    const double start = now();
    const double before = processorSeconds();
    runFor(kIdle);
    shares.push_back(kPercent * (processorSeconds() - before) / (now() - start));
  }
  return shares;
}

void openEmptyWindow() {
  NSWindow *window = [[NSWindow alloc] initWithContentRect:NSMakeRect(100, 100, 800, 600)
                                                 styleMask:NSTitledWindowMask
                                                   backing:NSBackingStoreBuffered
                                                     defer:NO];
  [window makeKeyAndOrderFront:nil];
  [window display];
}

// Nothing when the page did not come.
std::vector<double> measure(const std::string &what, const std::string &workspace) {
  [NSApplication sharedApplication];
  [NSApp finishLaunching];
  if (what == "idle-empty") {
    openEmptyWindow();
    return idleShares();
  }
  const double start = now();
  WebView *view = what == "bare" ? openBareWindow(workspace) : [openSettings(workspace) iWebView];
  if (!runUntil([&] { return middleOf(view) == kTeal; }, kPatience))
    return {};
  return what == "idle" ? idleShares() : std::vector<double>{now() - start};
}

void measureOpening(const fs::path &folder) {
  writeLongWorkspace(folder, kTeal);
  compare(
      {.what = "open the window to painted preview, 1,000 captions",
       .reference = "an empty window with the same web view",
       .limit = 1.5,
       .isInThisProcess = false},
      [&] { return measuredInOwnCopy("settings", folder).front(); },
      [&] { return measuredInOwnCopy("bare", folder).front(); });
}

void measureIdling(const fs::path &folder) {
  replaceFile(folder / "index.html", "<!doctype html><body style='background:#146e78'>still");
  report({.what = "idle window, still page",
          .reference = "an empty window",
          .limit = 0.5,
          .unit = "%",
          .judged = Judged::Ours},
         measuredInOwnCopy("idle", folder), measuredInOwnCopy("idle-empty", folder), 0);
}

} // namespace

int main(int argc, char **argv) {
  @autoreleasepool {
    answerAsCopy(argc, argv, measure);
    const vireonix::test::TemporaryFolder folder;
    measureOpening(folder.path() / "workspace");
    measureIdling(folder.path() / "workspace");
  }
  return EXIT_SUCCESS;
}
