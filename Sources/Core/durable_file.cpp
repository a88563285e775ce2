#include "descriptor.h"
#include "entry_copy.h"
#include "file_system_calls.h"
#include "file_tree.h"
#include "folder_walk.h"
#include "temporary_entry.h"

#include <fcntl.h>

#include <cerrno>
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

/// Writes `bytes`, behind the content of `before` if that is open, and gives the result its name.
int writeAndReplace(const EntryPlace& place, int existing, const struct stat* like,
                    bool keepContent, std::string_view bytes) {
  removeAbandonedFiles(place.folder.get());
  TemporaryFile file(place.folder.get());
  if (const int error = file.create(like != nullptr ? kPrivateMode : kNewFileMode))
    return error;
  if (keepContent && existing >= 0) {
    if (const int error = copyData(existing, file.fd()))
      return error;
    if (lseek(file.fd(), 0, SEEK_END) < 0)
      return errno;
  }
  if (const int error = writeAll(file.fd(), bytes.data(), bytes.size()))
    return error;
  if (like != nullptr)
    if (const int error = keepAttributes(existing, *like, file.fd()))
      return error;
  if (const int error = calls::sync(file.fd()))
    return error;
  if (const int error = file.replace(place.name))
    return error;
  const int synced = calls::sync(place.folder.get());
  return synced == EINVAL ? 0 : synced; // not every file system can sync a folder
}

Status statusOf(int error, std::string_view path) {
  return error == 0 ? Status::success() : Status::failure(error, std::string(path));
}

} // namespace

Status replaceFile(std::string_view path, std::string_view bytes) {
  const EntryPlace place = placeOf(path);
  if (place.error != 0)
    return statusOf(place.error, path);
  struct stat info {};
  if (fstatat(place.folder.get(), place.name.c_str(), &info, AT_SYMLINK_NOFOLLOW) != 0 ||
      !S_ISREG(info.st_mode))
    return statusOf(writeAndReplace(place, -1, nullptr, false, bytes), path);
  const Descriptor existing = openRegular({place.folder.get(), place.name}, info);
  return statusOf(writeAndReplace(place, existing.get(), &info, false, bytes), path);
}

Status appendToFile(std::string_view path, std::string_view bytes) {
  const EntryPlace place = placeOf(path);
  if (place.error != 0)
    return statusOf(place.error, path);
  struct stat info {};
  const Descriptor existing = openFile(path, info);
  if (existing.isOpen())
    return statusOf(writeAndReplace(place, existing.get(), &info, true, bytes), path);
  if (errno != ENOENT)
    return statusOf(errno, path);
  return statusOf(writeAndReplace(place, -1, nullptr, false, bytes), path);
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
