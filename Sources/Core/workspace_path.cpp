#include "workspace_path.h"

#include <algorithm>
#include <exception>
#include <filesystem>

namespace vireonix::core {

namespace fs = std::filesystem;

bool isInsideWorkspace(std::string_view workspace, std::string_view relativePath) {
  try {
    const fs::path relative(relativePath);
    if (relative.is_absolute())
      return false;
    const fs::path root = fs::canonical(workspace);
    const fs::path folder = fs::canonical(fs::path(workspace) / relative.parent_path());
    return std::ranges::mismatch(root, folder).in1 == root.end();
  } catch (const std::exception&) {
    return false;
  }
}

} // namespace vireonix::core
