// The log file "Log.txt" of a log folder, with its rotated predecessors in the folder "backupLog".
#pragma once

#include "core_border.h"
#include "status.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace vireonix::core {

/// The local date and time, "2026-11-16 07:54:43".
using LogClock = std::function<std::string()>;

/// Adds the entry "<time>{bundle}:<message>" (UTF-8) to the log file of `folder`, entries being
/// separated by one line feed. The file is replaced in one step and durably.
///
/// A log file of more than 4 MiB is rotated before: moved to "backupLog/<20261116_075443>.txt"
/// (lost when that name is taken), and when that makes 31 or more ".txt" entries there, in any
/// letter case and at any depth, the first of them by name is deleted. Without a message only the
/// rotation is done, or a missing log file made. `folder` is never made, nor anything in it when it
/// is missing. A log file that is neither a regular file nor a link to one is left alone. `clock`
/// is asked once for each time stamp. Any thread: calls in one process are done one after another.
Status appendToLog(std::string_view folder, std::optional<std::string_view> message,
                   const LogClock& clock);

} // namespace vireonix::core
