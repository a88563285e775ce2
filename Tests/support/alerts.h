// Answers modal alerts in the place of a user, and keeps what they showed.
#pragma once

#import <AppKit/AppKit.h>

#include <string>
#include <vector>

namespace vireonix::test {

/// What one alert showed.
struct ShownAlert {
  std::string message;
  std::string information;
  std::vector<std::string> buttons;
};

/// The return codes of an alert's two buttons.
inline constexpr NSInteger kYes = NSAlertFirstButtonReturn;
inline constexpr NSInteger kNo = NSAlertSecondButtonReturn;

/// While it lives, every alert is answered at once with the given return codes, in order; without
/// one left, with the first button's. One at a time.
class AlertAnswers {
public:
  explicit AlertAnswers(std::vector<NSInteger> answers = {});
  ~AlertAnswers();
  AlertAnswers(const AlertAnswers &) = delete;
  AlertAnswers &operator=(const AlertAnswers &) = delete;

  /// The alerts so far.
  [[nodiscard]] const std::vector<ShownAlert> &shown() const;
};

} // namespace vireonix::test
