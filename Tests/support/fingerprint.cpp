#include "support/fingerprint.h"

#include "support/temporary_folder.h"

#include <filesystem>
#include <map>
#include <sstream>
#include <sys/stat.h>

namespace fs = std::filesystem;

namespace vireonix::test {
namespace {

std::string describe(const fs::path& path) {
  struct stat info {};
  if (lstat(path.c_str(), &info) != 0)
    return "missing";
  std::ostringstream out;
  out << std::oct << info.st_mode << std::dec << ' ';
  // A link's own time is nobody's concern: reading a link may not keep it.
  if (!S_ISLNK(info.st_mode))
    out << info.st_mtim.tv_sec << '.' << info.st_mtim.tv_nsec << ' ';
  if (S_ISLNK(info.st_mode))
    out << "-> " << fs::read_symlink(path).string();
  else if (S_ISREG(info.st_mode))
    out << info.st_size << ' ' << std::hash<std::string>{}(fileBytes(path));
  return out.str();
}

} // namespace

std::string treeFingerprint(const std::string& root) {
  std::map<std::string, std::string> lines{{".", describe(root)}};
  for (const auto& entry : fs::recursive_directory_iterator(root))
    lines[fs::relative(entry.path().parent_path(), root) / entry.path().filename()] =
        describe(entry.path());
  std::string text;
  for (const auto& [path, description] : lines)
    text.append(path).append("  ").append(description).append("\n");
  return text;
}

} // namespace vireonix::test
