#include "log_file.h"

#include "file_tree.h"

#include <sys/stat.h>

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

Status rotate(const std::string& folder, const std::string& log, const LogClock& clock) {
  const std::string backups = folder + "/backupLog";
  const std::string backup = backups + "/" + fileStamp(clock()) + std::string(kExtension);
  (void)createFolders(backups);
  // A name that is taken, or a full disk, costs the old entries: the log must not grow for ever.
  (void)copyFile(log, backup);
  Status emptied = replaceFile(log, {});
  thinOut(backups);
  return emptied;
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
  Status status;
  if (isThere && info.st_size > kLargestLog) {
    status = rotate(base, log, clock);
    info.st_size = 0;
  } else if (!isThere && !message) {
    status = replaceFile(log, {});
  }
  if (!message || !status.ok())
    return status;
  const std::string separator = info.st_size > 0 ? "\n" : "";
  return appendToFile(log, separator + clock() + "{bundle}:" + std::string(*message));
}

} // namespace vireonix::core
