#include "backup_mark.h"

#include "file_tree.h"
#include "path_text.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <charconv>
#include <chrono>

namespace vireonix::core {

namespace {

constexpr std::string_view kHeading = "vireonix backup 1";

std::string_view takeLine(std::string_view& text) {
  const size_t end = std::min(text.find('\n'), text.size());
  const std::string_view line = text.substr(0, end);
  text.remove_prefix(std::min(end + 1, text.size()));
  return line;
}

} // namespace

std::string newBackupSession() {
  static std::atomic<unsigned> counter{0};
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  const auto since = std::chrono::duration_cast<std::chrono::nanoseconds>(now).count();
  return std::to_string(getpid()) + "-" + std::to_string(since) + "-" + std::to_string(++counter);
}

std::string backupMarkPath(std::string_view backup) {
  return std::string(withoutEndSlashes(backup)) + "-owner";
}

Status writeBackupMark(std::string_view backup, const BackupMark& mark) {
  // The workspace comes last because its path may hold any character.
  return replaceFile(backupMarkPath(backup),
                     std::string(kHeading) + "\n" + mark.session + "\n" + mark.workspace,
                     Durability::Process);
}

std::optional<BackupMark> readBackupMark(std::string_view backup) {
  const std::string path = backupMarkPath(backup);
  const std::optional<std::string> text = readFile(path);
  struct stat info {};
  if (!text && lstat(path.c_str(), &info) != 0 && errno == ENOENT)
    return std::nullopt;
  BackupMark mark;
  mark.isUnreadable = !text;
  if (!text)
    return mark;
  std::string_view rest = *text;
  if (takeLine(rest) != kHeading)
    return mark;
  mark.session = takeLine(rest);
  std::from_chars(mark.session.data(), mark.session.data() + mark.session.size(), mark.process);
  mark.workspace = rest;
  return mark;
}

} // namespace vireonix::core
