// The settings window in the host's theme, on the display and key, with a slide and its caption
// selected, as a user has it in front of them.
#pragma once

#import "support/settings_session.h"
#import "vireonix/PrivateView.h"

#import <AppKit/AppKit.h>

#include <string>

namespace vireonix::test {

class ShownWindow {
public:
  ShownWindow();
  ~ShownWindow();
  ShownWindow(const ShownWindow &) = delete;
  ShownWindow &operator=(const ShownWindow &) = delete;

  [[nodiscard]] NSWindow *window() const { return session_.window(); }
  [[nodiscard]] PluginSettingsDelegate *controller() const { return session_.controller(); }
  [[nodiscard]] PrivateView *panel() const { return session_.field(@"privateView"); }
  /// An outlet of the controller or, failing that, of the panel.
  [[nodiscard]] id control(NSString *name) const;
  /// The name of the outlet that the keyboard acts on, "" when there is none.
  [[nodiscard]] std::string focused() const;
  /// Gives a control the keyboard.
  void focus(NSString *name) const;

private:
  SettingsSession session_;
};

/// Presses and releases a key of the display's keyboard, by xdotool's name for it.
void pressKey(const std::string &key);
/// Presses keys one after another, with time between them, while the test goes on.
void pressKeysSoon(const std::string &keys);

} // namespace vireonix::test
