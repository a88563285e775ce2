#include "player/watched_folder.h"

#include <array>
#include <gtest/gtest.h>
#include <sys/inotify.h>
#include <unistd.h>

namespace vireonix::test {

WatchedFolder::WatchedFolder(const std::string& path)
    : events_(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
  EXPECT_GE(inotify_add_watch(events_, path.c_str(), IN_ALL_EVENTS), 0);
}

WatchedFolder::~WatchedFolder() {
  close(events_);
}

std::string WatchedFolder::uses() const {
  std::string names;
  alignas(inotify_event) std::array<char, 4096> buffer = {};
  for (ssize_t length = read(events_, buffer.data(), buffer.size()); length > 0;
       length = read(events_, buffer.data(), buffer.size())) {
    for (const char* at = buffer.data(); at < buffer.data() + length;) {
      const auto* event = reinterpret_cast<const inotify_event*>(at);
      names += std::string(event->len > 0 ? event->name : "the folder") + " ";
      at += sizeof(inotify_event) + event->len;
    }
  }
  return names;
}

} // namespace vireonix::test
