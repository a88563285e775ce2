#include "media_file.h"

#include "workspace_path.h"

#include <exception>
#include <filesystem>
#include <system_error>

namespace vireonix::core {

namespace fs = std::filesystem;

bool removeMediaFile(std::string_view workspace, std::string_view relativePath) {
  try {
    const fs::path name = fs::path(relativePath).filename();
    if (name.empty() || name == "." || name == ".." || !isInsideWorkspace(workspace, relativePath))
      return false;
    const fs::path file = fs::path(workspace) / relativePath;
    const fs::file_status status = fs::symlink_status(file);
    return (fs::is_regular_file(status) || fs::is_symlink(status)) && fs::remove(file);
  } catch (const std::exception&) {
    return false;
  }
}

} // namespace vireonix::core
