// The pictures and movies of a workspace. Any thread.
#pragma once

#include "core_border.h"

#include <string_view>

namespace vireonix::core {

/// Deletes a slide's file, given by its path relative to the workspace: a regular file or a link
/// (not what it leads to). Nothing is deleted, and false answered, when the path is empty, is
/// absolute, names anything else or leads out of the workspace, also through a link to a folder.
bool removeMediaFile(std::string_view workspace, std::string_view relativePath);

} // namespace vireonix::core
