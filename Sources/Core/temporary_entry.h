// Entries that exist only until an operation is finished. Their names say which process made them,
// and a lock on them says that it still runs, so that what a killed process left can be told apart
// and removed.
#pragma once

#include "core_border.h"
#include "descriptor.h"

#include <string>
#include <string_view>

namespace vireonix::core {

/// The beginning of the names of temporary files.
inline constexpr std::string_view kTemporaryFilePrefix = ".vireonix-new-";

/// A name that this process has not used before: the prefix, the process and a number.
std::string temporaryName(std::string_view prefix);

/// Locks an open temporary entry for as long as it stays open. False when something else has got
/// it.
bool lockTemporary(int entry);

/// Whether the entry of the folder has such a name and was left by a process that has ended.
bool isAbandoned(int folder, const std::string& name, std::string_view prefix);

/// Removes the temporary files that killed processes left in an open folder.
void removeAbandonedFiles(int folder);

/// A temporary file in an open folder, which must outlive it. Removed unless it was given its name.
class TemporaryFile {
public:
  explicit TemporaryFile(int folder) : folder_(folder) {}
  ~TemporaryFile();
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  /// Makes the file. 0 or errno.
  int create(mode_t mode);
  [[nodiscard]] int fd() const { return file_.get(); }

  /// Gives it its name; what has that name is replaced. 0 or errno.
  int replace(const std::string& name);
  /// Gives it its name unless that is taken: EEXIST.
  int appear(const std::string& name);

private:
  int folder_;
  Descriptor file_;
  std::string name_;
};

} // namespace vireonix::core
