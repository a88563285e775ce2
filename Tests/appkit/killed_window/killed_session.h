// An editing session in a process of its own that is killed at a chosen time, and what it told.
#pragma once

#include "told_state.h"

#include <chrono>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include <sys/types.h>

namespace vireonix::test {

/// How far a session has come.
enum class Phase { Starting, Editing, Closing, Closed };

/// What a session told until it ended.
struct Told {
  Phase phase = Phase::Starting;
  bool isApplied = false; ///< Once it closes.
  WorkspaceState opened;
  WorkspaceState done;                 ///< What stands there,
  std::optional<WorkspaceState> about; ///< or this, once it was begun.
  std::set<std::string> positions;     ///< Any of these may be in the position file,
  bool isSettled = false; ///< or what was there before, until one of them was seen there.

  void hear(std::string_view line);
};

struct SessionPlan {
  std::string workspace;
  std::string pictures;
  std::string temporaries; ///< The folder for temporary files, in which the backup is.
  unsigned seed = 0;
  int edits = 0;
  /// Killed so long after the phase began, if it still runs then; never for Closed.
  Phase killIn = Phase::Closed;
  std::chrono::nanoseconds delay{0};
  /// Called while the session waits with its window open.
  std::function<void(const Told&)> whenOpened;
};

struct SessionEnd {
  bool isKilled = false;
  /// How it ended otherwise, unless well.
  std::string failure;
  Told told;
  /// How long each phase took.
  std::vector<std::chrono::nanoseconds> phases;
};

SessionEnd runSession(const SessionPlan& plan);

} // namespace vireonix::test
