#include "log_file.h"

#include "file_tree.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <mutex>
#include <vector>

namespace vireonix::core {

namespace {

constexpr std::int64_t kLargestLog = std::int64_t{4} * 1024 * 1024;
constexpr size_t kMostBackups = 30;
constexpr std::string_view kExtension = ".txt";

std::string inLowerCase(std::string_view text) {
  std::string lower(text);
  for (char& c : lower)
    if (c >= 'A' && c <= 'Z')
      c = static_cast<char>(c - 'A' + 'a');
  return lower;
}

/// "2026-11-16 07:54:43" as a file name: "20261116_075443".
std::string fileStamp(std::string_view time) {
  std::string stamp;
  for (const char c : time)
    if (c != '-' && c != ':')
      stamp += c == ' ' ? '_' : c;
  return stamp;
}

bool isBackup(std::string_view path) {
  const size_t slash = path.rfind('/');
  const std::string name = inLowerCase(path.substr(slash == path.npos ? 0 : slash + 1));
  // A name that is nothing but ".txt" has no extension.
  return name.size() > kExtension.size() && name.ends_with(kExtension);
}

/// Deletes the first backup by name when there are too many.
void thinOut(const std::string& folder) {
  std::vector<std::string> backups = listTree(folder);
  std::erase_if(backups, [](const std::string& path) { return !isBackup(path); });
  if (backups.size() <= kMostBackups)
    return;
  const auto first = std::min_element(backups.begin(), backups.end(),
                                      [](const std::string& one, const std::string& other) {
                                        return inLowerCase(one) < inLowerCase(other);
                                      });
  (void)removeTree(folder + "/" + *first);
}

/// Gives the log a place among the backups, unless its name there is taken: then its entries are
/// given up.
Status putAway(const std::string& log, const std::string& backup) {
  // A second name needs no room and cannot be half done.
  if (linkat(AT_FDCWD, log.c_str(), AT_FDCWD, backup.c_str(), AT_SYMLINK_FOLLOW) == 0)
    return Status::success();
  Status copied = copyFile(log, backup);
  return copied.error == EEXIST ? Status::success() : copied;
}

struct Rotation {
  Status putAway;
  Status emptied;
};

Rotation rotate(const std::string& folder, const std::string& log, const LogClock& clock) {
  const std::string backups = folder + "/backupLog";
  (void)createFolders(backups);
  Rotation done;
  done.putAway = putAway(log, backups + "/" + fileStamp(clock()) + std::string(kExtension));
  // The log must not grow for ever, whatever became of the old entries.
  done.emptied = replaceFile(log, {});
  thinOut(backups);
  return done;
}

} // namespace

Status appendToLog(std::string_view folder, std::optional<std::string_view> message,
                   const LogClock& clock) {
  static std::mutex mutex;
  const std::lock_guard lock(mutex);
  const std::string base(folder);
  const std::string log = base + "/Log.txt";
  struct stat info {};
  const bool isThere = stat(log.c_str(), &info) == 0;
  if (isThere && !S_ISREG(info.st_mode))
    return Status::failure(EINVAL, log);
  Rotation rotation;
  if (isThere && info.st_size > kLargestLog) {
    rotation = rotate(base, log, clock);
    info.st_size = 0;
  } else if (!isThere && !message) {
    rotation.emptied = replaceFile(log, {});
  }
  Status added = rotation.emptied;
  if (message && added.ok())
    added = appendToFile(log, (info.st_size > 0 ? "\n" : "") + clock() +
                                  "{bundle}:" + std::string(*message));
  return added.ok() ? rotation.putAway : added;
}

} // namespace vireonix::core
