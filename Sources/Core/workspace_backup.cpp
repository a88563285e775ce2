#include "workspace_backup.h"

#include "backup_mark.h"
#include "file_tree_exchange.h"
#include "file_tree_remove.h"
#include "folder_lock.h"
#include "folder_walk.h"
#include "staging_folder.h"
#include "temporary_entry.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <memory>

namespace vireonix::core {

namespace {

constexpr int kMostLinks = 40;
// Another session copies a whole workspace while it has the backup folder to itself.
constexpr std::chrono::seconds kPatience{30};

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

/// Sessions take turns: each looks at the mark and acts on it while no other can change it.
FolderLock lockOf(std::string_view backup) {
  return {folderOf(withoutEndSlashes(backup)), kPatience};
}

bool isRunning(pid_t process) {
  return process > 0 && (kill(process, 0) == 0 || errno == EPERM);
}

/// Moves the backup in, which is possible on the same file system, or copies it.
Status fill(StagingFolder& staging, const std::string& backup) {
  if (staging.moveIn(backup))
    return Status::success();
  const Status made = staging.make(S_IRWXU);
  return made.ok() ? copyTree(backup, staging.path()) : made;
}

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
  StagingFolder staging(target, kRestoreKind);
  if (fill(staging, backup).ok() && staging.takePlace().ok())
    return Status::success();
  staging.giveBack(backup);
  return restoreInPlace(isAnythingAt(backup) ? backup : staging.path(), target, omissions);
}

} // namespace

WorkspaceBackup::WorkspaceBackup() : session_(newBackupSession()) {}

Status WorkspaceBackup::prepare(std::string_view backup) {
  const FolderLock lock = lockOf(backup);
  return lock.isHeld() ? makeEmpty(backup) : Status::failure(EBUSY, std::string(backup));
}

Status WorkspaceBackup::makeEmpty(std::string_view backup) {
  state_ = State::NotTaken;
  const std::string folder = withoutEndSlashes(backup);
  Status status = discardTree(folder);
  // What is out of the way and could not be deleted is no obstacle.
  if (!isAnythingAt(folder))
    status = Status::success();
  // Marked before it is there: an empty folder without a mark would be taken for a backup.
  if (status.ok())
    status = createFolders(folderOf(folder));
  if (status.ok())
    status = writeBackupMark(
        folder, {.process = getpid(), .session = session_, .workspace = {}, .isUnreadable = false});
  return status.ok() ? createFolders(folder) : status;
}

WorkspaceBackup::Owner WorkspaceBackup::ownerOf(std::string_view backup) const {
  const std::optional<BackupMark> mark = readBackupMark(backup);
  if (mark && mark->isUnreadable)
    return Owner::Unknown;
  return mark && mark->session != session_ ? Owner::Another : Owner::ThisSession;
}

Status WorkspaceBackup::take(std::string_view workspace, std::string_view backup) {
  const FolderLock lock = lockOf(backup);
  if (!lock.isHeld()) {
    state_ = State::Failed;
    return Status::failure(EBUSY, std::string(backup));
  }
  const int backupError = errorAt(backup);
  if (backupError == ENOENT)
    return Status::success();
  const int error = errorAt(workspace);
  const std::string canonical = canonicalPath(workspace);
  const std::optional<BackupMark> mark = readBackupMark(backup);
  const bool isOurs = mark && mark->session == session_;
  if (state_ == State::Taken && isOurs && canonical == canonical_ && !listTree(backup).empty())
    return Status::success();
  const std::string folder = canonicalPath(backup);
  Status status;
  if (isWithin(canonical, folder) || isWithin(folder, canonical))
    status = Status::failure(EINVAL, std::string(workspace));
  else if (backupError != 0 || (error != 0 && error != ENOENT))
    status = Status::failure(std::max(backupError, error), std::string(workspace));
  else if (error == 0 && !isFolder(workspace))
    status = Status::failure(ENOTDIR, std::string(workspace));
  else if (error != 0 && isAnythingAt(std::string(workspace)))
    status = Status::failure(
        ENOENT, std::string(workspace)); // what a dangling link names is not ours to make
  else if (mark && !isOurs && !mark->workspace.empty() && isRunning(mark->process))
    status = Status::failure(EBUSY, std::string(backup));
  else
    status = makeEmpty(backup);
  if (status.ok())
    status = writeBackupMark(
        backup,
        {.process = getpid(), .session = session_, .workspace = canonical, .isUnreadable = false});
  state_ = status.ok() ? State::Taken : State::Failed;
  canonical_ = canonical;
  place_ = canonicalPlace(workspace);
  omissions_.clear();
  return status.ok() && error == 0 ? copyIn(workspace, backup) : status;
}

Status WorkspaceBackup::copyIn(std::string_view workspace, std::string_view backup) {
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

/// Another's backup is rightly left alone; one of which nothing is known may be this session's.
Status WorkspaceBackup::statusFor(Owner owner, std::string_view backup) {
  return owner == Owner::Unknown ? Status::failure(EIO, backupMarkPath(backup)) : Status::success();
}

Status WorkspaceBackup::restore(std::string_view workspace, std::string_view backup) {
  const FolderLock lock = lockOf(backup);
  if (!lock.isHeld())
    return Status::failure(EBUSY, std::string(backup));
  if (const Owner owner = ownerOf(backup); owner != Owner::ThisSession)
    return statusFor(owner, backup);
  const int error = errorAt(backup);
  if (error != 0 && error != ENOENT)
    return Status::failure(error, std::string(backup));
  Status status;
  if (error == 0 && state_ != State::Failed)
    if (const std::optional<std::string> target = restoreTarget(workspace))
      status = restoreTree(withoutEndSlashes(backup), *target, omissions_);
  return status.ok() ? discard(backup) : status;
}

Status WorkspaceBackup::remove(std::string_view backup) {
  const FolderLock lock = lockOf(backup);
  if (!lock.isHeld())
    return Status::failure(EBUSY, std::string(backup));
  const Owner owner = ownerOf(backup);
  return owner == Owner::ThisSession ? discard(backup) : statusFor(owner, backup);
}

Status WorkspaceBackup::discard(std::string_view backup) {
  state_ = State::NotTaken;
  omissions_.clear();
  Status removed = discardTree(withoutEndSlashes(backup));
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
    else if (isAside || isLeftover(kRestoreKind) || isLeftover(kInstallKind))
      (void)removeEntry(place.folder.get(), name);
  }
}

} // namespace vireonix::core
