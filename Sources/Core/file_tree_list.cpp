#include "file_tree.h"
#include "folder_walk.h"

#include <fcntl.h>

#include <cerrno>

namespace vireonix::core {

namespace {

bool statOf(std::string_view path, struct stat& info) {
  return path.find('\0') == path.npos && stat(std::string(path).c_str(), &info) == 0;
}

class Lister : public TreeVisitor {
public:
  bool visit(const WalkEntry& entry) override {
    paths.push_back(entry.path);
    return S_ISDIR(entry.info.st_mode);
  }
  bool leave(const WalkEntry& /*entry*/, int /*opened*/) override { return true; }
  void fail(int /*error*/, const std::string& /*path*/) override {}

  std::vector<std::string> paths;
};

} // namespace

int errorAt(std::string_view path) {
  if (path.find('\0') != path.npos)
    return ENOENT;
  struct stat info {};
  if (stat(std::string(path).c_str(), &info) == 0)
    return 0;
  return errno == ENOTDIR || errno == ELOOP ? ENOENT : errno;
}

bool exists(std::string_view path) {
  return errorAt(path) == 0;
}

bool isFolder(std::string_view path) {
  struct stat info {};
  return statOf(path, info) && S_ISDIR(info.st_mode);
}

std::vector<std::string> listTree(std::string_view root) {
  Lister lister;
  if (Descriptor folder = openFolder(root); folder.isOpen())
    walkTree(std::move(folder), lister);
  return std::move(lister.paths);
}

Status createFolders(std::string_view path) {
  if (isFolder(path))
    return Status::success();
  size_t end = 0;
  do {
    end = path.find('/', end + 1);
    const std::string part(path.substr(0, end));
    const int error = mkdir(part.c_str(), 0777) == 0 ? 0 : errno;
    if (error != 0 && !isFolder(part))
      return Status::failure(error == EEXIST ? ENOTDIR : error, part);
  } while (end != path.npos);
  return isFolder(path) ? Status::success() : Status::failure(EINVAL, std::string(path));
}

} // namespace vireonix::core
