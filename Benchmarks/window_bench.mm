// From making the settings controller until its preview is painted, beside a bare window whose web
// view loads the same page directly; and what an open window costs while its page stands still.
//
// Each measurement runs in a process of its own: this program, called with what it is to measure.
#import <AppKit/AppKit.h>
#import <WebKit/WebKit.h>

#import "Bridge/text.h"
#import "Class/PluginSettingsDelegate.h"

#include "measure.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <unordered_map>

#include <unistd.h>

using namespace vireonix::bench;
using vireonix::bridge::pathString;
namespace fs = std::filesystem;

namespace {

constexpr int kSlides = 20;
constexpr int kCaptionsOfSlide = 5;
constexpr double kPatience = 30;
constexpr double kSettling = 4;
constexpr double kIdle = 20;
constexpr double kPercent = 100;
constexpr double kTurn = 0.002;
// A blank view is white; the player's ground and the slides are not.
constexpr double kBlank = 0.9;
// The size of the preview in the settings window's nib.
constexpr double kWidth = 384;
constexpr double kHeight = 288;

double now() {
  return [NSDate timeIntervalSinceReferenceDate];
}

void write(const fs::path &file, const std::string &bytes) {
  fs::create_directories(file.parent_path());
  std::ofstream(file, std::ios::binary) << bytes;
}

std::string caption(int number) {
  return "<text set_animation_style=\"Fade\" Align=\"TL\" In_Time=\"" + std::to_string(number) +
         "\" Stay_Time=\"5\" Text_Align=\"0\" Text_Animation_LetterByLetter=\"0\" "
         "Animation_Start_Direction=\"0\"><text><![CDATA[<b><font size=\"18\" color=\"#FFFFFF\">"
         "Caption number " +
         std::to_string(number) + "</font></b>]]></text></text>";
}

std::string document() {
  std::string slides;
  for (int slide = 0; slide < kSlides; ++slide) {
    slides += "<slide Background_image=\"intro_asset/ground.gif\">";
    for (int number = 0; number < kCaptionsOfSlide; ++number)
      slides += caption(number);
    slides += "</slide>";
  }
  return R"(<?xml version="1.0" encoding="utf-8"?><main><define_animation_Style>)"
         R"(<style Name="Fade"/></define_animation_Style><data>)" +
         slides + "</data></main>";
}

// One pixel, teal, which the page stretches over the slide.
std::string picture() {
  const std::string head("GIF89a\x01\0\x01\0\x80\0\0\x14\x6e\x78\0\0\0", 19);
  const std::string image("\x2c\0\0\0\0\x01\0\x01\0\0\x02\x02\x44\x01\0\x3b", 16);
  return head + image;
}

// Waits for one event, `seconds` at the most, and handles it.
void takeEvent(double seconds) {
  @autoreleasepool {
    NSEvent *event = [NSApp nextEventMatchingMask:NSAnyEventMask
                                        untilDate:[NSDate dateWithTimeIntervalSinceNow:seconds]
                                           inMode:NSDefaultRunLoopMode
                                          dequeue:YES];
    if (event != nil)
      [NSApp sendEvent:event];
  }
}

void runFor(double seconds) {
  const double end = now() + seconds;
  while (now() < end)
    takeEvent(end - now());
}

// Whether the view's middle, as the window shows it, is not blank.
bool isPainted(WebView *view) {
  if ([[view mainFrameURL] length] == 0)
    return false;
  const NSRect bounds = [view bounds];
  [view lockFocus];
  NSBitmapImageRep *bitmap = [[[NSBitmapImageRep alloc]
      initWithFocusedViewRect:NSMakeRect(NSMidX(bounds), NSMidY(bounds), 1, 1)] autorelease];
  [view unlockFocus];
  NSColor *pixel = [[bitmap colorAtX:0 y:0] colorUsingColorSpaceName:NSDeviceRGBColorSpace];
  return pixel != nil && [pixel redComponent] < kBlank;
}

WebView *openSettings(const std::string &workspace) {
  PluginSettingsDelegate *controller =
      [[PluginSettingsDelegate alloc] initWithLanguageCode:@"en" bundlePath:@VIREONIX_BUNDLE];
  [controller setWorkSpace:pathString(workspace)];
  [[controller window] makeKeyAndOrderFront:nil];
  [[controller window] display];
  return [controller iWebView];
}

WebView *openBareWindow(const std::string &workspace) {
  NSWindow *window =
      [[NSWindow alloc] initWithContentRect:NSMakeRect(100, 100, kWidth + 40, kHeight + 40)
                                  styleMask:NSTitledWindowMask
                                    backing:NSBackingStoreBuffered
                                      defer:NO];
  WebView *view = [[WebView alloc] initWithFrame:NSMakeRect(20, 20, kWidth, kHeight)];
  [[window contentView] addSubview:view];
  [window makeKeyAndOrderFront:nil];
  [window display];
  NSURL *page = [NSURL fileURLWithPath:pathString(workspace + "/index.html")];
  [[view mainFrame] loadRequest:[NSURLRequest requestWithURL:page]];
  return view;
}

// Processor seconds of this process and all below it, by the process file system.
double processorSeconds() {
  struct Process {
    long parent = 0;
    double ticks = 0;
  };
  std::unordered_map<long, Process> all;
  for (const auto &entry : fs::directory_iterator("/proc")) {
    const long id = std::atol(entry.path().filename().c_str());
    std::string line;
    if (id <= 0 || !std::getline(std::ifstream(entry.path() / "stat"), line))
      continue;
    Process process;
    unsigned long user = 0;
    unsigned long system = 0;
    std::sscanf(line.c_str() + line.rfind(')') + 1,
                " %*c %ld %*d %*d %*d %*d %*u %*u %*u %*u %*u %lu %lu", &process.parent, &user,
                &system);
    process.ticks = static_cast<double>(user + system);
    all[id] = process;
  }
  double ticks = 0;
  for (const auto &[id, process] : all) {
    long ancestor = id;
    while (ancestor != getpid() && all.count(ancestor) != 0)
      ancestor = all[ancestor].parent;
    ticks += ancestor == getpid() ? process.ticks : 0;
  }
  return ticks / static_cast<double>(sysconf(_SC_CLK_TCK));
}

double idleShare() {
  runFor(kSettling);
  const double start = now();
  const double before = processorSeconds();
  runFor(kIdle);
  return kPercent * (processorSeconds() - before) / (now() - start);
}

bool waitUntilPainted(WebView *view) {
  const double end = now() + kPatience;
  while (now() < end) {
    takeEvent(kTurn);
    if (isPainted(view))
      return true;
  }
  return false;
}

// Prints what was asked for, a negative number when the page did not come.
[[noreturn]] void measure(const std::string &what, const std::string &workspace) {
  [NSApplication sharedApplication];
  [NSApp finishLaunching];
  double value = -1;
  const double start = now();
  WebView *view = what == "bare" ? openBareWindow(workspace) : openSettings(workspace);
  if (waitUntilPainted(view))
    value = what == "idle" ? idleShare() : now() - start;
  std::printf("%.6f\n", value);
  std::fflush(stdout);
  // Without the application's farewell, which can wait for helper programs.
  _exit(EXIT_SUCCESS);
}

double measureInChild(const std::string &what, const fs::path &workspace) {
  const std::string self = fs::read_symlink("/proc/self/exe");
  const std::string options = " -measure " + what + " -workspace '" + workspace.string() + "'";
  FILE *child = popen(("'" + self + "'" + options).c_str(), "r");
  double value = -1;
  const bool isRead = child != nullptr && std::fscanf(child, "%lf", &value) == 1;
  if (child != nullptr)
    pclose(child);
  if (!isRead || value < 0) {
    std::fprintf(stderr, "window_bench: no preview came (%s)\n", what.c_str());
    std::exit(EXIT_FAILURE);
  }
  return value;
}

void measureAll(const fs::path &folder) {
  const fs::path player = folder / "player";
  fs::create_directories(player);
  fs::copy(fs::path(VIREONIX_BUNDLE) / "Contents/Resources/html", player,
           fs::copy_options::recursive);
  write(player / "intro_asset/data.xml", document());
  write(player / "intro_asset/ground.gif", picture());
  compare(
      {"from the controller to the painted preview, 100 captions",
       "a bare window that loads the page", 1.5, 15},
      [&] { return measureInChild("settings", player); },
      [&] { return measureInChild("bare", player); });
  const fs::path still = folder / "still";
  fs::copy(player, still, fs::copy_options::recursive);
  write(still / "index.html", "<!doctype html><body style='background:#146e78'>still");
  report("processor share of an idle window on a still page", measureInChild("idle", still), "%",
         0.5);
}

} // namespace

int main(int argc, char **argv) {
  @autoreleasepool {
    // In pairs: AppKit would open bare words as documents.
    if (argc == 5)
      measure(argv[2], argv[4]);
    const fs::path folder =
        fs::temp_directory_path() / ("window_bench-" + std::to_string(getpid()));
    measureAll(folder);
    fs::remove_all(folder);
  }
  return EXIT_SUCCESS;
}
