#include "descriptor.h"
#include "entry_copy.h"
#include "file_system_calls.h"
#include "file_tree.h"
#include "file_tree_remove.h"
#include "folder_walk.h"
#include "temporary_entry.h"

#include <fcntl.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <set>

namespace vireonix::core {

namespace {

using Exceptions = std::set<std::string, std::less<>>;

constexpr size_t kCompareSize = size_t{32} * 1024;

bool sameTime(const timespec& first, const timespec& second) {
  return first.tv_sec == second.tv_sec && first.tv_nsec == second.tv_nsec;
}

bool sameContent(int first, int second) {
  std::array<char, kCompareSize> ours;
  std::array<char, kCompareSize> theirs;
  for (off_t offset = 0;;) {
    const ssize_t length = pread(first, ours.data(), ours.size(), offset);
    if (length < 0 || pread(second, theirs.data(), theirs.size(), offset) != length)
      return false;
    if (length == 0)
      return true;
    if (!std::equal(ours.begin(), ours.begin() + length, theirs.begin()))
      return false;
    offset += length;
  }
}

bool sameAttributes(const struct stat& first, const struct stat& second) {
  return first.st_mode == second.st_mode && first.st_uid == second.st_uid &&
         first.st_gid == second.st_gid && first.st_rdev == second.st_rdev &&
         sameTime(calls::modificationTime(first), calls::modificationTime(second));
}

/// Whether two entries that are no folders are alike in all that a copy keeps.
bool isSame(EntryAt first, const struct stat& info, EntryAt second) {
  struct stat other {};
  if (fstatat(second.folder, second.name.c_str(), &other, AT_SYMLINK_NOFOLLOW) != 0 ||
      !sameAttributes(info, other))
    return false;
  if (S_ISLNK(info.st_mode)) {
    std::string ours;
    std::string theirs;
    return readLink(first, ours) == 0 && readLink(second, theirs) == 0 && ours == theirs;
  }
  if (!S_ISREG(info.st_mode))
    return true;
  const Descriptor ours = openRegular(first, other);
  const Descriptor theirs = openRegular(second, other);
  return ours.isOpen() && theirs.isOpen() && info.st_size == other.st_size &&
         sameContent(ours.get(), theirs.get());
}

/// Walks one of two trees and goes along in the other.
class PairedVisitor : public TreeVisitor {
public:
  PairedVisitor(Descriptor other, const Exceptions& except)
      : other_(std::move(other)), except_(except) {}

  void fail(int error, const std::string& path) override {
    if (status.ok())
      status = Status::failure(error, path);
  }

  Status status;

protected:
  /// About the entry of the same name in the other tree: 0 or errno.
  int statOther(const WalkEntry& entry, struct stat& info) const {
    return fstatat(other_.fd(), entry.name.c_str(), &info, AT_SYMLINK_NOFOLLOW) == 0 ? 0 : errno;
  }

  [[nodiscard]] bool isExcepted(const std::string& path) const { return except_.contains(path); }

  bool enterOther(const WalkEntry& entry) {
    const int error = other_.enter(entry.name);
    if (error != 0)
      fail(error, entry.path);
    return error == 0;
  }

  bool leaveOther() {
    const int error = other_.leave();
    if (error != 0)
      fail(error, {});
    return error == 0;
  }

  FolderCursor other_;

private:
  const Exceptions& except_;
};

/// Walks the source: replaces what differs in the destination and adds what it lacks.
class Adder : public PairedVisitor {
public:
  using PairedVisitor::PairedVisitor;

  bool visit(const WalkEntry& entry) override {
    if (isExcepted(entry.path))
      return false;
    struct stat there {};
    const bool isThere = statOther(entry, there) == 0;
    if (isThere && S_ISDIR(there.st_mode) != S_ISDIR(entry.info.st_mode))
      if (const Status removed = removeEntry(other_.fd(), entry.name); !removed.ok())
        fail(removed.error, entry.path);
    if (S_ISDIR(entry.info.st_mode))
      return enterFolder(entry, there);
    if (const int error = put(entry))
      fail(error, entry.path);
    return false;
  }

