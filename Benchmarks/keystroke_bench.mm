// Editing a long document in the content editor: a keystroke in the caption field, from the key
// event to the document replaced on disk and the table redrawn, beside the durable replacement of
// the same bytes alone; and how long the main thread is busy while the panel opens and while slides
// and captions are selected.
#import <AppKit/AppKit.h>

#import "Bridge/text.h"
#import "Class/PluginSettingsDelegate.h"
#import "preview_support.h"
#import "support/panel_nib.h"

#include "Core/file_tree.h"
#include "measure.h"
#include "support/temporary_folder.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

using namespace vireonix;
using vireonix::bench::secondsOf;

namespace {

constexpr int kCaptionsOfASlide = 10;
constexpr int kKeystrokes = 200;
constexpr int kQuickKeystrokes = 20;
constexpr int kSelections = 50;
constexpr double kMillisecond = 1e3;
constexpr double kPercentile = 0.95;
// What a keystroke may take beside the bare replacement, in seconds.
constexpr double kMostBesideTheFile = 0.008;
constexpr double kLongestStall = 100;
constexpr double kTurn = 0.001;
constexpr double kPatience = 5;
constexpr double kSettling = 0.5;

void require(bool condition, const char *what) {
  if (condition)
    return;
  std::fprintf(stderr, "keystroke_bench: %s\n", what);
  std::exit(EXIT_FAILURE);
}

std::string documentWith(int captions, int captionsOfASlide) {
  std::string slides;
  for (int first = 0; first < captions; first += captionsOfASlide)
    slides += bench::slideElement("intro_asset/picture " + std::to_string(first) + ".jpg",
                                  captionsOfASlide, ", of some length");
  return bench::documentOf(slides);
}

// The panel from its nib in a window, on a workspace of its own; saves reach a real controller.
class Scene {
public:
  explicit Scene(const std::string &document) {
    require(core::createFolders(folder_.at("workspace/intro_asset")).ok() &&
                core::createFolders(folder_.at("aside")).ok(),
            "no folder could be made");
    require(core::replaceFile(documentPath(), document).ok(), "no document could be written");
    window_ = [[NSWindow alloc] initWithContentRect:NSMakeRect(50, 50, 900, 700)
                                          styleMask:NSTitledWindowMask
                                            backing:NSBackingStoreBuffered
                                              defer:NO];
    controller_ = [[PluginSettingsDelegate alloc] initWithWindow:nil];
    [controller_ setWorkSpace:workspace()];
    panel_ = loadedPanel();
    [[window_ contentView] addSubview:panel_];
    [panel_ setWorkSpace:workspace()];
    [panel_ setOwer:controller_];
    [panel_ setBundlePath:@VIREONIX_BUNDLE];
  }

  ~Scene() {
    [panel_ removeFromSuperview];
    [window_ close];
  }

  Scene(const Scene &) = delete;
  Scene &operator=(const Scene &) = delete;

  double secondsToOpen() const {
    return secondsOf([&] {
      @autoreleasepool {
        [panel_ loadDispInfo];
        [window_ makeKeyAndOrderFront:nil];
        [window_ display];
      }
    });
  }

  // Until the window manager and the window are done with each other.
  void settleDown() const {
    NSDate *end = [NSDate dateWithTimeIntervalSinceNow:kPatience];
    while (![window_ isKeyWindow] && [end timeIntervalSinceNow] > 0)
      bench::takeEvent(kTurn);
    require([window_ isKeyWindow], "the window did not become the key window");
    NSDate *quiet = [NSDate dateWithTimeIntervalSinceNow:kSettling];
    while ([quiet timeIntervalSinceNow] > 0)
      bench::takeEvent(kTurn);
  }

  // From the selection of a row until the field shows the row's value and the tables are redrawn.
  double secondsToShow(NSTableView *table, NSInteger row, NSTextField *field) const {
    NSString *value = [[table dataSource] tableView:table
                          objectValueForTableColumn:[[table tableColumns] objectAtIndex:0]
                                                row:row];
    return secondsOf([&] {
      [table selectRowIndexes:[NSIndexSet indexSetWithIndex:static_cast<NSUInteger>(row)]
          byExtendingSelection:NO];
      [table scrollRowToVisible:row];
      NSDate *end = [NSDate dateWithTimeIntervalSinceNow:kPatience];
      while (![[field stringValue] isEqualToString:value] && [end timeIntervalSinceNow] > 0)
        bench::takeEvent(kTurn);
      require([[field stringValue] isEqualToString:value], "a selected row was not shown");
      [window_ displayIfNeeded];
    });
  }

  void beginTyping() const { [window_ makeFirstResponder:[panel_ txtCaption]]; }

