#include "folder_walk.h"

#include "path_text.h"

#include <dirent.h>
#include <fcntl.h>

#include <algorithm>
#include <cerrno>

namespace vireonix::core {

namespace {

// Parents kept open; those further up are found again through "..".
constexpr size_t kOpenParents = 16;

constexpr int kFolderFlags = O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NONBLOCK;

Identity identityOfFolder(int folder) {
  struct stat info {};
  return fstat(folder, &info) == 0 ? identityOf(info) : Identity{};
}

} // namespace

Descriptor openFolder(std::string_view path) {
  if (path.find('\0') != path.npos) {
    errno = EINVAL;
    return {};
  }
  const std::string name(path);
  return Descriptor(uninterrupted([&] { return open(name.c_str(), kFolderFlags); }));
}

Descriptor openFolderIn(int folder, const std::string& name) {
  return Descriptor(
      uninterrupted([&] { return openat(folder, name.c_str(), kFolderFlags | O_NOFOLLOW); }));
}

EntryPlace placeOf(std::string_view path) {
  if (path.empty())
    return {{}, {}, ENOENT};
  path = withoutEndSlashes(path);
  const std::string name(path.substr(path.rfind('/') + 1)); // all of it without a slash
  if (name.empty() || name == "." || name == ".." || name.find('\0') != name.npos)
    return {{}, {}, EINVAL};
  EntryPlace place{openFolder(folderOf(path)), name, 0};
  if (!place.folder.isOpen())
    place.error = errno;
  return place;
}

std::vector<std::string> namesIn(int folder, int& error) {
  std::vector<std::string> names;
  const int copy = fcntl(folder, F_DUPFD_CLOEXEC, 0);
  DIR* const stream = copy < 0 ? nullptr : fdopendir(copy);
  if (stream == nullptr) {
    error = errno;
    if (copy >= 0)
      close(copy);
    return names;
  }
  rewinddir(stream);
  errno = 0;
  while (const dirent* entry = readdir(stream)) {
    const std::string_view name = entry->d_name;
    if (name != "." && name != "..")
      names.emplace_back(name);
    errno = 0;
  }
  error = errno;
  closedir(stream);
  std::sort(names.begin(), names.end());
  return names;
}

int FolderCursor::enter(const std::string& name) {
  Descriptor child = openFolderIn(fd(), name);
  if (!child.isOpen())
    return errno;
  if (parents_.size() >= kOpenParents)
    parents_[parents_.size() - kOpenParents].folder.close();
  const Identity identity = identityOfFolder(fd());
  parents_.push_back({std::move(current_), identity});
  current_ = std::move(child);
  return 0;
}

int FolderCursor::leave() {
  current_ = std::move(parents_.back().folder);
  parents_.pop_back();
  if (parents_.empty() || parents_.back().folder.isOpen())
    return 0;
  Descriptor above = openFolderIn(fd(), "..");
  if (!above.isOpen())
    return errno;
  if (identityOfFolder(above.get()) != parents_.back().identity)
    return ESTALE;
  parents_.back().folder = std::move(above);
  return 0;
}

namespace {

class Walk {
public:
  Walk(Descriptor root, TreeVisitor& visitor) : cursor_(std::move(root)), visitor_(visitor) {}

  void run() {
    push({});
    while (!levels_.empty()) {
      Level& level = levels_.back();
      if (level.next < level.names.size())
        step(level.names[level.next++]);
      else if (!pop())
        return;
    }
  }

private:
  struct Level {
    std::vector<std::string> names;
    size_t next = 0;
    struct stat info {}; // of the folder itself, as its parent's entry
  };

  void push(const struct stat& info) {
    int error = 0;
    Level level;
    level.names = namesIn(cursor_.fd(), error);
    level.info = info;
    if (error != 0)
      visitor_.fail(error, path_);
    levels_.push_back(std::move(level));
  }

  void step(const std::string& name) {
    const size_t length = path_.size();
    if (length != 0)
      path_ += '/';
    path_ += name;
    struct stat info {};
    if (fstatat(cursor_.fd(), name.c_str(), &info, AT_SYMLINK_NOFOLLOW) != 0) {
      visitor_.fail(errno, path_);
    } else if (const WalkEntry entry{cursor_.fd(), name, path_, info};
               visitor_.visit(entry) && S_ISDIR(info.st_mode)) {
      const int error = cursor_.enter(name);
      if (error == 0)
        return push(info);
      visitor_.fail(error, path_);
      if (!visitor_.leave(entry, -1))
        levels_.clear();
    }
    path_.resize(length);
  }

  bool pop() {
    const struct stat info = levels_.back().info;
    levels_.pop_back();
    if (levels_.empty())
      return true;
    const Level& parent = levels_.back();
    const std::string& name = parent.names[parent.next - 1];
    if (!visitor_.leave({cursor_.parent(), name, path_, info}, cursor_.fd()))
      return false;
    if (const int error = cursor_.leave()) {
      visitor_.fail(error, {});
      return false;
    }
    path_.resize(path_.size() - std::min(path_.size(), name.size() + 1));
    return true;
  }

  FolderCursor cursor_;
  TreeVisitor& visitor_;
  std::vector<Level> levels_;
  std::string path_;
};

} // namespace

void walkTree(Descriptor root, TreeVisitor& visitor) {
  Walk(std::move(root), visitor).run();
}

} // namespace vireonix::core
