// The mark beside a backup folder that says whose backup it is.
#pragma once

#include "core_border.h"
#include "status.h"

#include <sys/types.h>

#include <optional>
#include <string>
#include <string_view>

namespace vireonix::core {

struct BackupMark {
  pid_t process = 0;
  /// The process' number, the time at which the session began and its number in the process: no two
  /// sessions have the same.
  std::string session;
  /// The canonical path of the workspace; empty as long as no backup has been taken.
  std::string workspace;
  /// There is a mark, and it is not known what it says.
  bool isUnreadable = false;
};

std::string newBackupSession();
std::string backupMarkPath(std::string_view backup);

Status writeBackupMark(std::string_view backup, const BackupMark& mark);

/// Nothing when there is no mark; one that cannot be read or understood is of an unknown session.
std::optional<BackupMark> readBackupMark(std::string_view backup);

} // namespace vireonix::core