  double secondsToType(int number) const {
    const auto letter = static_cast<unichar>('a' + number % 26);
    NSString *characters = [NSString stringWithCharacters:&letter length:1];
    NSEvent *event = [NSEvent keyEventWithType:NSKeyDown location:NSZeroPoint modifierFlags:0
                                     timestamp:0
                                  windowNumber:[window_ windowNumber]
                                       context:nil
                                    characters:characters
                   charactersIgnoringModifiers:characters
                                     isARepeat:NO
                                       keyCode:0];
    return secondsOf([&] {
      @autoreleasepool {
        [NSApp sendEvent:event];
        [window_ displayIfNeeded];
      }
    });
  }

  double secondsToReplace() const {
    const std::string bytes = document();
    const std::string file = folder_.at("aside/data.xml");
    return secondsOf([&] { require(core::replaceFile(file, bytes).ok(), "no replacement"); });
  }

  // Until the position file, which every save has written on a thread, is written.
  void settle() const {
    for (double waited = 0; ![controller_ isChange] && waited < kPatience; waited += kTurn) {
      @autoreleasepool {
        [[NSRunLoop currentRunLoop] runMode:NSDefaultRunLoopMode
                                 beforeDate:[NSDate dateWithTimeIntervalSinceNow:kTurn]];
      }
    }
    [controller_ setIsChange:NO];
  }

  std::string document() const { return core::readFile(documentPath()).value_or(""); }
  std::string caption() const { return bridge::utf8([[panel_ txtCaption] stringValue]); }
  PrivateView *panel() const { return panel_; }

private:
  static PrivateView *loadedPanel() {
    NSBundle *bundle = [NSBundle bundleWithPath:@VIREONIX_BUNDLE];
    PrivateView *panel = test::panelOfNib(bundle);
    require(panel != nil, "the nib holds no panel");
    return panel;
  }

  NSString *workspace() const { return bridge::pathString(folder_.at("workspace")); }
  std::string documentPath() const { return folder_.at("workspace/intro_asset/data.xml"); }

  test::TemporaryFolder folder_;
  NSWindow *window_ = nil;
  PluginSettingsDelegate *controller_ = nil;
  PrivateView *panel_ = nil;
};

void measureTyping(const Scene &scene, const std::string &where, double limit) {
  std::vector<double> keystrokes;
  std::vector<double> replacements;
  scene.beginTyping();
  for (int i = 0; i < (bench::isQuick() ? kQuickKeystrokes : kKeystrokes); ++i) {
    keystrokes.push_back(scene.secondsToType(i));
    require(scene.document().find(scene.caption()) != std::string::npos,
            "what was typed is not on disk");
    scene.settle();
    replacements.push_back(scene.secondsToReplace());
  }
  const std::string what = "keystroke to document on disk and table redrawn, " + where;
  bench::report({.what = what,
                 .reference = "the durable replacement of the same bytes alone",
                 .limit = kMostBesideTheFile,
                 .judged = bench::Judged::Difference,
                 .share = kPercentile},
                keystrokes, replacements, bench::peakMemory());
  bench::report({.what = what + ", beside a limit",
                 .reference = {},
                 .limit = limit,
                 .judged = bench::Judged::Ours,
                 .share = kPercentile},
                keystrokes, {}, bench::peakMemory());
}

void measureSelections(const Scene &scene, const std::string &where) {
  double slowestSlide = 0;
  double slowestCaption = 0;
  NSTableView *slides = [scene.panel() tableView];
  NSTableView *captions = [scene.panel() tbContent];
  for (int i = 0; i < kSelections; ++i) {
    const NSInteger slide = NSInteger{7} * i % [slides numberOfRows];
    slowestSlide =
        std::max(slowestSlide, scene.secondsToShow(slides, slide, [scene.panel() txtFileName]));
    const NSInteger caption = NSInteger{3} * i % [captions numberOfRows];
    slowestCaption = std::max(slowestCaption,
                              scene.secondsToShow(captions, caption, [scene.panel() txtCaption]));
  }
  bench::report("slowest selection of a slide, " + where, slowestSlide * kMillisecond, "ms",
                kLongestStall);
  bench::report("slowest selection of a caption, " + where, slowestCaption * kMillisecond, "ms",
                kLongestStall);
}

void measure(int captions, int captionsOfASlide, double limit) {
  const std::string where =
      std::to_string(captions) + " captions in slides of " + std::to_string(captionsOfASlide);
  const Scene scene(documentWith(captions, captionsOfASlide));
  bench::report("opening the panel, " + where, scene.secondsToOpen() * kMillisecond, "ms",
                kLongestStall);
  scene.settleDown();
  measureSelections(scene, where);
  measureTyping(scene, where, limit);
}

} // namespace

int main() {
  @autoreleasepool {
    [NSApplication sharedApplication];
    [NSApp finishLaunching];
    measure(1'000, kCaptionsOfASlide, 0.008);
    measure(10'000, kCaptionsOfASlide, 0.016);
    measure(10'000, 10'000, 0.016);
  }
  return EXIT_SUCCESS;
}
