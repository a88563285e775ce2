#include "workspace_backup.h"

#include "backup_mark.h"
#include "descriptor.h"
#include "file_tree_exchange.h"
#include "file_tree_remove.h"
#include "folder_walk.h"
#include "temporary_entry.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <memory>

namespace vireonix::core {

namespace {

constexpr std::string_view kRestoreKind = "restore";
constexpr int kMostLinks = 40;

bool isAnythingAt(const std::string& path) {
  struct stat info {};
  return lstat(path.c_str(), &info) == 0;
}

std::string withoutEndSlashes(std::string_view path) {
  while (path.size() > 1 && path.back() == '/')
    path.remove_suffix(1);
  return std::string(path);
}

std::string folderOf(const std::string& path) {
  const size_t slash = path.rfind('/');
  if (slash == path.npos)
    return ".";
  return path.substr(0, std::max<size_t>(slash, 1));
}

std::string joined(const std::string& folder, std::string_view name) {
  return folder + (folder.ends_with('/') ? "" : "/") + std::string(name);
}

std::string realPath(const std::string& path) {
  const std::unique_ptr<char, decltype(&std::free)> real(realpath(path.c_str(), nullptr),
                                                         &std::free);
  return real ? std::string(real.get()) : std::string();
}

std::string canonicalPath(std::string_view given, int links = 0);

/// The entry's own place: links in the path to it are resolved, the entry itself is not.
std::string canonicalPlace(std::string_view given, int links = 0) {
  const std::string path = withoutEndSlashes(given);
  const std::string folder = folderOf(path);
  const size_t slash = path.rfind('/');
  const std::string name = path.substr(slash == path.npos ? 0 : slash + 1);
  return folder == path ? path : joined(canonicalPath(folder, links), name);
}

/// The absolute path without links, also of what does not exist (yet).
std::string canonicalPath(std::string_view given, int links) {
  const std::string path = withoutEndSlashes(given);
  if (std::string real = realPath(path); !real.empty() || links > kMostLinks)
    return real;
  std::string target(PATH_MAX, '\0');
  const ssize_t length = readlink(path.c_str(), target.data(), target.size());
  if (length <= 0)
    return canonicalPlace(path, links + 1);
  target.resize(static_cast<size_t>(length));
  return canonicalPath(target.front() == '/' ? target : joined(folderOf(path), target), links + 1);
}

bool isWithin(const std::string& inner, const std::string& outer) {
  return inner == outer || inner.starts_with(joined(outer, ""));
}

bool isRunning(pid_t process) {
  return process > 0 && (kill(process, 0) == 0 || errno == EPERM);
}

/// A tree made beside the workspace and locked, so that nobody takes it for a left-over.
class Staging {
public:
  explicit Staging(const std::string& target)
      : path_(temporaryName(siblingPrefix(target, kRestoreKind))) {}
  /// What is at its place in the end, be it unfinished or outdated, goes.
  ~Staging() {
    if (made_)
      (void)removeTree(path_);
  }
  Staging(const Staging&) = delete;
  Staging& operator=(const Staging&) = delete;

  [[nodiscard]] const std::string& path() const { return path_; }

  /// Moves the backup in, which is possible on the same file system, or copies it.
  Status fill(const std::string& backup) {
    if (moveIn(backup))
      return Status::success();
    if (mkdir(path_.c_str(), S_IRWXU) != 0)
      return Status::failure(errno, path_);
    made_ = true;
    lock_ = openFolder(path_);
    if (!lock_.isOpen() || !lockTemporary(lock_.get()))
      return Status::failure(EBUSY, path_);
    return copyTree(backup, path_);
  }

  /// After a failure: gives back a backup that was moved in.
  void giveBack(const std::string& backup) {
    if (made_ && !isAnythingAt(backup))
      made_ = std::rename(path_.c_str(), backup.c_str()) != 0;
  }

  /// Puts the tree into the target's place.
  Status exchangeWith(const std::string& target) {
    if (isAnythingAt(target))
      return exchangeTrees(target, path_);
    return std::rename(path_.c_str(), target.c_str()) == 0 ? Status::success()
                                                           : Status::failure(errno, target);
  }

private:
  bool moveIn(const std::string& backup) {
    struct stat info {};
    if (lstat(backup.c_str(), &info) != 0 || !S_ISDIR(info.st_mode))
      return false;
    lock_ = openFolder(backup);
    made_ = lock_.isOpen() && lockTemporary(lock_.get()) &&
            std::rename(backup.c_str(), path_.c_str()) == 0;
    return made_;
  }

