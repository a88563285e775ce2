#include "Core/descriptor.h"
#include "Core/file_system_calls.h"

#include <copyfile.h>
#include <fcntl.h>
#include <stdio.h>
#include <unistd.h>

#include <cerrno>

namespace vireonix::core::calls {

int shareBlocks(int /*from*/, int /*to*/) {
  return ENOTSUP; // Only whole new files can be cloned there, not the content of an open one.
}

ssize_t copyRange(int /*from*/, int /*to*/, off_t /*offset*/, size_t /*length*/) {
  errno = ENOTSUP;
  return -1;
}

int exchange(const char* first, const char* second) {
  return renamex_np(first, second, RENAME_SWAP) == 0 ? 0 : errno;
}

int renameExclusive(int fromFolder, const char* from, int toFolder, const char* to) {
  return renameatx_np(fromFolder, from, toFolder, to, RENAME_EXCL) == 0 ? 0 : errno;
}

int sync(int file) {
  // A plain fsync leaves the data in the drive's own cache.
  if (uninterrupted([&] { return fcntl(file, F_FULLFSYNC); }) == 0)
    return 0;
  return uninterrupted([&] { return fsync(file); }) == 0 ? 0 : errno;
}

void copyExtendedAttributes(int from, int to) {
  fcopyfile(from, to, nullptr, COPYFILE_XATTR | COPYFILE_ACL);
}

int makeSpecial(int folder, const char* name, const struct stat& like) {
  if (S_ISFIFO(like.st_mode))
    return mkfifoat(folder, name, like.st_mode & 07777) == 0 ? 0 : errno;
  return mknodat(folder, name, like.st_mode, like.st_rdev) == 0 ? 0 : errno;
}

timespec accessTime(const struct stat& info) {
  return info.st_atimespec;
}

timespec modificationTime(const struct stat& info) {
  return info.st_mtimespec;
}

timespec changeTime(const struct stat& info) {
  return info.st_ctimespec;
}

} // namespace vireonix::core::calls
