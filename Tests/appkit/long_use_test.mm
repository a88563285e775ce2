// Windows opened and cancelled, captions edited and previews reloaded, again and again: nothing
// grows, apart from what the web engine keeps for every view that it makes. That part is measured
// beside ours, with a bare window that shows the same view.
//
// VIREONIX_LONG_USE is how many sessions are opened and how many captions are edited, instead of
// the few here; VIREONIX_LONG_USE_SECONDS ends each of the two after a time, with as many as were
// done by then.
#import "support/settings_session.h"

#import "Bridge/text.h"
#import "support/figures.h"
#import "support/memory_use.h"
#import "support/process_state.h"
#import "support/run_loop.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string>

using namespace vireonix::test;
using vireonix::bridge::pathString;

namespace {

constexpr int kSessions = 40;
constexpr int kEdits = 150;
// What a process keeps is made meanwhile: fonts, cursors, the pools of the engine's threads.
constexpr int kSettlingRounds = 20;
// Bare windows are opened for so many sessions, when there are many.
constexpr int kSessionsOfBareWindow = 10;
// A long run tells so often how it stands.
constexpr int kRoundsOfProgress = 250;
// Heaps breathe: how much more than allowed may be in use at the end of a run, in KiB.
constexpr double kBreath = 1024;
constexpr double kBreathOfPage = 24 * 1024;
// The reference varies by itself from run to run.
constexpr double kRatio = 1.3;
// The size of the preview in the settings window's nib.
constexpr double kWidth = 384;
constexpr double kHeight = 288;

int rounds(int usually) {
  const char *wanted = std::getenv("VIREONIX_LONG_USE");
  return wanted != nullptr ? std::atoi(wanted) : usually;
}

std::chrono::seconds timeAllowed() {
  const char *wanted = std::getenv("VIREONIX_LONG_USE_SECONDS");
  return wanted != nullptr ? std::chrono::seconds(std::atoi(wanted)) : std::chrono::hours(24);
}

void tellProgress(int done, double heapBefore) {
  std::cout << "after " << done << ": " << (heapInUse() - heapBefore) / done << " KiB each, "
            << processState() << std::endl;
}

// Does the work so often, or until the time is over. Answers how often.
template <class Work> int repeat(int count, const Work &work) {
  const auto end = std::chrono::steady_clock::now() + timeAllowed();
  const double before = heapInUse();
  for (int done = 0; done < count; ++done) {
    if (std::chrono::steady_clock::now() > end)
      return done;
    work(done);
    if ((done + 1) % kRoundsOfProgress == 0)
      tellProgress(done + 1, before);
  }
  return count;
}

void openAndCancel(int) {
  @autoreleasepool {
    const SettingsSession session;
    NSWindow *window = session.window();
    [window makeKeyAndOrderFront:nil];
    WebView *preview = session.field(@"iWebView");
    EXPECT_TRUE(pumpEventsUntil(
        [&] { return ![session.controller() isChange] && ![preview isLoading]; }, 30));
    [session.field(@"btnCancel") performClick:nil];
    EXPECT_TRUE(pumpEventsUntil([window] { return ![window isVisible]; }));
  }
}

NSURL *pageOf(const SettingsSession &session) {
  return [NSURL fileURLWithPath:pathString(session.inWorkspace("index.html"))];
}

NSWindow *makeBareWindow(WebView *view) {
  NSWindow *window =
      [[NSWindow alloc] initWithContentRect:NSMakeRect(100, 100, kWidth + 40, kHeight + 40)
                                  styleMask:NSTitledWindowMask
                                    backing:NSBackingStoreBuffered
                                      defer:NO];
  [window setReleasedWhenClosed:NO];
  [[window contentView] addSubview:view];
  [window makeKeyAndOrderFront:nil];
  return window;
}

bool load(WebView *view, NSURL *page) {
  [[view mainFrame] loadRequest:[NSURLRequest requestWithURL:page]];
  return pumpEventsUntil([view] { return ![view isLoading]; }, 30);
}

void openAndCloseBareWindow(NSURL *page) {
  @autoreleasepool {
    WebView *view = [[WebView alloc] initWithFrame:NSMakeRect(20, 20, kWidth, kHeight)];
    NSWindow *window = makeBareWindow(view);
    EXPECT_TRUE(load(view, page));
    [window close];
    EXPECT_TRUE(pumpEventsUntil([window] { return ![window isVisible]; }));
    [window release];
    [view release];
  }
}

// The engine's processes end a while after their pages, and what served them with them.
void waitForRest() {
  EXPECT_TRUE(pumpEventsUntil([] { return processState().children == 0; }, 20));
}

struct HeapGrowth {
  int count;
  double kib;

  [[nodiscard]] double each() const { return kib / count; }
};

void expectNoMore(const ProcessState &after, const ProcessState &before) {
  EXPECT_LE(after.descriptors, before.descriptors + 8) << after << " instead of " << before;
  EXPECT_LE(after.threads, before.threads + 8) << after << " instead of " << before;
  EXPECT_LE(after.children, before.children) << after << " instead of " << before;
}

// By how much the heap grew over `count` calls, after some that do not count. Descriptors, threads
// and processes may not grow.
template <class Work> HeapGrowth growth(int count, const Work &work) {
  for (int i = 0; i < kSettlingRounds; ++i)
    work(i);
  waitForRest();
  const ProcessState stateBefore = processState();
  const double before = heapInUse();
  const int done = repeat(count, work);
  waitForRest();
  expectNoMore(processState(), stateBefore);
  return {done, heapInUse() - before};
}

// A session with its window open and the first caption selected.
class Editing {
public:
  Editing() {
    [session_.window() makeKeyAndOrderFront:nil];
    select(@"tableView");
    pumpEventsUntil([this] { return [field(@"tbContent") numberOfRows] > 0; });
    select(@"tbContent");
    EXPECT_TRUE(
        pumpEventsUntil([this] { return [[field(@"txtCaption") stringValue] length] > 0; }));
    EXPECT_TRUE(pumpEventsUntil(
        [this] { return ![session_.controller() isChange] && ![preview() isLoading]; }, 30));
    // From here on edit() does its work, without waiting for it.
    [[session_.controller() repeatTimer] setFireDate:[NSDate distantFuture]];
  }
  Editing(const Editing &) = delete;
  Editing &operator=(const Editing &) = delete;
  ~Editing() { [session_.field(@"btnCancel") performClick:nil]; }

