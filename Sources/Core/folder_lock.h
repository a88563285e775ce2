// A lock between processes that leaves nothing on disk: the folder itself is locked.
#pragma once

#include "core_border.h"
#include "descriptor.h"

#include <chrono>
#include <string_view>

namespace vireonix::core {

/// Keeps every other FolderLock on the folder out, those of this process included, as long as it
/// lives. A process that ends, however it ends, unlocks what it had locked.
class FolderLock {
public:
  /// Waits for others up to `patience`.
  FolderLock(std::string_view folder, std::chrono::milliseconds patience);

  /// False when others kept it for too long. A folder that is not there, or on a file system
  /// without locks, counts as locked.
  [[nodiscard]] bool isHeld() const { return isHeld_; }

private:
  Descriptor folder_;
  bool isHeld_ = true;
};

} // namespace vireonix::core
