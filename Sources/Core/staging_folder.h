// A folder made beside the place that it is to take, so that it appears there whole.
#pragma once

#include "core_border.h"
#include "descriptor.h"
#include "status.h"

#include <sys/types.h>

#include <string>
#include <string_view>

namespace vireonix::core {

/// What stands beside a folder while it is made, restored or removed.
inline constexpr std::string_view kInstallKind = "install";
inline constexpr std::string_view kRestoreKind = "restore";
inline constexpr std::string_view kDiscardKind = "discard";

/// The folder is locked, so that nobody takes it for a left-over.
class StagingFolder {
public:
  StagingFolder(const std::string& target, std::string_view kind);
  /// What is at its place in the end, be it unfinished or outdated, goes.
  ~StagingFolder();
  StagingFolder(const StagingFolder&) = delete;
  StagingFolder& operator=(const StagingFolder&) = delete;

  [[nodiscard]] const std::string& path() const { return path_; }

  /// Makes it, empty.
  Status make(mode_t mode);

  /// Makes it of a folder that stands elsewhere on the same file system. False when that is not
  /// possible; then nothing has changed.
  bool moveIn(const std::string& folder);

  /// After a failure: gives back a folder that was moved in.
  void giveBack(const std::string& folder);

  /// Puts it into the target's place; what was there is now at path().
  Status takePlace();

  /// Puts it into the target's place, where nothing but an empty folder may be.
  Status appear();

private:
  bool lock();

  std::string target_;
  std::string path_;
  Descriptor lock_;
  bool made_ = false;
};

/// Removes a folder so that it is gone from its place at once, and never there in part.
Status discardTree(const std::string& path);

/// Removes what killed processes left beside the path: trees of the kind that were unfinished or
/// outdated.
void clearStaging(const std::string& path, std::string_view kind);

} // namespace vireonix::core
