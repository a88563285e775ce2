// Embeds the plug-in as any host does: loads the bundle, opens its window, waits for the end, reads
// the outcome.
#pragma once

#include "options.h"

#include <optional>
#include <string>

namespace vireonix::host {

/// How a session ended.
struct Outcome {
  int closeMode = 0;
  bool isCloseBundle = false;
  /// What the modal session returned; empty when the window did not run modally.
  std::optional<int> stopCode;
};

/// The outcome, or one clear line about why there was no session.
using SessionResult = std::variant<Outcome, std::string>;

/// Runs one session on the main thread; the application object must exist. `bundlePath` is an
/// existing folder.
SessionResult runSession(const Options& options, const std::string& bundlePath);

} // namespace vireonix::host