  bool leave(const WalkEntry& /*entry*/, int /*opened*/) override { return leaveOther(); }

private:
  bool enterFolder(const WalkEntry& entry, const struct stat& there) {
    if (mkdirat(other_.fd(), entry.name.c_str(), S_IRWXU) != 0 && errno == EEXIST)
      unlockFolder(other_.fd(), entry.name, there);
    if (!enterOther(entry))
      return false;
    removeAbandonedFiles(other_.fd());
    return true;
  }

  int put(const WalkEntry& entry) {
    const EntryAt from{entry.folder, entry.name};
    const EntryAt to{other_.fd(), entry.name};
    if (isSame(from, entry.info, to))
      return 0;
    const std::string temporary = temporaryName(kTemporaryFilePrefix);
    int error = copyEntry(from, entry.info, {to.folder, temporary});
    if (error != 0)
      return error;
    if (renameat(to.folder, temporary.c_str(), to.folder, to.name.c_str()) != 0)
      error = errno;
    if (error != 0)
      unlinkat(to.folder, temporary.c_str(), 0);
    return error;
  }
};

/// Walks the destination: removes what the source has not, then gives folders their attributes.
class Pruner : public PairedVisitor {
public:
  using PairedVisitor::PairedVisitor;

  bool visit(const WalkEntry& entry) override {
    if (isExcepted(entry.path))
      return false;
    struct stat there {};
    const int error = statOther(entry, there);
    if (error == 0)
      return S_ISDIR(there.st_mode) && S_ISDIR(entry.info.st_mode) && enterOther(entry);
    const Status removed =
        error == ENOENT ? removeEntry(entry.folder, entry.name) : Status::failure(error, {});
    if (!removed.ok())
      fail(removed.error, entry.path);
    return false;
  }

  bool leave(const WalkEntry& entry, int opened) override {
    if (opened >= 0)
      finish(opened, entry.path);
    return leaveOther();
  }

  void finish(int opened, const std::string& path) {
    struct stat info {};
    int error = fstat(other_.fd(), &info) == 0 ? 0 : errno;
    if (error == 0)
      error = applyAttributes(opened, info);
    if (error != 0)
      fail(error, path);
  }
};

/// The root is handled through descriptors that stay with the caller.
Descriptor sameFolder(const Descriptor& folder) {
  return Descriptor(fcntl(folder.get(), F_DUPFD_CLOEXEC, 0));
}

Status equaliseOnce(const Descriptor& from, const Descriptor& to, const Exceptions& except) {
  Adder adder(sameFolder(to), except);
  walkTree(sameFolder(from), adder);
  Pruner pruner(sameFolder(from), except);
  walkTree(sameFolder(to), pruner);
  pruner.finish(to.get(), {});
  return adder.status.ok() ? pruner.status : adder.status;
}

} // namespace

Status equaliseTree(std::string_view source, std::string_view destination,
                    const Omissions& except) {
  const Descriptor from = openFolder(source);
  if (!from.isOpen())
    return Status::failure(errno, std::string(source));
  const EntryPlace place = placeOf(destination);
  struct stat info {};
  if (place.error == 0 &&
      fstatat(place.folder.get(), place.name.c_str(), &info, AT_SYMLINK_NOFOLLOW) == 0 &&
      S_ISDIR(info.st_mode))
    unlockFolder(place.folder.get(), place.name, info);
  const Descriptor to = openFolder(destination);
  if (!to.isOpen())
    return Status::failure(errno, std::string(destination));
  removeAbandonedFiles(to.get());
  const Exceptions exceptions(except.begin(), except.end());
  Status status = equaliseOnce(from, to, exceptions);
  // What lacked room the first time may find it once the additional entries are gone.
  if (status.error == ENOSPC || status.error == EDQUOT)
    status = equaliseOnce(from, to, exceptions);
  return status;
}

} // namespace vireonix::core
