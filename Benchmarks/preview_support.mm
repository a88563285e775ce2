#import "preview_support.h"

#import "Bridge/text.h"

#include <cmath>
#include <fstream>

namespace fs = std::filesystem;
using vireonix::bridge::pathString;

namespace vireonix::bench {
namespace {

// The size of the preview in the settings window's nib.
constexpr double kWidth = 384;
constexpr double kHeight = 288;
constexpr double kMargin = 20;
constexpr int kLongSlides = 20;
constexpr int kCaptionsOfLongSlide = 50;
constexpr double kTurn = 0.002;

double now() {
  return [NSDate timeIntervalSinceReferenceDate];
}

std::string captionElement(int number, const std::string &text) {
  return R"(<text set_animation_style="Fade" Align="TL" In_Time=")" + std::to_string(number) +
         R"(" Stay_Time="5" Text_Align="0" Text_Animation_LetterByLetter="0" )"
         R"(Animation_Start_Direction="0"><text><![CDATA[<b><font size="18" color="#FFFFFF">)"
         "Caption number " +
         std::to_string(number) + text + "</font></b>]]></text></text>";
}

unsigned char byteOf(double part) {
  return static_cast<unsigned char>(std::lround(part * 255));
}

} // namespace

void replaceFile(const fs::path &file, const std::string &bytes) {
  fs::create_directories(file.parent_path());
  fs::path fresh = file;
  fresh += ".new";
  std::ofstream(fresh, std::ios::binary) << bytes;
  fs::rename(fresh, file);
}

void writePlayer(const fs::path &folder) {
  fs::create_directories(folder);
  fs::copy(fs::path(VIREONIX_BUNDLE) / "Contents/Resources/html", folder,
           fs::copy_options::recursive);
}

std::string picture(Colour colour) {
  const std::string head("GIF89a\x01\0\x01\0\x80\0\0", 13);
  const std::string colours{static_cast<char>(colour.red),
                            static_cast<char>(colour.green),
                            static_cast<char>(colour.blue),
                            0,
                            0,
                            0};
  const std::string image("\x2c\0\0\0\0\x01\0\x01\0\0\x02\x02\x44\x01\0\x3b", 16);
  return head + colours + image;
}

std::string documentOf(const std::string &slides) {
  return R"(<?xml version="1.0" encoding="utf-8"?><main><define_animation_Style>)"
         R"(<style Name="Fade"/></define_animation_Style><data>)" +
         slides + "</data></main>";
}

std::string slideElement(const std::string &media, int captions, const std::string &text) {
  std::string element = R"(<slide Background_image=")" + media + R"(">)";
  for (int number = 0; number < captions; ++number)
    element += captionElement(number, text);
  return element + "</slide>";
}

void writeLongWorkspace(const fs::path &folder, Colour colour) {
  std::string slides;
  for (int slide = 0; slide < kLongSlides; ++slide)
    slides += slideElement("intro_asset/ground.gif", kCaptionsOfLongSlide, "");
  writePlayer(folder);
  replaceFile(folder / "intro_asset/data.xml", documentOf(slides));
  replaceFile(folder / "intro_asset/ground.gif", picture(colour));
}

PluginSettingsDelegate *openSettings(const fs::path &workspace) {
  PluginSettingsDelegate *controller =
      [[PluginSettingsDelegate alloc] initWithLanguageCode:@"en" bundlePath:@VIREONIX_BUNDLE];
  [controller setWorkSpace:pathString(workspace.string())];
  [[controller window] makeKeyAndOrderFront:nil];
  [[controller window] display];
  return controller;
}

WebView *openBareWindow(const fs::path &workspace) {
  const NSRect content = NSMakeRect(100, 100, kWidth + 2 * kMargin, kHeight + 2 * kMargin);
  NSWindow *window = [[NSWindow alloc] initWithContentRect:content styleMask:NSTitledWindowMask
                                                   backing:NSBackingStoreBuffered
                                                     defer:NO];
  WebView *view = [[WebView alloc] initWithFrame:NSMakeRect(kMargin, kMargin, kWidth, kHeight)];
  [[window contentView] addSubview:view];
  [window makeKeyAndOrderFront:nil];
  [window display];
  NSURL *page = [NSURL fileURLWithPath:pathString((workspace / "index.html").string())];
  [[view mainFrame] loadRequest:[NSURLRequest requestWithURL:page]];
  return view;
}

Colour middleOf(WebView *view) {
  const Colour white{255, 255, 255};
  if ([[view mainFrameURL] length] == 0)
    return white;
  const NSRect bounds = [view bounds];
  [view lockFocus];
  NSBitmapImageRep *bitmap = [[[NSBitmapImageRep alloc]
      initWithFocusedViewRect:NSMakeRect(NSMidX(bounds), NSMidY(bounds), 1, 1)] autorelease];
  [view unlockFocus];
  NSColor *pixel = [[bitmap colorAtX:0 y:0] colorUsingColorSpaceName:NSDeviceRGBColorSpace];
  if (pixel == nil)
    return white;
  return {byteOf([pixel redComponent]), byteOf([pixel greenComponent]),
          byteOf([pixel blueComponent])};
}

bool runUntil(const std::function<bool()> &done, double seconds) {
  const double end = now() + seconds;
  while (now() < end) {
    takeEvent(kTurn);
    if (done())
      return true;
  }
  return false;
}

void runFor(double seconds) {
  const double end = now() + seconds;
  while (now() < end)
    takeEvent(end - now());
}

} // namespace vireonix::bench
