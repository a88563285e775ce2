#include "media_file.h"

#include <algorithm>
#include <exception>
#include <filesystem>
#include <system_error>

namespace vireonix::core {

namespace fs = std::filesystem;

namespace {

bool isWithin(const fs::path& folder, const fs::path& outer) {
  return std::ranges::mismatch(outer, folder).in1 == outer.end();
}

bool remove(const fs::path& workspace, const fs::path& relative) {
  const fs::path name = relative.filename();
  if (relative.is_absolute() || name.empty() || name == "." || name == "..")
    return false;
  const fs::path root = fs::canonical(workspace);
  const fs::path folder = fs::canonical(workspace / relative.parent_path());
  if (!isWithin(folder, root))
    return false;
  const fs::file_status status = fs::symlink_status(folder / name);
  return (fs::is_regular_file(status) || fs::is_symlink(status)) && fs::remove(folder / name);
}

} // namespace

bool removeMediaFile(std::string_view workspace, std::string_view relativePath) {
  try {
    return remove(workspace, relativePath);
  } catch (const std::exception&) {
    return false;
  }
}

} // namespace vireonix::core
