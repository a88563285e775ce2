// A window with every control of the host's theme in every state, for pictures and for tests that
// look at pixels.
#pragma once

#import <AppKit/AppKit.h>

#import "support/pixels.h"

@interface GalleryRows : NSObject <NSTableViewDataSource> {
  NSArray *rows;
}
@end

namespace vireonix::test {

class Gallery {
public:
  /// Builds the window, puts it on the display and makes it key.
  Gallery();
  ~Gallery();
  Gallery(const Gallery &) = delete;
  Gallery &operator=(const Gallery &) = delete;

  NSWindow *window;
  NSView *content; // flipped

  NSButton *plainButton;
  NSButton *defaultButton;
  NSButton *disabledButton;
  NSButton *pressedButton;
  NSButton *checkOn;
  NSButton *checkOff;
  NSButton *checkMixed;
  NSButton *checkDisabled;
  NSMatrix *radios; // the first cell is on
  NSTextField *field;
  NSTextField *disabledField;
  NSComboBox *combo;
  NSComboBox *disabledCombo;
  NSPopUpButton *popUp;
  NSSlider *slider;
  NSTableView *table; // row 2 is selected
  NSScrollView *scrollView;

  /// What a view in the window shows now.
  [[nodiscard]] Picture picture(NSView *view) const;
  /// Gives a control the keyboard focus and waits until it shows.
  void focus(NSView *view) const;

private:
  void buildButtons();
  void buildMarks();
  void buildFields();
  void buildChoices();
  void buildTable();
  void buildScripts();
  void buildBox();

  GalleryRows *rows_;
};

} // namespace vireonix::test
