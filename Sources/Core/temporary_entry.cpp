#include "temporary_entry.h"

#include "file_system_calls.h"
#include "folder_walk.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <atomic>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdio>
#include <utility>

namespace vireonix::core {

namespace {

constexpr int kAttempts = 100;
constexpr int kNewFile = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;

// The process in a temporary name; 0 when it is none.
pid_t processIn(std::string_view name, std::string_view prefix) {
  if (!name.starts_with(prefix))
    return 0;
  name.remove_prefix(prefix.size());
  pid_t process = 0;
  const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), process);
  const bool whole = error == std::errc() && end != name.data() + name.size() && *end == '-';
  return whole && process > 0 ? process : 0;
}

bool mayStillRun(pid_t process) {
  // A name of this process' own number is judged by its lock alone: in a container the next start
  // of the same program often gets the same number.
  return process != getpid() && (kill(process, 0) == 0 || errno != ESRCH);
}

} // namespace

std::string temporaryName(std::string_view prefix) {
  static std::atomic<unsigned> counter{0};
  return std::string(prefix) + std::to_string(getpid()) + "-" + std::to_string(++counter);
}

bool lockTemporary(int entry) {
  if (flock(entry, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK)
    return false;
  struct stat info {};
  return fstat(entry, &info) == 0 && info.st_nlink > 0;
}

bool isAbandoned(int folder, const std::string& name, std::string_view prefix) {
  const pid_t process = processIn(name, prefix);
  if (process == 0 || mayStillRun(process))
    return false;
  const Descriptor entry(
      openat(folder, name.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
  if (entry.isOpen() && flock(entry.get(), LOCK_EX | LOCK_NB) == 0)
    return true;
  return (!entry.isOpen() || errno != EWOULDBLOCK) && process != getpid();
}

void removeAbandonedFiles(int folder) {
  int ignored = 0;
  for (const std::string& name : namesIn(folder, ignored))
    if (name.starts_with(kTemporaryFilePrefix) && isAbandoned(folder, name, kTemporaryFilePrefix))
      unlinkat(folder, name.c_str(), 0);
}

TemporaryFile::~TemporaryFile() {
  if (!name_.empty())
    unlinkat(folder_, name_.c_str(), 0);
}

int TemporaryFile::create(mode_t mode) {
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    std::string name = temporaryName(kTemporaryFilePrefix);
    Descriptor file(uninterrupted([&] { return openat(folder_, name.c_str(), kNewFile, mode); }));
    if (!file.isOpen() && errno != EEXIST)
      return errno;
    if (!file.isOpen())
      continue; // A left-over of that name.
    if (!lockTemporary(file.get())) {
      unlinkat(folder_, name.c_str(), 0); // Someone took ours for a left-over.
      continue;
    }
    file_ = std::move(file);
    name_ = std::move(name);
    return 0;
  }
  return EEXIST;
}

int TemporaryFile::replace(const std::string& name) {
  if (renameat(folder_, name_.c_str(), folder_, name.c_str()) != 0)
    return errno;
  name_.clear();
  return 0;
}

int TemporaryFile::appear(const std::string& name) {
  const int error = calls::renameExclusive(folder_, name_.c_str(), folder_, name.c_str());
  if (error == 0)
    name_.clear();
  return error;
}

} // namespace vireonix::core
