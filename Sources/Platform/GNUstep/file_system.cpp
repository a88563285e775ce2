#include "Core/descriptor.h"
#include "Core/file_system_calls.h"

#include <fcntl.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <vector>

namespace vireonix::core::calls {

int shareBlocks(int from, int to) {
  return ioctl(to, FICLONE, from) == 0 ? 0 : errno;
}

ssize_t copyRange(int from, int to, off_t offset, size_t length) {
  off_t in = offset;
  off_t out = offset;
  return copy_file_range(from, &in, to, &out, length, 0);
}

int exchange(const char* first, const char* second) {
  return renameat2(AT_FDCWD, first, AT_FDCWD, second, RENAME_EXCHANGE) == 0 ? 0 : errno;
}

int renameExclusive(int fromFolder, const char* from, int toFolder, const char* to) {
  if (renameat2(fromFolder, from, toFolder, to, RENAME_NOREPLACE) == 0)
    return 0;
  if (errno != EINVAL && errno != ENOSYS)
    return errno;
  // The file system cannot do it in one step, but a second name is never given over an entry.
  if (linkat(fromFolder, from, toFolder, to, 0) != 0)
    return errno;
  unlinkat(fromFolder, from, 0);
  return 0;
}

int sync(int file) {
  return uninterrupted([&] { return fsync(file); }) == 0 ? 0 : errno;
}

void copyExtendedAttributes(int from, int to) {
  const ssize_t size = flistxattr(from, nullptr, 0);
  if (size <= 0)
    return;
  std::vector<char> names(static_cast<size_t>(size));
  const ssize_t listed = flistxattr(from, names.data(), names.size());
  std::vector<char> value;
  for (ssize_t at = 0; at < listed;) {
    const char* name = &names[static_cast<size_t>(at)];
    at += static_cast<ssize_t>(std::strlen(name)) + 1;
    const ssize_t length = fgetxattr(from, name, nullptr, 0);
    if (length < 0)
      continue;
    value.resize(static_cast<size_t>(length));
    if (fgetxattr(from, name, value.data(), value.size()) == length)
      fsetxattr(to, name, value.data(), value.size(), 0);
  }
}

int makeSpecial(int folder, const char* name, const struct stat& like) {
  return mknodat(folder, name, like.st_mode, like.st_rdev) == 0 ? 0 : errno;
}

timespec accessTime(const struct stat& info) {
  return info.st_atim;
}

timespec modificationTime(const struct stat& info) {
  return info.st_mtim;
}

timespec changeTime(const struct stat& info) {
  return info.st_ctim;
}

} // namespace vireonix::core::calls
