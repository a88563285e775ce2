#include "entry_copy.h"
#include "file_system_calls.h"
#include "file_tree.h"
#include "folder_walk.h"

#include <fcntl.h>

#include <cerrno>
#include <climits>
#include <map>
#include <utility>

namespace vireonix::core {

namespace {

bool operator<(const Identity& first, const Identity& second) {
  return std::pair(first.device, first.inode) < std::pair(second.device, second.inode);
}

struct ByIdentity {
  bool operator()(const Identity& first, const Identity& second) const { return first < second; }
};

class Copier : public TreeVisitor {
public:
  Copier(std::string source, Descriptor destination, Omissions* omissions)
      : source_(std::move(source)), omissions_(omissions),
        root_(fcntl(destination.get(), F_DUPFD_CLOEXEC, 0)), target_(std::move(destination)) {
    struct stat info {};
    if (fstat(root_.get(), &info) == 0)
      destinationIdentity_ = identityOf(info);
  }

  bool visit(const WalkEntry& entry) override {
    if (S_ISDIR(entry.info.st_mode))
      return identityOf(entry.info) != destinationIdentity_ && enterCopy(entry);
    const int error = entry.info.st_nlink > 1 ? copyLinked(entry) : copy(entry);
    if (error != 0)
      fail(error, entry.path);
    return false;
  }

  bool leave(const WalkEntry& entry, int opened) override {
    finish(opened, entry.info, entry.path);
    if (const int error = target_.leave()) {
      fail(error, {});
      return false;
    }
    return true;
  }

  void fail(int error, const std::string& path) override {
    if (status.ok())
      status = Status::failure(error, path.empty() ? source_ : source_ + "/" + path);
    if (omissions_ != nullptr)
      omissions_->push_back(path);
  }

  /// Gives the folder that was just copied into its attributes.
  void finish(int opened, const struct stat& info, const std::string& path) {
    if (opened >= 0)
      calls::copyExtendedAttributes(opened, target_.fd());
    if (const int error = applyAttributes(target_.fd(), info); error != 0 && status.ok())
      status = Status::failure(error, source_ + "/" + path);
  }

  Status status;

private:
  bool enterCopy(const WalkEntry& entry) {
    int error = mkdirat(target_.fd(), entry.name.c_str(), S_IRWXU) == 0 ? 0 : errno;
    if (error == 0 || error == EEXIST)
      error = target_.enter(entry.name);
    if (error != 0)
      fail(error, entry.path);
    return error == 0;
  }

  int copy(const WalkEntry& entry) {
    return copyEntry({entry.folder, entry.name}, entry.info, {target_.fd(), entry.name});
  }

  int copyLinked(const WalkEntry& entry) {
    const auto [known, isFirst] = linked_.try_emplace(identityOf(entry.info), entry.path);
    // A path that is too long for a call just gives a copy of its own.
    if (!isFirst &&
        linkat(root_.get(), known->second.c_str(), target_.fd(), entry.name.c_str(), 0) == 0)
      return 0;
    return copy(entry);
  }

  std::string source_;
  Omissions* omissions_;
  Descriptor root_;
  FolderCursor target_;
  Identity destinationIdentity_;
  std::map<Identity, std::string, ByIdentity> linked_; // files with several names, by first path
};

} // namespace

Status copyTree(std::string_view source, std::string_view destination, Omissions* omissions) {
  Descriptor from = openFolder(source);
  struct stat info {};
  if (!from.isOpen() || fstat(from.get(), &info) != 0) {
    if (omissions != nullptr)
      omissions->emplace_back();
    return Status::failure(errno, std::string(source));
  }
  Status made = createFolders(destination);
  Descriptor to = openFolder(destination);
  if (!made.ok() || !to.isOpen()) {
    if (omissions != nullptr)
      omissions->emplace_back();
    return made.ok() ? Status::failure(errno, std::string(destination)) : made;
  }
  const Descriptor root(fcntl(from.get(), F_DUPFD_CLOEXEC, 0));
  Copier copier(std::string(source), std::move(to), omissions);
  walkTree(std::move(from), copier);
  copier.finish(root.get(), info, {});
  return copier.status;
}

} // namespace vireonix::core
