#include "workspace_backup.h"

#include "backup_mark.h"
#include "file_tree_exchange.h"
#include "file_tree_remove.h"
#include "folder_lock.h"
#include "folder_walk.h"
#include "path_text.h"
#include "staging_folder.h"
#include "temporary_entry.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>

namespace vireonix::core {

namespace {

// Another session copies a whole workspace while it has the backup folder to itself.
constexpr std::chrono::seconds kPatience{30};

/// Sessions take turns: each looks at the mark and acts on it while no other can change it.
FolderLock lockOf(std::string_view backup) {
  return {folderOf(withoutEndSlashes(backup)), kPatience};
}

bool isInUse(const BackupMark& mark) {
  return !mark.workspace.empty() && mark.process > 0 &&
         (kill(mark.process, 0) == 0 || errno == EPERM);
}

/// Why the workspace, of which errorAt says `error`, cannot be copied to the backup folder: 0 or an
/// errno value. A workspace that is missing is no obstacle.
int obstacle(std::string_view workspace, int error, std::string_view backup) {
  const std::string source = canonicalPath(workspace);
  const std::string target = canonicalPath(backup);
  if (source.empty())
    return ELOOP;
  if (isWithin(source, target) || isWithin(target, source))
    return EINVAL;
  if (const int backupError = errorAt(backup))
    return backupError;
  if (error == 0)
    return isFolder(workspace) ? 0 : ENOTDIR;
  // What a dangling link names is not ours to make.
  const bool isMissing = error == ENOENT && !isAnythingAt(std::string(workspace));
  return isMissing ? 0 : error;
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
  const std::string folder(withoutEndSlashes(backup));
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
  if (errorAt(backup) == ENOENT)
    return Status::success();
  // Asked once: a workspace that seems missing for a moment must not get an empty backup.
  const int error = errorAt(workspace);
  const std::string canonical = canonicalPath(workspace);
  const std::optional<BackupMark> mark = readBackupMark(backup);
  const bool isOurs = mark && mark->session == session_;
  if (state_ == State::Taken && isOurs && canonical == canonical_ && !listTree(backup).empty())
    return Status::success();
  Status status = Status::of(obstacle(workspace, error, backup), workspace);
  if (status.ok() && mark && !isOurs && isInUse(*mark))
    status = Status::failure(EBUSY, std::string(backup));
  if (status.ok())
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
      status = restoreTree(std::string(withoutEndSlashes(backup)), *target, omissions_);
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
  Status removed = discardTree(std::string(withoutEndSlashes(backup)));
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
