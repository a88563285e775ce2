#include "file_tree_remove.h"

#include "file_tree.h"
#include "folder_walk.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>

namespace vireonix::core {

namespace {

class Remover : public TreeVisitor {
public:
  explicit Remover(std::string root) : root_(std::move(root)) {}

  bool visit(const WalkEntry& entry) override {
    if (!S_ISDIR(entry.info.st_mode)) {
      unlink(entry, 0);
      return false;
    }
    unlockFolder(entry.folder, entry.name, entry.info);
    return true;
  }

  bool leave(const WalkEntry& entry, int /*opened*/) override {
    unlink(entry, AT_REMOVEDIR);
    return true;
  }

  void fail(int error, const std::string& path) override {
    // What is gone already needs no removing; what could not be read shows when it is removed.
    if (error != ENOENT && status.ok())
      status = Status::failure(error, path.empty() ? root_ : root_ + "/" + path);
  }

  Status status;

private:
  void unlink(const WalkEntry& entry, int flags) {
    if (unlinkat(entry.folder, entry.name.c_str(), flags) != 0)
      fail(errno, entry.path);
  }

  std::string root_;
};

} // namespace

void unlockFolder(int folder, const std::string& name, const struct stat& info) {
  if ((info.st_mode & S_IRWXU) != S_IRWXU)
    fchmodat(folder, name.c_str(), (info.st_mode & 07777) | S_IRWXU, AT_SYMLINK_NOFOLLOW);
}

Status removeEntry(int folder, const std::string& name) {
  struct stat info {};
  if (fstatat(folder, name.c_str(), &info, AT_SYMLINK_NOFOLLOW) != 0)
    return errno == ENOENT ? Status::success() : Status::failure(errno, name);
  if (!S_ISDIR(info.st_mode))
    return unlinkat(folder, name.c_str(), 0) == 0 ? Status::success()
                                                  : Status::failure(errno, name);
  unlockFolder(folder, name, info);
  Remover remover(name);
  if (Descriptor opened = openFolderIn(folder, name); opened.isOpen())
    walkTree(std::move(opened), remover);
  else
    remover.fail(errno, {});
  if (unlinkat(folder, name.c_str(), AT_REMOVEDIR) != 0 && errno != ENOENT)
    remover.fail(errno, {});
  else
    remover.status = Status::success();
  return remover.status;
}

Status removeTree(std::string_view path) {
  const EntryPlace place = placeOf(path);
  if (place.error != 0)
    return place.error == ENOENT && !path.empty() ? Status::success()
                                                  : Status::failure(place.error, std::string(path));
  Status status = removeEntry(place.folder.get(), place.name);
  if (!status.ok())
    status.path = std::string(path) + status.path.substr(place.name.size());
  return status;
}

} // namespace vireonix::core
