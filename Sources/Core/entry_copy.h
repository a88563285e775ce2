// Copying single entries between open folders. All answer 0 or an errno value.
#pragma once

#include "core_border.h"
#include "descriptor.h"

#include <sys/stat.h>
#include <sys/types.h>

#include <string>
#include <string_view>

namespace vireonix::core {

/// An entry by its name in an open folder.
struct EntryAt {
  int folder;
  const std::string& name;
};

/// Copies what is still to be read of `from` to the empty file `to`: blocks are shared where the
/// file system can, holes stay holes.
int copyData(int from, int to);

/// Gives an open file or folder the owner (as far as the user may), mode and times of `like`.
int applyAttributes(int file, const struct stat& like);

/// Makes an exact copy of a file, link, FIFO, socket or device under a name that is not taken.
/// `info` is what the entry was found to be. On failure nothing stays.
int copyEntry(EntryAt from, const struct stat& info, EntryAt to);

/// Makes a link with the same target.
int copyLink(EntryAt from, EntryAt to);

/// The target of a link, as it is written there.
int readLink(EntryAt link, std::string& target);

/// Writes all bytes.
int writeAll(int file, const char* bytes, size_t length);

/// Opens a regular file for reading, without following a link or waiting for a FIFO's writer, and
/// sets `info`. Not open and errno set on failure.
Descriptor openRegular(EntryAt file, struct stat& info);

/// The same by a path, the file that a link leads to included.
Descriptor openFile(std::string_view path, struct stat& info);

} // namespace vireonix::core
