// A folder that tells whether any process opened, read or changed something in it.
#pragma once

#include <string>

namespace vireonix::test {

class WatchedFolder {
public:
  explicit WatchedFolder(const std::string& path);
  ~WatchedFolder();
  WatchedFolder(const WatchedFolder&) = delete;
  WatchedFolder& operator=(const WatchedFolder&) = delete;

  /// The names of what was used since the last time, blank-separated; empty when nothing was.
  [[nodiscard]] std::string uses() const;

private:
  int events_ = -1;
};

} // namespace vireonix::test
