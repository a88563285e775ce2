#include "staging_folder.h"

#include "file_tree.h"
#include "file_tree_exchange.h"
#include "file_tree_remove.h"
#include "folder_walk.h"
#include "path_text.h"
#include "temporary_entry.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstdio>

namespace vireonix::core {

StagingFolder::StagingFolder(const std::string& target, std::string_view kind)
    : target_(target), path_(temporaryName(siblingPrefix(target, kind))) {}

StagingFolder::~StagingFolder() {
  if (made_)
    (void)removeTree(path_);
}

bool StagingFolder::lock() {
  lock_ = openFolder(path_);
  return lock_.isOpen() && lockTemporary(lock_.get());
}

Status StagingFolder::make(mode_t mode) {
  if (mkdir(path_.c_str(), mode) != 0)
    return Status::failure(errno, path_);
  made_ = true;
  return lock() ? Status::success() : Status::failure(EBUSY, path_);
}

bool StagingFolder::moveIn(const std::string& folder) {
  struct stat info {};
  if (lstat(folder.c_str(), &info) != 0 || !S_ISDIR(info.st_mode))
    return false;
  lock_ = openFolder(folder);
  made_ = lock_.isOpen() && lockTemporary(lock_.get()) &&
          std::rename(folder.c_str(), path_.c_str()) == 0;
  return made_;
}

void StagingFolder::giveBack(const std::string& folder) {
  if (made_ && !isAnythingAt(folder))
    made_ = std::rename(path_.c_str(), folder.c_str()) != 0;
}

Status StagingFolder::takePlace() {
  return isAnythingAt(target_) ? exchangeTrees(target_, path_) : appear();
}

// A folder with anything in it, or a file, makes the call fail.
Status StagingFolder::appear() {
  if (std::rename(path_.c_str(), target_.c_str()) != 0)
    return Status::failure(errno, target_);
  made_ = false;
  return Status::success();
}

Status discardTree(const std::string& path) {
  clearStaging(path, kDiscardKind);
  const std::string aside = temporaryName(siblingPrefix(path, kDiscardKind));
  const bool isAside = std::rename(path.c_str(), aside.c_str()) == 0;
  return removeTree(isAside ? aside : path);
}

void clearStaging(const std::string& path, std::string_view kind) {
  const EntryPlace place = placeOf(path);
  if (place.error != 0)
    return;
  const std::string prefix = siblingPrefix(place.name, kind);
  int ignored = 0;
  for (const std::string& name : namesIn(place.folder.get(), ignored))
    if (isAbandoned(place.folder.get(), name, prefix))
      (void)removeEntry(place.folder.get(), name);
}

Status makeFolderWhole(std::string_view path, const FolderFiller& fill) {
  const std::string target(withoutEndSlashes(path));
  (void)createFolders(folderOf(target));
  clearStaging(target, kInstallKind);
  StagingFolder staging(target, kInstallKind);
  if (!isAnythingAt(target) && staging.make(0777).ok()) {
    fill(staging.path());
    if (staging.appear().ok())
      return Status::success();
  }
  Status made = createFolders(target);
  if (made.ok())
    fill(target);
  return made;
}

} // namespace vireonix::core