  [[nodiscard]] WebView *preview() const { return session_.field(@"iWebView"); }
  [[nodiscard]] const SettingsSession &session() const { return session_; }

  // Types another caption, and does what the preview's timer would do at its next tick.
  void edit(int number) const {
    @autoreleasepool {
      NSTextField *caption = field(@"txtCaption");
      [caption setStringValue:[NSString stringWithFormat:@"Caption %i", number]];
      [panel() controlTextDidChange:[NSNotification notificationWithName:@"typed" object:caption]];
      EXPECT_TRUE(pumpEventsUntil([this] { return [session_.controller() isChange]; }));
      [session_.controller() onRepeatTimer:nil];
      EXPECT_TRUE(pumpEventsUntil([this] { return ![preview() isLoading]; }, 30));
    }
  }

private:
  [[nodiscard]] id panel() const { return session_.field(@"privateView"); }
  [[nodiscard]] id field(NSString *name) const { return [panel() valueForKey:name]; }
  void select(NSString *table) const {
    [field(table) selectRowIndexes:[NSIndexSet indexSetWithIndex:0] byExtendingSelection:NO];
  }

  SettingsSession session_;
};

struct Memory {
  int count = 0;
  double own = heapInUse();
  double page = privateMemoryOfChildren("WebKitWebProces");
  double network = privateMemoryOfChildren("WebKitNetworkPr");
};

std::string eachTime(int count, double kib) {
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%.2f KiB", kib / count);
  return text.data();
}

void tell(const char *what, int count, double kib) {
  std::printf("%-44s %8.2f KiB each, %d times\n", what, kib / count, count);
  std::fflush(stdout);
}

// What grew over `count` calls, after a tenth as many that do not count.
template <class Work> Memory growthWithPage(int count, const Work &work) {
  for (int i = 0; i < kSettlingRounds + count / 10; ++i)
    work(i);
  const Memory before;
  const int done = repeat(count, work);
  const Memory after;
  return {done, after.own - before.own, after.page - before.page, after.network - before.network};
}

Memory growthOfEdits(int count) {
  const Editing editing;
  const ProcessState before = processState();
  const Memory grown = growthWithPage(count, [&editing](int number) { editing.edit(number); });
  expectNoMore(processState(), before);
  return grown;
}

Memory growthOfBareLoads(int count) {
  const Editing editing;
  NSURL *page = pageOf(editing.session());
  return growthWithPage(count, [&](int) {
    @autoreleasepool {
      EXPECT_TRUE(load(editing.preview(), page));
    }
  });
}

} // namespace

TEST(LongUse, SessionsKeepNoMoreThanTheEngineKeepsForAView) {
  const int count = rounds(kSessions);
  SettingsSession withPage;
  @autoreleasepool {
    // Its window puts the page into its workspace, and goes.
    (void)withPage.window();
    [withPage.field(@"btnOK") performClick:nil];
    withPage.releaseController();
  }
  NSURL *page = pageOf(withPage);
  const HeapGrowth ours = growth(count, openAndCancel);
  tell("a session opened and cancelled", ours.count, ours.kib);
  const HeapGrowth reference =
      growth(std::max(std::min(count, kSessions), count / kSessionsOfBareWindow),
             [page](int) { openAndCloseBareWindow(page); });
  tell("a bare window with the same view", reference.count, reference.kib);
  EXPECT_LE(ours.kib, kRatio * std::max(reference.each(), 0.0) * ours.count + kBreath);
  reportFigure("use.sessions", eachTime(ours.count, ours.kib) + " a session, " +
                                   eachTime(reference.count, reference.kib) + " a bare window, " +
                                   std::to_string(ours.count) + " times");
}

TEST(LongUse, EditsWithReloadsKeepNoMoreThanBareLoads) {
  const Memory ours = growthOfEdits(rounds(kEdits));
  const int count = ours.count;
  const Memory reference = growthOfBareLoads(count);
  const double allowed = kRatio * count / reference.count;
  tell("an edit with its reload, this process", count, ours.own);
  tell("an edit with its reload, the page's process", count, ours.page);
  tell("an edit with its reload, the network's", count, ours.network);
  tell("a bare load, this process", reference.count, reference.own);
  tell("a bare load, the page's process", reference.count, reference.page);
  tell("a bare load, the network's", reference.count, reference.network);
  EXPECT_LE(ours.own, allowed * std::max(reference.own, 0.0) + kBreath);
  EXPECT_LE(ours.page, allowed * std::max(reference.page, 0.0) + kBreathOfPage);
  EXPECT_LE(ours.network, allowed * std::max(reference.network, 0.0) + kBreath);
  reportFigure("use.edits", eachTime(count, ours.own) + " an edit, " + eachTime(count, ours.page) +
                                " in the page's process, " + eachTime(count, ours.network) +
                                " in the network's, " + std::to_string(count) + " times");
}
