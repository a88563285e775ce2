// Answers the open panel in the place of a user.
#pragma once

#import <AppKit/AppKit.h>

#include <objc/objc.h>
#include <string>

namespace vireonix::test {

/// While it lives, the open panel is answered at once with a button and a file. One at a time.
class OpenPanelAnswer {
public:
  OpenPanelAnswer(NSInteger button, const std::string &file);
  ~OpenPanelAnswer();
  OpenPanelAnswer(const OpenPanelAnswer &) = delete;
  OpenPanelAnswer &operator=(const OpenPanelAnswer &) = delete;

  /// The panel that was answered, set up as it was then; nil before.
  [[nodiscard]] NSOpenPanel *panel() const;

private:
  IMP runModal_ = nullptr;
  IMP urls_ = nullptr;
};

} // namespace vireonix::test
