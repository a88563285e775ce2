// Works the controls of a real settings window, as a user does.
#pragma once

#import "Class/PluginSettingsDelegate.h"

#include "Core/slider_document.h"

#include <string>
#include <string_view>

namespace vireonix::test {

/// Opens the window on a workspace when it is made; without its preview that takes half the time.
/// Ends the process when the window does not come to show what was asked for. Values are what the
/// document is to hold.
class WindowEditor {
public:
  WindowEditor(const std::string &workspace, bool withPreview);

  /// The slides and captions that the panel's tables list.
  [[nodiscard]] std::vector<core::slider::Slide> slides() const;
  /// The position that the next save writes, as the bytes of the file.
  [[nodiscard]] std::string position() const;
  /// The value that a new caption takes from the controls.
  [[nodiscard]] std::string control(std::string_view key) const;

  /// Selects a slide, or none for -1, and no caption.
  void showSlide(NSInteger row);
  /// Selects a caption of the slide shown.
  void showCaption(NSInteger row);

  /// These choose a file in the open panel.
  void addSlide(const std::string &file);
  void replacePicture(const std::string &file);
  void press(NSString *button);
  /// Types into the field of a value, or into the slide's file name.
  void type(std::string_view key, const std::string &text);
  /// Chooses in the combo box of a value, and tells the panel so or leaves that to a button.
  void choose(std::string_view key, const std::string &value, bool isTold);
  /// Chooses in the shared colour panel.
  void chooseColor(const std::string &value);

  // The position, which the next save writes.
  void typePosition(NSString *field, const std::string &text);
  void slideTransparency(double value);
  void chooseLayer(NSInteger tag);
  void dragBox(double right, double up);

  /// Waits until the position file says what `position` does, which the last save writes.
  void waitForPositionFile();
  [[nodiscard]] bool isClosed() const { return [controller_ isCloseBundle]; }

private:
  [[nodiscard]] id panelField(NSString *name) const;
  [[nodiscard]] NSComboBox *comboOf(std::string_view key) const;
  void typeInto(NSTextField *field, const std::string &text);

  std::string workspace_;
  PluginSettingsDelegate *controller_;
  PrivateView *panel_;
};

} // namespace vireonix::test
