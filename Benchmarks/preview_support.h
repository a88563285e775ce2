// What the benchmarks of the preview share: workspaces for the player, windows and their pixels.
#pragma once

#import <AppKit/AppKit.h>
#import <WebKit/WebKit.h>

#import "Class/PluginSettingsDelegate.h"
#import "support/run_loop.h"

#include <filesystem>
#include <functional>
#include <string>

namespace vireonix::bench {

/// A colour of eight bits a part.
struct Colour {
  unsigned char red = 0;
  unsigned char green = 0;
  unsigned char blue = 0;

  bool operator==(const Colour& other) const = default;
};

/// Replaces a file in one step; makes its folder when it is missing.
void replaceFile(const std::filesystem::path& file, const std::string& bytes);

/// The built player, without a document.
void writePlayer(const std::filesystem::path& folder);

/// A picture of one pixel, as the content of a GIF file, which the page stretches over the slide.
std::string picture(Colour colour);

/// The content of a slider document: `slides` elements, made by slideElement().
std::string documentOf(const std::string& slides);

/// A slide with `captions` captions, each of which ends in `text`, that enter one a second.
std::string slideElement(const std::string& media, int captions, const std::string& text);

/// A whole workspace of 1,000 captions on twenty slides, all of one colour.
void writeLongWorkspace(const std::filesystem::path& folder, Colour colour);

/// A settings window on a workspace, as a host opens it, modeless. Never released.
PluginSettingsDelegate* openSettings(const std::filesystem::path& workspace);

/// A window with nothing but a web view of the preview's size, on the workspace's page. Never
/// released.
WebView* openBareWindow(const std::filesystem::path& workspace);

/// The pixel in the middle of the view as the window shows it; white before there is a page.
Colour middleOf(WebView* view);

using test::takeEvent;

/// Handles events until `done`, `seconds` at the most; answers whether it was done.
bool runUntil(const std::function<bool()>& done, double seconds);

/// Handles events for a time.
void runFor(double seconds);

} // namespace vireonix::bench