  std::string path_;
  Descriptor lock_;
  bool made_ = false;
};

Status restoreInPlace(const std::string& source, const std::string& target,
                      const Omissions& omissions) {
  if (!isFolder(target))
    (void)removeTree(target);
  if (Status made = createFolders(target); !made.ok())
    return made;
  return equaliseTree(source, target, omissions);
}

Status restoreTree(const std::string& backup, const std::string& target,
                   const Omissions& omissions) {
  if (!omissions.empty())
    return restoreInPlace(backup, target, omissions);
  (void)createFolders(folderOf(target));
  Staging staging(target);
  if (staging.fill(backup).ok() && staging.exchangeWith(target).ok())
    return Status::success();
  staging.giveBack(backup);
  return restoreInPlace(isAnythingAt(backup) ? backup : staging.path(), target, omissions);
}

} // namespace

WorkspaceBackup::WorkspaceBackup() : session_(newBackupSession()) {}

Status WorkspaceBackup::prepare(std::string_view backup) {
  state_ = State::NotTaken;
  Status status = removeTree(backup);
  // Marked before it is there: an empty folder without a mark would be taken for a backup.
  for (const Status& next :
       {createFolders(folderOf(withoutEndSlashes(backup))),
        writeBackupMark(backup, {getpid(), session_, {}}), createFolders(backup)})
    if (status.ok())
      status = next;
  return status;
}

bool WorkspaceBackup::isForeign(std::string_view backup) const {
  const std::optional<BackupMark> mark = readBackupMark(backup);
  return mark && mark->session != session_;
}

Status WorkspaceBackup::take(std::string_view workspace, std::string_view backup) {
  if (!exists(backup))
    return Status::success();
  const std::string canonical = canonicalPath(workspace);
  const std::optional<BackupMark> mark = readBackupMark(backup);
  const bool isOurs = mark && mark->session == session_;
  if (state_ == State::Taken && isOurs && canonical == canonical_ && !listTree(backup).empty())
    return Status::success();
  const std::string folder = canonicalPath(backup);
  Status status;
  if (isWithin(canonical, folder) || isWithin(folder, canonical))
    status = Status::failure(EINVAL, std::string(workspace));
  else if (exists(workspace) && !isFolder(workspace))
    status = Status::failure(ENOTDIR, std::string(workspace));
  else if (!exists(workspace) && isAnythingAt(std::string(workspace)))
    status = Status::failure(
        ENOENT, std::string(workspace)); // what a dangling link names is not ours to make
  else if (mark && !isOurs && !mark->workspace.empty() && isRunning(mark->process))
    status = Status::failure(EBUSY, std::string(backup));
  else
    status = prepare(backup);
  if (status.ok())
    status = writeBackupMark(backup, {getpid(), session_, canonical});
  state_ = status.ok() ? State::Taken : State::Failed;
  return status.ok() ? copyIn(workspace, backup) : status;
}

Status WorkspaceBackup::copyIn(std::string_view workspace, std::string_view backup) {
  canonical_ = canonicalPath(workspace);
  place_ = canonicalPlace(workspace);
  omissions_.clear();
  if (!exists(workspace))
    return Status::success();
  // Until it has the workspace's own mode, nobody else looks in.
  chmod(std::string(backup).c_str(), S_IRWXU);
  Status copied = copyTree(workspace, backup, &omissions_);
  // An empty path: the workspace itself could not be read to the end.
  if (std::find(omissions_.begin(), omissions_.end(), "") != omissions_.end())
    state_ = State::Failed;
  return copied;
}

std::optional<std::string> WorkspaceBackup::restoreTarget(std::string_view workspace) const {
  const std::string canonical = canonicalPath(workspace);
  const std::string place = canonicalPlace(workspace);
  if (state_ != State::Taken)
    return isFolder(canonical) ? canonical : place;
  // A link stays when it still leads to where the folder was, and gives way otherwise.
  if (canonical == canonical_)
    return canonical;
  return place == place_ ? std::optional(place) : std::nullopt;
}

Status WorkspaceBackup::restore(std::string_view workspace, std::string_view backup) {
  if (isForeign(backup))
    return Status::success();
  Status status;
  if (exists(backup) && state_ != State::Failed)
    if (const std::optional<std::string> target = restoreTarget(workspace))
      status = restoreTree(withoutEndSlashes(backup), *target, omissions_);
  return status.ok() ? remove(backup) : status;
}

Status WorkspaceBackup::remove(std::string_view backup) {
  if (isForeign(backup))
    return Status::success();
  state_ = State::NotTaken;
  omissions_.clear();
  Status removed = removeTree(backup);
  return removed.ok() ? removeTree(backupMarkPath(backup)) : removed;
}

void clearLeftovers(std::string_view workspace) {
  const std::string target = canonicalPath(workspace);
  const EntryPlace place = placeOf(target);
  if (place.error != 0)
    return;
  int ignored = 0;
  for (const std::string& name : namesIn(place.folder.get(), ignored)) {
    const auto isLeftover = [&](std::string_view kind) {
      return isAbandoned(place.folder.get(), name, siblingPrefix(place.name, kind));
    };
    const bool isAside = isLeftover(kAsideKind);
    if (isAside && !isAnythingAt(target))
      renameat(place.folder.get(), name.c_str(), place.folder.get(), place.name.c_str());
    else if (isAside || isLeftover(kRestoreKind))
      (void)removeEntry(place.folder.get(), name);
  }
}

} // namespace vireonix::core
