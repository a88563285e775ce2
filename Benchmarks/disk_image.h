// A file system of its own for a benchmark, in a file and as its mkfs makes it: empty, and the same
// on every machine. What is measured on a machine's own disk depends on what that disk went
// through: ext4 without a journal, for one, passes over all files that were removed within the last
// minutes for each that is made.
#pragma once

#include "support/temporary_folder.h"

#include <string>

namespace vireonix::bench {

class DiskImage {
public:
  /// Whether this process may make one: an administrator's may, where there are loop devices.
  [[nodiscard]] static bool isPossible();

  /// Makes and mounts one: "ext4", "xfs" or "btrfs". Only this process and those that it starts see
  /// it, and it is gone when they end. Throws std::runtime_error when that fails.
  explicit DiskImage(const std::string& kind);
  ~DiskImage();
  DiskImage(const DiskImage&) = delete;
  DiskImage& operator=(const DiskImage&) = delete;

  [[nodiscard]] const std::string& path() const { return path_; }

private:
  test::TemporaryFolder folder_;
  std::string path_;
};

} // namespace vireonix::bench
