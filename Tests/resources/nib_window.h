// The settings window as the nibs of one language make it, without the controller's work: the panel
// in its placeholder's place, nothing else. For tests of the nibs themselves.
#pragma once

#import "vireonix/PrivateView.h"

#import <AppKit/AppKit.h>

#include <string>
#include <vector>

@class WebView;

/// Has the outlets that the settings window's nib sets, and nothing else of its controller.
@interface NibOwner : NSWindowController {
@public
  NSView *PrivateSettingView;
  WebView *iWebView;
  NSView *positionDrawView;
  NSTextField *txtLeft;
  NSTextField *txtTop;
  NSTextField *txtRight;
  NSTextField *txtBottom;
  NSTextField *txtTransparency;
  NSSlider *sldTrans;
  NSMatrix *matLayer;
  NSButton *btnDefault;
  NSButton *btnCancel;
  NSButton *btnOK;
}
@end

namespace vireonix::test {

/// The languages of the built bundle, by folder name without ".lproj", sorted.
std::vector<std::string> languages();

/// The folder of a language's resources in the built bundle.
NSString *folderOf(const std::string &language);

/// Loads one nib file through the newer call; a failure of the running test when that is
/// impossible. Answers the top-level objects.
NSArray *loadNib(NSString *path, id owner);

/// The label that shows a text, in a view or below it; nil when there is none.
NSTextField *labelOf(NSView *view, NSString *text);

class NibWindow {
public:
  /// Loads both nibs from a folder and puts the panel into the window.
  explicit NibWindow(NSString *folder);
  ~NibWindow();
  NibWindow(const NibWindow &) = delete;
  NibWindow &operator=(const NibWindow &) = delete;

  [[nodiscard]] NibOwner *owner() const { return owner_; }
  [[nodiscard]] NSWindow *window() const { return [owner_ window]; }
  [[nodiscard]] NSView *content() const { return [window() contentView]; }
  [[nodiscard]] PrivateView *panel() const { return panel_; }
  /// Gives the window's content a size, which lays it out.
  void resize(NSSize size);

private:
  NibOwner *owner_ = nil;
  PrivateView *panel_ = nil;
};

} // namespace vireonix::test
