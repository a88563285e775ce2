#include "descriptor.h"
#include "entry_copy.h"
#include "file_system_calls.h"
#include "file_tree.h"
#include "folder_walk.h"
#include "temporary_entry.h"

#include <fcntl.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <optional>

namespace vireonix::core {

namespace {

constexpr mode_t kNewFileMode = 0666;
constexpr mode_t kPrivateMode = 0600; // until an existing file's mode is known to be kept

/// Gives the new file what an existing one has apart from its content and times.
int keepAttributes(int existing, const struct stat& info, int made) {
  if (existing >= 0)
    calls::copyExtendedAttributes(existing, made);
  struct stat now {};
  if (fstat(made, &now) != 0)
    return errno;
  const bool foreign = now.st_uid != info.st_uid || now.st_gid != info.st_gid;
  if (foreign && fchown(made, info.st_uid, info.st_gid) != 0 && errno != EPERM)
    return errno;
  return fchmod(made, info.st_mode & 07777) == 0 ? 0 : errno;
}

/// What stands under the name now: nothing, or a regular file, opened when it can be read.
struct Existing {
  bool isThere = false;
  struct stat info {};
  Descriptor file;
};

int syncFolder(int folder) {
  const int error = calls::sync(folder);
  return error == EINVAL ? 0 : error; // not every file system can sync a folder
}

int copyBefore(const Existing& existing, const TemporaryFile& file) {
  if (!existing.file.isOpen())
    return 0;
  if (const int error = copyData(existing.file.get(), file.fd()))
    return error;
  return lseek(file.fd(), 0, SEEK_END) < 0 ? errno : 0;
}

FileState stateOf(const struct stat& info) {
  const timespec modified = calls::modificationTime(info);
  const timespec changed = calls::changeTime(info);
  return {.device = info.st_dev,
          .number = info.st_ino,
          .size = info.st_size,
          .modifiedSeconds = modified.tv_sec,
          .modifiedNanoseconds = modified.tv_nsec,
          .changedSeconds = changed.tv_sec,
          .changedNanoseconds = changed.tv_nsec};
}

// Sets the modification time back by the least there is: whoever writes to the file in this very
// tick of the clock sets it to another one.
bool markAsOurs(int file) {
  struct stat info {};
  if (fstat(file, &info) != 0)
    return false;
  timespec modified = calls::modificationTime(info);
  if (--modified.tv_nsec < 0) {
    modified.tv_nsec = 999'999'999;
    --modified.tv_sec;
  }
  const std::array times = {timespec{.tv_sec = 0, .tv_nsec = UTIME_OMIT}, modified};
  return futimens(file, times.data()) == 0;
}

enum class Content { Replaced, Extended };

int write(const EntryPlace& place, const Existing& existing, Content content,
          std::string_view bytes, Durability durability, std::optional<FileState>* made) {
  removeAbandonedFiles(place.folder.get());
  const bool isSynced = durability == Durability::Machine;
  TemporaryFile file(place.folder.get());
  int error = file.create(existing.isThere ? kPrivateMode : kNewFileMode);
  if (error == 0 && content == Content::Extended)
    error = copyBefore(existing, file);
  if (error == 0)
    error = writeAll(file.fd(), bytes.data(), bytes.size());
  if (error == 0 && existing.isThere)
    error = keepAttributes(existing.file.get(), existing.info, file.fd());
  const bool isMarked = error == 0 && made != nullptr && markAsOurs(file.fd());
  if (error == 0 && isSynced)
    error = calls::sync(file.fd());
  if (error == 0)
    error = file.replace(place.name);
  // The name may lead to another program's file by now: the open file is ours.
  struct stat info {};
  if (error == 0 && isMarked && fstat(file.fd(), &info) == 0)
    *made = stateOf(info);
  if (error == 0 && isSynced)
    error = syncFolder(place.folder.get());
  return error;
}

} // namespace

std::optional<FileState> fileState(std::string_view path) {
  struct stat info {};
  return stat(std::string(path).c_str(), &info) == 0 ? std::optional(stateOf(info)) : std::nullopt;
}

bool isSettled(const FileState& state) {
  constexpr std::chrono::seconds kCoarsestTick{2};
  const std::chrono::seconds changed{state.changedSeconds};
  return changed + kCoarsestTick < std::chrono::system_clock::now().time_since_epoch();
}

Status replaceFile(std::string_view path, std::string_view bytes, Durability durability,
                   std::optional<FileState>* made) {
  const EntryPlace place = placeOf(path);
  if (place.error != 0)
    return Status::of(place.error, path);
  Existing existing;
  const int folder = place.folder.get();
  if (fstatat(folder, place.name.c_str(), &existing.info, AT_SYMLINK_NOFOLLOW) == 0)
    existing.isThere = S_ISREG(existing.info.st_mode);
  else if (errno != ENOENT)
    return Status::of(errno, path); // Its mode could not be kept.
  if (existing.isThere)
    existing.file = openRegular({folder, place.name}, existing.info);
  return Status::of(write(place, existing, Content::Replaced, bytes, durability, made), path);
}

Status appendToFile(std::string_view path, std::string_view bytes) {
  const EntryPlace place = placeOf(path);
  if (place.error != 0)
    return Status::of(place.error, path);
  Existing existing;
  existing.file = openFile(path, existing.info);
  existing.isThere = existing.file.isOpen();
  if (!existing.isThere && errno != ENOENT)
    return Status::of(errno, path);
  return Status::of(write(place, existing, Content::Extended, bytes, Durability::Machine, nullptr),
                    path);
}

std::optional<std::string> readFile(std::string_view path) {
  struct stat info {};
  const Descriptor file = openFile(path, info);
  if (!file.isOpen())
    return std::nullopt;
  std::string bytes(static_cast<size_t>(info.st_size), '\0');
  size_t length = 0;
  for (;;) {
    if (length == bytes.size())
      bytes.resize(length + length / 2 + 4096);
    const ssize_t got = read(file.get(), &bytes[length], bytes.size() - length);
    if (got < 0 && errno != EINTR)
      return std::nullopt;
    if (got == 0)
      break;
    length += static_cast<size_t>(got > 0 ? got : 0);
  }
  bytes.resize(length);
  return bytes;
}

} // namespace vireonix::core
