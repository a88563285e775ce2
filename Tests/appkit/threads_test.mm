// What runs on other threads, while the main thread works on the same objects. The thread sanitizer
// looks on when this is built with the preset tsan-appkit.
#import "Class/DetachedCall.h"
#import "Class/Log/LogFunctions.h"
#import "panel_fixture.h"
#import "support/figures.h"
#import "support/position_window.h"
#import "support/run_loop.h"

#import "Bridge/text.h"

#include "Core/position.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <optional>
#include <thread>
#include <vector>

namespace fs = std::filesystem;
using namespace vireonix;
using namespace vireonix::test;

/// Tells of a selection as a table does, on whichever thread it is asked.
@interface SelectionTeller : NSObject {
@public
  TableViewProtocol *protocol;
  NSNotification *notification;
}
- (void)tell;
@end

@implementation SelectionTeller
- (void)tell {
  [protocol tableViewSelectionDidChange:notification];
}
@end

namespace {

constexpr int kThreads = 8;
constexpr int kEntries = 25;
constexpr int kSaves = 200;
constexpr int kSelections = 100;
constexpr int kBusyRounds = 5;

/// The work of several threads; ends with them.
class Threads {
public:
  template <typename Work> Threads(int count, Work work) {
    for (int number = 0; number < count; ++number)
      threads_.emplace_back(work, number);
  }
  ~Threads() {
    for (std::thread &thread : threads_)
      thread.join();
  }
  Threads(const Threads &) = delete;
  Threads &operator=(const Threads &) = delete;

private:
  std::vector<std::thread> threads_;
};

std::ptrdiff_t countOf(std::string_view text, std::string_view part) {
  std::ptrdiff_t count = 0;
  for (size_t at = text.find(part); at != std::string_view::npos; at = text.find(part, at + 1))
    ++count;
  return count;
}

void logInEveryWay(int number) {
  for (int entry = 0; entry < kEntries; ++entry) {
    logDebug(@"debug %d", number);
    logSave(@"entry %d of %@", entry, [NSNumber numberWithInt:number]);
    logError(@"error %d of %d", entry, number);
    logWarn(@"warning %@", @"w");
  }
}

class LogFromThreads : public testing::Test {
protected:
  void SetUp() override { fs::create_directories(folder_ / "backupLog"); }
  void TearDown() override { fs::remove_all(folder_); }

  /// Everything that the log and its rotated predecessors hold.
  [[nodiscard]] std::string everything() const {
    std::string text = fileBytes(folder_ / "Log.txt");
    for (const auto &entry : fs::directory_iterator(folder_ / "backupLog"))
      text += '\n' + fileBytes(entry.path());
    return text;
  }

  fs::path folder_ = bridge::path([NSHomeDirectory()
      stringByAppendingPathComponent:@"Library/Application Support/Marquell/bundle"]);
};

// A panel whose owner is a real controller with a canvas and fields.
class SavingThreads : public PanelTest {
protected:
  SavingThreads() {
    position_.emplace(core::Position{5, 5, 5, 5, 80, 2});
    position_->useWorkspace();
    open(documentMarkup(slideMarkup("a.jpg", captionMarkup("one") + captionMarkup("two"))));
    [panel_ setOwer:position_->controller];
  }
  ~SavingThreads() override {
    close();
    position_.reset();
  }

  /// Edits the document, the position and the layer, as the user does, a step at a time.
  void edit(int step) {
    position_->drag(NSMakePoint(80, 60), NSMakePoint(80 + (step % 2 == 0 ? 6 : -6), 60));
    [position_->layers selectCellWithTag:step % 3];
    position_->edit(position_->left);
    position_->insert([NSString stringWithFormat:@"%d", step % 40]);
    type([panel_ txtCaption], step % 2 == 0 ? "even" : "odd");
    [position_->slider setDoubleValue:step % 100];
    [position_->controller onTransparencyChange:nil];
  }

  std::optional<PositionWindow> position_;
};

} // namespace

TEST_F(LogFromThreads, EveryEntryArrivesOnceWhileTheLogIsRotated) {
  // A few entries below the size at which it is rotated.
  const size_t nearlyFull = size_t{4} * 1024 * 1024 - 2000;
  std::ofstream(folder_ / "Log.txt") << std::string(nearlyFull, 'x');
  testing::internal::CaptureStderr();
  {
    const Threads threads(kThreads, logInEveryWay);
    logInEveryWay(kThreads);
  }
  const std::string console = testing::internal::GetCapturedStderr();
  const std::string log = everything();
  EXPECT_EQ(std::distance(fs::directory_iterator(folder_ / "backupLog"), {}), 1);
  for (int number = 0; number <= kThreads; ++number) {
    for (int entry = 0; entry < kEntries; ++entry) {
      const std::string text = std::to_string(entry) + " of " + std::to_string(number);
      EXPECT_EQ(countOf(log + '\n', "{bundle}:entry " + text + '\n'), 1) << text;
      EXPECT_EQ(countOf(console, "Error:error " + text + '\n'), 1) << text;
    }
  }
  EXPECT_EQ(countOf(console, "Warn:warning w\n"), (kThreads + 1) * kEntries);
  reportFigure("threads.log", std::to_string((kThreads + 1) * kEntries) + " entries, losses: none");
}

