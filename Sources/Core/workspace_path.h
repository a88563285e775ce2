// Paths inside a workspace. Any thread.
#pragma once

#include "core_border.h"

#include <string_view>

namespace vireonix::core {

/// Whether the folder that holds `relativePath` is the workspace or lies below it, links followed.
/// False as well when the path is absolute or there is no such folder.
[[nodiscard]] bool isInsideWorkspace(std::string_view workspace, std::string_view relativePath);

} // namespace vireonix::core
