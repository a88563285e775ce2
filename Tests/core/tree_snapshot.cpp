#include "tree_snapshot.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <vector>

namespace vireonix::test {

namespace fs = std::filesystem;

namespace {

constexpr uid_t kOrdinaryUser = 65534;

struct stat lstatOf(const std::string& path) {
  struct stat info {};
  EXPECT_EQ(lstat(path.c_str(), &info), 0) << path << ": " << std::strerror(errno);
  return info;
}

std::string describe(const std::string& path) {
  const struct stat info = lstatOf(path);
  std::array<char, 96> text{};
  const int length =
      std::snprintf(text.data(), text.size(), "%o %lld.%09ld ", info.st_mode,
                    static_cast<long long>(info.st_mtim.tv_sec), info.st_mtim.tv_nsec);
  std::string description(text.data(), static_cast<size_t>(length));
  if (S_ISREG(info.st_mode))
    description += fileBytes(path);
  if (S_ISLNK(info.st_mode))
    description += linkTarget(path);
  return description;
}

std::vector<std::string> pathsBelow(const std::string& folder) {
  std::vector<std::string> paths;
  for (const auto& entry : fs::recursive_directory_iterator(folder))
    paths.push_back(entry.path());
  return paths;
}

size_t below(std::mt19937& random, size_t bound) {
  return std::uniform_int_distribution<size_t>(0, bound - 1)(random);
}

std::string randomBytes(std::mt19937& random) {
  std::string bytes(below(random, 8) == 0 ? below(random, 100'000) : below(random, 300), '\0');
  for (char& byte : bytes)
    byte = static_cast<char>(random());
  return bytes;
}

std::string randomName(std::mt19937& random) {
  constexpr std::array names{"a",       ".hidden",   "with space", "\xff\xfe not text",
                             "Ünïcode", "line\nend", "-dash",      "*"};
  return std::string(names[below(random, names.size())]) + std::to_string(below(random, 40));
}

void addEntry(const std::string& folder, std::mt19937& random) {
  const std::string path = folder + "/" + randomName(random);
  struct stat info {};
  if (lstat(path.c_str(), &info) == 0)
    return;
  switch (below(random, 10)) {
  case 0:
  case 1:
  case 2:
    fs::create_directory(path);
    break;
  case 3:
    fs::create_symlink("../" + randomName(random), path);
    break;
  case 4:
    fs::create_symlink("/tmp", path);
    break;
  case 5:
    EXPECT_EQ(mkfifo(path.c_str(), 0600), 0);
    break;
  default:
    std::ofstream(path, std::ios::binary) << randomBytes(random);
    constexpr std::array<mode_t, 5> modes{0644, 0600, 0755, 0444, 0777};
    EXPECT_EQ(chmod(path.c_str(), modes[below(random, modes.size())]), 0);
  }
}

std::string randomFolder(const std::string& root, std::mt19937& random) {
  std::vector<std::string> folders{root};
  for (const std::string& path : pathsBelow(root))
    if (S_ISDIR(lstatOf(path).st_mode))
      folders.push_back(path);
  return folders[below(random, folders.size())];
}

void changeEntry(const std::string& path, std::mt19937& random) {
  const struct stat info = lstatOf(path);
  switch (below(random, 5)) {
  case 0:
    fs::remove_all(path);
    break;
  case 1:
    if (!S_ISLNK(info.st_mode)) {
      EXPECT_EQ(chmod(path.c_str(), S_ISDIR(info.st_mode) ? 0700 : 0640), 0);
    }
    break;
  case 2:
    setTime(path, static_cast<long>(below(random, 1'000'000'000)), 123);
    break;
  case 3: // the same content and time under another kind
    fs::remove_all(path);
    fs::create_directory(path);
    break;
  default:
    if (S_ISREG(info.st_mode))
      std::ofstream(path, std::ios::binary) << randomBytes(random);
  }
}

void finish(int exitCode) {
  std::fflush(nullptr);
  _exit(exitCode);
}

} // namespace

TreeSnapshot snapshot(const std::string& root) {
  TreeSnapshot result{{".", describe(root)}};
  for (const std::string& path : pathsBelow(root))
    result[path.substr(root.size() + 1)] = describe(path);
  return result;
}

std::string difference(const TreeSnapshot& before, const TreeSnapshot& after) {
  std::string text;
  for (const auto& [name, description] : before)
    if (const auto other = after.find(name); other == after.end())
      text += "missing: " + name + "\n";
    else if (other->second != description)
      text += "differs: " + name + "\n  was " + description.substr(0, 60) + "\n  is  " +
              other->second.substr(0, 60) + "\n";
  for (const auto& entry : after)
    if (!before.contains(entry.first))
      text += "added: " + entry.first + "\n";
  return text;
}

mode_t modeOf(const std::string& path) {
  return lstatOf(path).st_mode & 07777;
}

bool isLink(const std::string& path) {
  struct stat info {};
  return lstat(path.c_str(), &info) == 0 && S_ISLNK(info.st_mode);
}

std::string linkTarget(const std::string& path) {
  return fs::read_symlink(path);
}

void setTime(const std::string& path, long seconds, long nanoseconds) {
  const std::array<timespec, 2> times{timespec{seconds, nanoseconds},
                                      timespec{seconds, nanoseconds}};
  EXPECT_EQ(utimensat(AT_FDCWD, path.c_str(), times.data(), AT_SYMLINK_NOFOLLOW), 0);
}

std::string farFrom(const TemporaryFolder& folder) {
  return "/dev/shm/" + folder.path().filename().string() + "-far";
}

void inChild(const std::function<void()>& body) {
  std::fflush(nullptr);
  const pid_t child = fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    body();
    finish(testing::Test::HasFailure() ? 1 : 0);
  }
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0)
      << "the child process failed, status " << status;
}

void asOrdinaryUser(const std::function<void()>& body) {
  inChild([&] {
    if (geteuid() == 0) {
      ASSERT_EQ(setgid(kOrdinaryUser), 0);
      ASSERT_EQ(setuid(kOrdinaryUser), 0);
    }
    body();
  });
}

namespace {

/// Keeps the user's number in a name space of his own: without it he can make no files there.
void mapUser(uid_t user, gid_t group) {
  const auto map = [](const char* file, const std::string& text) { std::ofstream(file) << text; };
  map("/proc/self/setgroups", "deny");
  map("/proc/self/uid_map", std::to_string(user) + " " + std::to_string(user) + " 1");
  map("/proc/self/gid_map", std::to_string(group) + " " + std::to_string(group) + " 1");
}

} // namespace

void setReadOnly(const std::string& folder, bool isReadOnly) {
  const unsigned long flags = MS_REMOUNT | (isReadOnly ? MS_RDONLY : 0UL);
  ASSERT_EQ(mount("none", folder.c_str(), nullptr, flags, nullptr), 0) << std::strerror(errno);
}

void withSmallDisk(const std::string& folder, size_t bytes, const std::function<void()>& body) {
  inChild([&] {
    const bool isRoot = geteuid() == 0;
    const uid_t user = geteuid();
    const gid_t group = getegid();
    ASSERT_EQ(unshare(isRoot ? CLONE_NEWNS : CLONE_NEWNS | CLONE_NEWUSER), 0)
        << "no mount name space: " << std::strerror(errno);
    if (!isRoot)
      mapUser(user, group);
    ASSERT_EQ(mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr), 0);
    ASSERT_EQ(mount("none", folder.c_str(), "tmpfs", 0, ("size=" + std::to_string(bytes)).c_str()),
              0)
        << "no file system could be mounted: " << std::strerror(errno);
    body();
  });
}

void killSelfAfter(std::chrono::nanoseconds delay) {
  sigevent event{};
  event.sigev_notify = SIGEV_SIGNAL;
  event.sigev_signo = SIGKILL;
  timer_t timer{};
  if (timer_create(CLOCK_MONOTONIC, &event, &timer) != 0)
    _exit(2);
  itimerspec when{};
  when.it_value.tv_sec = delay.count() / 1'000'000'000;
  when.it_value.tv_nsec = delay.count() % 1'000'000'000;
  if (timer_settime(timer, 0, &when, nullptr) != 0)
    _exit(2);
}

void growTree(const std::string& folder, std::mt19937& random, int entries) {
  for (int i = 0; i < entries; ++i)
    addEntry(randomFolder(folder, random), random);
  for (const std::string& path : pathsBelow(folder))
    setTime(path, static_cast<long>(below(random, 2'000'000'000)),
            static_cast<long>(below(random, 1'000'000'000)));
}

void editTree(const std::string& folder, std::mt19937& random, int edits) {
  for (int i = 0; i < edits; ++i) {
    const std::vector<std::string> paths = pathsBelow(folder);
    if (paths.empty() || below(random, 3) == 0)
      addEntry(randomFolder(folder, random), random);
    else
      changeEntry(paths[below(random, paths.size())], random);
  }
}

} // namespace vireonix::test