TEST_F(SavingThreads, WriteWhatStandsWhenTheMainThreadEditsOn) {
  selectSlide(0);
  selectCaption(0);
  for (int step = 0; step < kSaves; ++step) {
    [panel_ onSave:nil];
    edit(step);
    pumpFor(0.001);
  }
  [position_->controller saveGlobalSettings];
  const std::string last = core::positionText(position_->position());
  EXPECT_TRUE(pumpUntil([&] { return position_->settings() == last; })) << position_->settings();
  pumpFor(0.3);
  EXPECT_EQ(position_->settings(), last) << "no save of an earlier state comes later";
  EXPECT_EQ(savedValue(0, 0, "text"), "odd");
  reportFigure("threads.saves", std::to_string(kSaves) + " saves on threads of their own during " +
                                    std::to_string(kSaves) + " edits, losses: none");
}

TEST_F(SavingThreads, TellTheCanvasFieldsOfTheLastDragStep) {
  for (int step = 0; step < kSaves; ++step) {
    position_->drag(NSMakePoint(80, 60), NSMakePoint(80 + (step % 2 == 0 ? 6 : -6), 60));
    [DetachedCall send:@selector(saveGlobalSettings) to:position_->controller];
  }
  const float left = position_->position().left;
  EXPECT_TRUE(pumpUntil([&] {
    return [[position_->left stringValue] isEqual:[NSString stringWithFormat:@"%.1f", left]];
  }));
}

TEST_F(SavingThreads, WriteOneStateWholeWhileTheMainThreadIsTooBusyToAnswer) {
  PositionRect *record = position_->record();
  for (int round = 0; round < kBusyRounds; ++round) {
    [position_->controller setIsChange:NO];
    [DetachedCall send:@selector(saveGlobalSettings) to:position_->controller];
    float value = 0;
    const NSTimeInterval end = [NSDate timeIntervalSinceReferenceDate] + 10;
    while (![position_->controller isChange] && [NSDate timeIntervalSinceReferenceDate] < end) {
      value = value < 9 ? value + 1 : 0;
      [record setPosition:{value, value, value, value, value, 2}];
    }
    const std::string saved = position_->settings();
    const std::string number = saved.substr(0, saved.find('\n') + 1);
    EXPECT_EQ(saved, number + number + number + number + number + "2");
    pumpFor(0.01);
  }
}

TEST_F(SavingThreads, EndAfterThePanelAndItsOwnerWereLetGo) {
  @autoreleasepool {
    for (int step = 0; step < kThreads; ++step) {
      [panel_ onSave:nil];
      edit(step);
      [position_->controller updatePositionFields];
    }
    close();
    position_->releaseController();
  }
  EXPECT_TRUE(pumpUntil([] { return PositionWindow::isControllerGone(); }));
  EXPECT_TRUE(PositionWindow::wasControllerFreedOnTheMainThread());
}

TEST_F(SavingThreads, TellOfSelectionsWhileTheListsChange) {
  SelectionTeller *teller = [[[SelectionTeller alloc] init] autorelease];
  teller->protocol = captions();
  teller->notification =
      [NSNotification notificationWithName:NSTableViewSelectionDidChangeNotification
                                    object:[panel_ tbContent]];
  selectSlide(0);
  for (int step = 0; step < kSelections; ++step) {
    [DetachedCall send:@selector(tell) to:teller];
    [[panel_ tbContent] selectRowIndexes:[NSIndexSet indexSetWithIndex:step % 2]
                    byExtendingSelection:NO];
    type([panel_ txtCaption], step % 2 == 0 ? "even" : "odd");
    [panel_ onContentAdd:nil];
    [panel_ onContentRemove:nil];
    pumpFor(0.001);
  }
  [[panel_ tbContent] selectRowIndexes:[NSIndexSet indexSetWithIndex:1] byExtendingSelection:NO];
  EXPECT_TRUE(pumpUntil([&] { return selectContentIndex() == 1; }));
  EXPECT_EQ([[captions() list] count], 2U);
}
