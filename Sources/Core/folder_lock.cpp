#include "folder_lock.h"

#include "folder_walk.h"

#include <sys/file.h>

#include <cerrno>
#include <thread>

namespace vireonix::core {

FolderLock::FolderLock(std::string_view folder, std::chrono::milliseconds patience)
    : folder_(openFolder(folder)) {
  constexpr std::chrono::milliseconds kPause{10};
  if (!folder_.isOpen())
    return;
  const auto end = std::chrono::steady_clock::now() + patience;
  while (flock(folder_.get(), LOCK_EX | LOCK_NB) != 0) {
    if (errno != EWOULDBLOCK && errno != EINTR)
      return;
    isHeld_ = std::chrono::steady_clock::now() < end;
    if (!isHeld_)
      return;
    std::this_thread::sleep_for(kPause);
  }
}

} // namespace vireonix::core
