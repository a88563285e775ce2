#include "entry_copy.h"

#include "descriptor.h"
#include "file_system_calls.h"

#include <fcntl.h>

#include <algorithm>
#include <array>
#include <cerrno>

namespace vireonix::core {

namespace {

constexpr size_t kBufferSize = size_t{64} * 1024;
// Below this, reading and writing is quicker than asking the kernel to copy or to look for holes.
constexpr off_t kSmallFile = off_t{32} * 1024;
constexpr off_t kBlockUnit = 512; // of st_blocks

// The most that one in-kernel copy is asked for; all systems accept it.
constexpr off_t kMostAtOnce = off_t{1} << 30;

int readAndWrite(int from, int to, off_t offset, off_t end) {
  std::array<char, kBufferSize> buffer;
  while (offset < end) {
    const size_t wanted = std::min(buffer.size(), static_cast<size_t>(end - offset));
    const ssize_t got = pread(from, buffer.data(), wanted, offset);
    if (got < 0 && errno == EINTR)
      continue;
    if (got <= 0)
      return got == 0 ? 0 : errno;
    for (ssize_t done = 0; done < got;) {
      const ssize_t put = pwrite(to, &buffer[static_cast<size_t>(done)],
                                 static_cast<size_t>(got - done), offset + done);
      if (put < 0 && errno != EINTR)
        return errno;
      done += std::max<ssize_t>(put, 0);
    }
    offset += got;
  }
  return 0;
}

bool copyRangeRefused(int error) {
  // On some systems two of the names are one number. NOLINTBEGIN(misc-redundant-expression)
  return error == EXDEV || error == EINVAL || error == ENOSYS || error == EOPNOTSUPP ||
         error == ENOTSUP || error == EPERM || error == EBADF;
  // NOLINTEND(misc-redundant-expression)
}

int copyExtent(int from, int to, off_t offset, off_t end) {
  if (end - offset <= kSmallFile)
    return readAndWrite(from, to, offset, end);
  while (offset < end) {
    const auto wanted = static_cast<size_t>(std::min(kMostAtOnce, end - offset));
    const ssize_t copied = calls::copyRange(from, to, offset, wanted);
    if (copied > 0)
      offset += copied;
    else if (copied == 0 || copyRangeRefused(errno)) // some file systems answer 0 for "cannot"
      return readAndWrite(from, to, offset, end);
    else if (errno != EINTR)
      return errno;
  }
  return 0;
}

int copyAroundHoles(int from, int to, off_t size) {
  for (off_t offset = 0; offset < size;) {
    const off_t data = lseek(from, offset, SEEK_DATA);
    if (data < 0 && errno == ENXIO) // only a hole is left
      break;
    if (data < 0)
      return copyExtent(from, to, offset, size);
    const off_t hole = std::min(std::max(lseek(from, data, SEEK_HOLE), off_t{0}), size);
    const off_t end = hole > data ? hole : size;
    if (const int error = copyExtent(from, to, data, end))
      return error;
    offset = end;
  }
  return uninterrupted([&] { return ftruncate(to, size); }) == 0 ? 0 : errno;
}

bool ownerDiffers(const struct stat& first, const struct stat& second) {
  return first.st_uid != second.st_uid || first.st_gid != second.st_gid;
}

std::array<timespec, 2> timesOf(const struct stat& info) {
  return {calls::accessTime(info), calls::modificationTime(info)};
}

int applyLinkAttributes(EntryAt to, const struct stat& like) {
  struct stat made {};
  if (fstatat(to.folder, to.name.c_str(), &made, AT_SYMLINK_NOFOLLOW) == 0 &&
      ownerDiffers(made, like) &&
      fchownat(to.folder, to.name.c_str(), like.st_uid, like.st_gid, AT_SYMLINK_NOFOLLOW) != 0 &&
      errno != EPERM)
    return errno;
  if (!S_ISLNK(like.st_mode) &&
      fchmodat(to.folder, to.name.c_str(), like.st_mode & 07777, AT_SYMLINK_NOFOLLOW) != 0)
    return errno;
  const auto times = timesOf(like);
  const char* const name = to.name.c_str();
  return utimensat(to.folder, name, times.data(), AT_SYMLINK_NOFOLLOW) == 0 ? 0 : errno;
}

Descriptor openRegularAt(int folder, const char* name, int flags, struct stat& info) {
  Descriptor opened(uninterrupted(
      [&] { return openat(folder, name, O_RDONLY | O_NONBLOCK | O_CLOEXEC | flags); }));
  if (!opened.isOpen())
    return opened;
  const int error = fstat(opened.get(), &info) == 0 ? 0 : errno;
  if (error == 0 && S_ISREG(info.st_mode))
    return opened;
  opened.close();
  errno = error == 0 ? EINVAL : error;
  return opened;
}

int copyRegular(EntryAt from, EntryAt to) {
  struct stat info {};
  const Descriptor in = openRegular(from, info);
  if (!in.isOpen())
    return errno;
  constexpr int kNew = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
  const Descriptor out(
      uninterrupted([&] { return openat(to.folder, to.name.c_str(), kNew, 0600); }));
  if (!out.isOpen())
    return errno;
  int error = copyData(in.get(), out.get());
  if (error == 0) {
    calls::copyExtendedAttributes(in.get(), out.get());
    error = applyAttributes(out.get(), info);
  }
  if (error != 0)
    unlinkat(to.folder, to.name.c_str(), 0);
  return error;
}

int copySpecial(EntryAt from, const struct stat& info, EntryAt to) {
  const int made = S_ISLNK(info.st_mode) ? copyLink(from, to)
                                         : calls::makeSpecial(to.folder, to.name.c_str(), info);
  if (made != 0)
    return made;
  const int error = applyLinkAttributes(to, info);
  if (error != 0)
    unlinkat(to.folder, to.name.c_str(), 0);
  return error;
}

} // namespace

Descriptor openRegular(EntryAt file, struct stat& info) {
  return openRegularAt(file.folder, file.name.c_str(), O_NOFOLLOW, info);
}

Descriptor openFile(std::string_view path, struct stat& info) {
  if (path.find('\0') != path.npos) {
    errno = EINVAL;
    return {};
  }
  return openRegularAt(AT_FDCWD, std::string(path).c_str(), 0, info);
}

int copyData(int from, int to) {
  struct stat info {};
  if (fstat(from, &info) != 0)
    return errno;
  if (info.st_size > kSmallFile) {
    if (calls::shareBlocks(from, to) == 0)
      return 0;
    if (off_t{info.st_blocks} * kBlockUnit < info.st_size)
      return copyAroundHoles(from, to, info.st_size);
  }
  return copyExtent(from, to, 0, info.st_size);
}

int applyAttributes(int file, const struct stat& like) {
  struct stat now {};
  if (fstat(file, &now) != 0)
    return errno;
  if (ownerDiffers(now, like)) {
    // Not the owner's to give away: then at least the group, and failing that nothing.
    if (fchown(file, like.st_uid, like.st_gid) != 0 &&
        fchown(file, static_cast<uid_t>(-1), like.st_gid) != 0 && errno != EPERM)
      return errno;
  }
  if (fchmod(file, like.st_mode & 07777) != 0)
    return errno;
  const auto times = timesOf(like);
  return futimens(file, times.data()) == 0 ? 0 : errno;
}

int readLink(EntryAt link, std::string& target) {
  for (size_t size = 256;; size *= 2) {
    target.resize(size);
    const ssize_t length = readlinkat(link.folder, link.name.c_str(), target.data(), size);
    if (length < 0)
      return errno;
    if (static_cast<size_t>(length) < size) {
      target.resize(static_cast<size_t>(length));
      return 0;
    }
  }
}

int copyLink(EntryAt from, EntryAt to) {
  std::string target;
  if (const int error = readLink(from, target))
    return error;
  return symlinkat(target.c_str(), to.folder, to.name.c_str()) == 0 ? 0 : errno;
}

int copyEntry(EntryAt from, const struct stat& info, EntryAt to) {
  return S_ISREG(info.st_mode) ? copyRegular(from, to) : copySpecial(from, info, to);
}

int writeAll(int file, const char* bytes, size_t length) {
  while (length > 0) {
    const ssize_t put = write(file, bytes, length);
    if (put < 0 && errno != EINTR)
      return errno;
    if (put > 0) {
      bytes += put;
      length -= static_cast<size_t>(put);
    }
  }
  return 0;
}

} // namespace vireonix::core
