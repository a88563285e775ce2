#include "descriptor.h"
#include "entry_copy.h"
#include "file_system_calls.h"
#include "file_tree.h"
#include "folder_walk.h"
#include "temporary_entry.h"

#include <fcntl.h>

#include <array>
#include <cerrno>

namespace vireonix::core {

namespace {

/// The file appears under its name whole or not at all: half a file would count as installed.
int installFile(int in, const struct stat& info, EntryAt to) {
  TemporaryFile file(to.folder);
  if (const int error = file.create((info.st_mode & 0777) | S_IRUSR | S_IWUSR))
    return error;
  if (const int error = copyData(in, file.fd()))
    return error;
  calls::copyExtendedAttributes(in, file.fd());
  const std::array times{timespec{0, UTIME_NOW}, calls::modificationTime(info)};
  if (futimens(file.fd(), times.data()) != 0)
    return errno;
  return file.appear(to.name);
}

bool isThere(EntryAt entry) {
  struct stat info {};
  return fstatat(entry.folder, entry.name.c_str(), &info, AT_SYMLINK_NOFOLLOW) == 0;
}

bool leadsSomewhere(EntryAt link) {
  struct stat info {};
  return fstatat(link.folder, link.name.c_str(), &info, 0) == 0;
}

class Merger : public TreeVisitor {
public:
  Merger(std::string source, Descriptor destination, const MergeOptions& options)
      : source_(std::move(source)), options_(options), target_(std::move(destination)) {
    struct stat info {};
    if (fstat(target_.fd(), &info) == 0)
      destinationIdentity_ = identityOf(info);
    removeAbandonedFiles(target_.fd());
  }

  bool visit(const WalkEntry& entry) override {
    if (!options_.hidden && entry.path.front() == '.')
      return false;
    if (S_ISDIR(entry.info.st_mode))
      return identityOf(entry.info) != destinationIdentity_ && enterFolder(entry);
    const EntryAt to{target_.fd(), entry.name};
    if (isThere(to))
      return false;
    const int error = add({entry.folder, entry.name}, entry.info, to);
    if (error != 0 && error != EEXIST)
      fail(error, entry.path);
    return false;
  }

  bool leave(const WalkEntry& /*entry*/, int /*opened*/) override {
    const int error = target_.leave();
    if (error != 0)
      fail(error, {});
    return error == 0;
  }

  void fail(int error, const std::string& path) override {
    if (status.ok())
      status = Status::failure(error, path.empty() ? source_ : source_ + "/" + path);
  }

  Status status;

private:
  bool enterFolder(const WalkEntry& entry) {
    const bool isNew = mkdirat(target_.fd(), entry.name.c_str(), 0777) == 0;
    if (!isNew && errno != EEXIST) {
      fail(errno, entry.path);
      return false;
    }
    const int error = target_.enter(entry.name);
    if (error == 0 && !isNew)
      removeAbandonedFiles(target_.fd());
    if (error != 0 && error != ENOTDIR && error != ELOOP) // what stands there stays there
      fail(error, entry.path);
    return error == 0;
  }

  int add(EntryAt from, const struct stat& found, EntryAt to) const {
    if (S_ISLNK(found.st_mode))
      return options_.danglingLinks || leadsSomewhere(from) ? copyLink(from, to) : 0;
    struct stat info {};
    const Descriptor in = openRegular(from, info);
    return in.isOpen() ? installFile(in.get(), info, to) : errno;
  }

  std::string source_;
  MergeOptions options_;
  FolderCursor target_;
  Identity destinationIdentity_;
};

} // namespace

Status mergeTree(std::string_view source, std::string_view destination,
                 const MergeOptions& options) {
  Descriptor from = openFolder(source);
  if (!from.isOpen())
    return Status::failure(errno, std::string(source));
  Descriptor to = openFolder(destination);
  if (!to.isOpen())
    return Status::failure(errno, std::string(destination));
  Merger merger(std::string(source), std::move(to), options);
  walkTree(std::move(from), merger);
  return merger.status;
}

Status copyFile(std::string_view source, std::string_view destination) {
  struct stat info {};
  const Descriptor in = openFile(source, info);
  if (!in.isOpen())
    return Status::of(errno, source);
  const EntryPlace place = placeOf(destination);
  if (place.error != 0)
    return Status::of(place.error, destination);
  const EntryAt to{place.folder.get(), place.name};
  if (isThere(to))
    return Status::of(EEXIST, destination);
  removeAbandonedFiles(to.folder);
  return Status::of(installFile(in.get(), info, to), destination);
}

} // namespace vireonix::core
