#include "odd_tree.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <map>
#include <vector>

namespace vireonix::test {

namespace fs = std::filesystem;

namespace {

constexpr off_t kHole = off_t{1} << 20;

size_t below(std::mt19937& random, size_t bound) {
  return random() % bound;
}

std::vector<std::string> entriesOf(const std::string& root, bool foldersOnly) {
  std::vector<std::string> paths;
  if (foldersOnly)
    paths.push_back(root);
  for (const auto& entry : fs::recursive_directory_iterator(root))
    if (!foldersOnly || fs::is_directory(entry.symlink_status()))
      paths.push_back(entry.path());
  return paths;
}

std::string anyOf(const std::vector<std::string>& paths, std::mt19937& random) {
  return paths[below(random, paths.size())];
}

std::string oddName(std::mt19937& random) {
  const std::string number = std::to_string(below(random, 500));
  switch (below(random, 6)) {
  case 0:
    return number + std::string(255 - number.size(), 'n');
  case 1:
    return "\xff\xfe\x80" + number;
  case 2:
    return ".hidden" + number;
  case 3:
    return "new\nline \t" + number;
  default:
    return number;
  }
}

void writeInPlace(const std::string& path, std::mt19937& random, int flags) {
  const int file = open(path.c_str(), O_WRONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC | flags, 0644);
  if (file < 0)
    return;
  std::string bytes(below(random, 9000), '\0');
  for (char& byte : bytes)
    byte = static_cast<char>(random());
  (void)!write(file, bytes.data(), bytes.size());
  close(file);
}

void makeSparse(const std::string& path) {
  const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
  if (file < 0)
    return;
  (void)!pwrite(file, "middle", 6, kHole);
  (void)!ftruncate(file, 2 * kHole);
  close(file);
}

void linkToAFile(const std::string& root, const std::string& path, std::mt19937& random) {
  const std::string other = anyOf(entriesOf(root, true), random);
  for (const auto& entry : fs::directory_iterator(other))
    if (fs::is_regular_file(entry.symlink_status()))
      (void)!link(entry.path().c_str(), path.c_str());
}

std::string linkTargetFor(const std::string& path, const std::string& outside,
                          std::mt19937& random) {
  const std::array targets{std::string("../") + oddName(random), outside, outside + "/file",
                           fs::path(path).filename().string(), std::string(2000, 'x')};
  return targets[below(random, targets.size())];
}

void addOddEntry(const std::string& root, const std::string& outside, std::mt19937& random) {
  const std::string path = anyOf(entriesOf(root, true), random) + "/" + oddName(random);
  constexpr std::array<mode_t, 5> kModes{0755, 0700, 0777, 0750, 0711};
  switch (below(random, 14)) {
  case 0:
  case 1:
  case 2:
    (void)!mkdir(path.c_str(), kModes[below(random, kModes.size())]);
    break;
  case 3:
  case 4:
    (void)!symlink(linkTargetFor(path, outside, random).c_str(), path.c_str());
    break;
  case 5:
    (void)!mkfifo(path.c_str(), 0640);
    break;
  case 6:
    (void)!mknod(path.c_str(), S_IFSOCK | 0600, 0);
    break;
  case 7:
    (void)!mknod(path.c_str(), S_IFCHR | 0600, makedev(1, 3)); // refused to ordinary users
    break;
  case 8:
    makeSparse(path);
    break;
  case 9:
    linkToAFile(root, path, random);
    break;
  default:
    writeInPlace(path, random, O_CREAT | O_EXCL);
    if (below(random, 4) == 0)
      (void)!chmod(path.c_str(), 0444);
  }
}

void setAnyTime(const std::string& path, std::mt19937& random) {
  struct stat info {};
  if (lstat(path.c_str(), &info) == 0)
    setTime(path, static_cast<long>(below(random, 2'000'000'000)),
            static_cast<long>(below(random, 1'000'000'000)));
}

void editOddEntry(const std::string& root, const std::string& outside, std::mt19937& random) {
  const std::vector<std::string> entries = entriesOf(root, false);
  if (entries.empty())
    return addOddEntry(root, outside, random);
  const std::string path = anyOf(entries, random);
  const std::string other = anyOf(entries, random);
  switch (below(random, 9)) {
  case 0:
    fs::remove_all(path);
    break;
  case 1:
    writeInPlace(path, random, O_TRUNC); // under all names of the file
    break;
  case 2:
    writeInPlace(path, random, O_APPEND);
    break;
  case 3:
    setAnyTime(path, random);
    break;
  case 4:
    (void)!fchmodat(AT_FDCWD, path.c_str(), 0750, AT_SYMLINK_NOFOLLOW);
    break;
  case 5:
    (void)!rename(path.c_str(),
                  (anyOf(entriesOf(root, true), random) + "/" + oddName(random)).c_str());
    break;
  case 6:
    (void)!renameat2(AT_FDCWD, path.c_str(), AT_FDCWD, other.c_str(), RENAME_EXCHANGE);
    break;
  case 7: // another kind under the same name
    fs::remove_all(path);
    (void)!symlink(outside.c_str(), path.c_str());
    break;
  default:
    addOddEntry(root, outside, random);
  }
}

} // namespace

void growOddTree(const std::string& folder, const std::string& outside, std::mt19937& random,
                 int entries) {
  for (int i = 0; i < entries; ++i)
    addOddEntry(folder, outside, random);
  for (const std::string& path : entriesOf(folder, false))
    setAnyTime(path, random);
}

void editOddTree(const std::string& folder, const std::string& outside, std::mt19937& random,
                 int edits) {
  for (int i = 0; i < edits; ++i)
    editOddEntry(folder, outside, random);
}

TreeSnapshot exactSnapshot(const std::string& root) {
  TreeSnapshot exact = snapshot(root);
  std::map<ino_t, std::string> names;
  for (auto& [path, text] : exact) {
    struct stat info {};
    if (lstat((root + "/" + path).c_str(), &info) != 0 || S_ISDIR(info.st_mode))
      continue;
    text += " device " + std::to_string(info.st_rdev) + " is " +
            names.try_emplace(info.st_ino, path).first->second;
    if (info.st_size >= kHole)
      text += off_t{info.st_blocks} * 512 < info.st_size ? " sparse" : " full";
  }
  return exact;
}

} // namespace vireonix::test
