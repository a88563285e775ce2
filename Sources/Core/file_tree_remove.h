// Removing within an open folder.
#pragma once

#include "core_border.h"
#include "status.h"

#include <sys/stat.h>

#include <string>

namespace vireonix::core {

/// Removes an entry of an open folder with everything in it; nothing there is a success. The path
/// of a failure is relative to the folder.
Status removeEntry(int folder, const std::string& name);

/// Gives the user all permissions on a folder that stands in an open folder, as far as he may. A
/// link is left alone, and so is what it leads to.
void unlockFolder(int folder, const std::string& name, const struct stat& info);

} // namespace vireonix::core
