// The calls of the file system that differ between platforms; implemented once for each under
// Platform. All answer 0 or an errno value unless they say otherwise.
#pragma once

#include "core_border.h"

#include <sys/stat.h>
#include <sys/types.h>

#include <ctime>

namespace vireonix::core::calls {

/// Makes the empty file `to` share all blocks of `from`; an error where the file system cannot.
int shareBlocks(int from, int to);

/// Copies up to `length` bytes at `offset` of one file to the same offset of another without
/// passing them through this process. The number of bytes, 0 at the end of `from`, or -1 with errno
/// set; then the file system may still be able to copy by reading and writing.
ssize_t copyRange(int from, int to, off_t offset, size_t length);

/// Exchanges two entries in one step.
int exchange(const char* first, const char* second);

/// Renames, and fails with EEXIST when the new name is taken.
int renameExclusive(int fromFolder, const char* from, int toFolder, const char* to);

/// Waits until the content has reached the disk.
int sync(int file);

/// Copies the extended attributes that the user may set, access control lists included.
void copyExtendedAttributes(int from, int to);

/// Makes a FIFO, socket or device of the kind of `like`. The mode is subject to the umask.
int makeSpecial(int folder, const char* name, const struct stat& like);

timespec accessTime(const struct stat& info);
timespec modificationTime(const struct stat& info);
/// When the entry was last changed in any way; no program can set it.
timespec changeTime(const struct stat& info);

} // namespace vireonix::core::calls
