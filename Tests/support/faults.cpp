#include "support/faults.h"

#include <fcntl.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <iterator>
#include <new>

namespace vireonix::test {

namespace {

/// What the process of an experiment and its parent share.
struct Shared {
  std::atomic<long> calls;
  std::atomic<bool> isHit;
  std::array<char, 32> hit;
  int answer;
  long descriptors;
  bool isDone;
};

Shared* shared = nullptr;
Fault armed;
std::atomic<bool> isArmed{false};

void noteHit(const char* name) {
  if (shared->isHit.exchange(true))
    return;
  std::strncpy(shared->hit.data(), name, shared->hit.size() - 1);
}

enum class Verdict { Call, Fail, Halve };

/// Counts the call and tells what is to become of it.
Verdict judge(const char* name, bool changes, bool writes = false) {
  if (!isArmed || (!changes && !armed.withReading))
    return Verdict::Call;
  const long number = ++shared->calls;
  if (armed.kind == FaultKind::None || number < armed.at ||
      (number > armed.at && armed.kind != FaultKind::ErrorsOn))
    return Verdict::Call;
  if (armed.kind == FaultKind::ShortWrite && !writes)
    return Verdict::Call;
  noteHit(name);
  if (armed.kind == FaultKind::Kill)
    kill(getpid(), SIGKILL);
  if (armed.kind == FaultKind::ShortWrite)
    return Verdict::Halve;
  errno = armed.error;
  return Verdict::Fail;
}

template <typename... Arguments> long change(const char* name, long number, Arguments... values) {
  return judge(name, true) == Verdict::Call ? syscall(number, values...) : -1;
}

template <typename... Arguments> long look(const char* name, long number, Arguments... values) {
  return judge(name, false) == Verdict::Call ? syscall(number, values...) : -1;
}

size_t halved(Verdict verdict, size_t length) {
  return verdict == Verdict::Halve && length > 1 ? length / 2 : length;
}

long countDescriptors() {
  namespace fs = std::filesystem;
  return std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator());
}

[[noreturn]] void experiment(const Fault& fault, const std::function<int()>& body) {
  const long before = countDescriptors();
  armed = fault;
  isArmed = true;
  const int answer = body();
  isArmed = false;
  shared->answer = answer;
  shared->descriptors = countDescriptors() - before;
  shared->isDone = true;
  _exit(0);
}

Experiment outcome(const Fault& fault, int status) {
  Experiment result;
  result.killed = fault.kind == FaultKind::Kill && WIFSIGNALED(status) &&
                  WTERMSIG(status) == SIGKILL && shared->isHit;
  if (!result.killed && !shared->isDone)
    result.crash = WIFSIGNALED(status) ? "signal " + std::to_string(WTERMSIG(status))
                                       : "exit " + std::to_string(WEXITSTATUS(status));
  result.calls = shared->calls;
  result.hit = shared->hit.data();
  result.answer = shared->answer;
  result.descriptors = shared->descriptors;
  return result;
}

} // namespace

void endFaults() {
  isArmed = false;
}

Experiment runWithFault(const Fault& fault, const std::function<int()>& body) {
  if (shared == nullptr)
    shared = static_cast<Shared*>(
        mmap(nullptr, sizeof(Shared), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
  new (shared) Shared{};
  std::fflush(nullptr);
  const pid_t process = fork();
  if (process == 0)
    experiment(fault, body);
  int status = 0;
  if (process < 0 || waitpid(process, &status, 0) != process)
    return {.crash = "no process"};
  return outcome(fault, status);
}

} // namespace vireonix::test

// The C library's calls, in the order of its headers. What they do is asked from the kernel.
using vireonix::test::change;
using vireonix::test::halved;
using vireonix::test::judge;
using vireonix::test::look;
using vireonix::test::Verdict;

namespace {

int openWith(int folder, const char* path, int flags, mode_t mode) {
  const bool changes = (flags & (O_CREAT | O_TRUNC)) != 0;
  if (judge("open", changes) != Verdict::Call)
    return -1;
  return static_cast<int>(syscall(SYS_openat, folder, path, flags, mode));
}

mode_t modeIn(int flags, va_list arguments) {
  return (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
}

} // namespace

extern "C" {

int open(const char* path, int flags, ...) {
  va_list arguments;
  va_start(arguments, flags);
  const mode_t mode = modeIn(flags, arguments);
  va_end(arguments);
  return openWith(AT_FDCWD, path, flags, mode);
}

int openat(int folder, const char* path, int flags, ...) {
  va_list arguments;
  va_start(arguments, flags);
  const mode_t mode = modeIn(flags, arguments);
  va_end(arguments);
  return openWith(folder, path, flags, mode);
}

int mkdir(const char* path, mode_t mode) noexcept {
  return static_cast<int>(change("mkdir", SYS_mkdirat, AT_FDCWD, path, mode));
}

int mkdirat(int folder, const char* path, mode_t mode) noexcept {
  return static_cast<int>(change("mkdir", SYS_mkdirat, folder, path, mode));
}

int mknodat(int folder, const char* path, mode_t mode, dev_t device) noexcept {
  return static_cast<int>(change("mknod", SYS_mknodat, folder, path, mode, device));
}

int chmod(const char* path, mode_t mode) noexcept {
  return static_cast<int>(change("chmod", SYS_fchmodat, AT_FDCWD, path, mode));
}

// The kernel's call knows no flags: what is no link is changed through the process file system.
int fchmodat(int folder, const char* path, mode_t mode, int flags) noexcept {
  if (judge("chmod", true) != Verdict::Call)
    return -1;
  if ((flags & AT_SYMLINK_NOFOLLOW) == 0)
    return static_cast<int>(syscall(SYS_fchmodat, folder, path, mode));
  const long entry = syscall(SYS_openat, folder, path, O_PATH | O_NOFOLLOW | O_CLOEXEC, 0);
  if (entry < 0)
    return -1;
  struct stat info {};
  const bool isLink =
      syscall(SYS_newfstatat, entry, "", &info, AT_EMPTY_PATH) != 0 || S_ISLNK(info.st_mode);
  const std::string open = "/proc/self/fd/" + std::to_string(entry);
  const long changed = isLink ? -1 : syscall(SYS_fchmodat, AT_FDCWD, open.c_str(), mode);
  const int error = isLink ? EOPNOTSUPP : errno;
  syscall(SYS_close, entry);
  errno = error;
  return static_cast<int>(changed);
}

int fstatat(int folder, const char* path, struct stat* info, int flags) noexcept {
  return static_cast<int>(look("stat", SYS_newfstatat, folder, path, info, flags));
}

int stat(const char* path, struct stat* info) noexcept {
  return static_cast<int>(look("stat", SYS_newfstatat, AT_FDCWD, path, info, 0));
}

int lstat(const char* path, struct stat* info) noexcept {
  return static_cast<int>(look("stat", SYS_newfstatat, AT_FDCWD, path, info, AT_SYMLINK_NOFOLLOW));
}

int fstat(int file, struct stat* info) noexcept {
  return static_cast<int>(look("stat", SYS_newfstatat, file, "", info, AT_EMPTY_PATH));
}

int fchmod(int file, mode_t mode) noexcept {
  return static_cast<int>(change("chmod", SYS_fchmod, file, mode));
}

int futimens(int file, const timespec times[2]) noexcept {
  return static_cast<int>(change("utimens", SYS_utimensat, file, nullptr, times, 0));
}

int utimensat(int folder, const char* path, const timespec times[2], int flags) noexcept {
  return static_cast<int>(change("utimens", SYS_utimensat, folder, path, times, flags));
}

ssize_t write(int file, const void* bytes, size_t length) {
  const Verdict verdict = judge("write", true, true);
  return verdict == Verdict::Fail ? -1 : syscall(SYS_write, file, bytes, halved(verdict, length));
}

ssize_t pwrite(int file, const void* bytes, size_t length, off_t offset) {
  const Verdict verdict = judge("write", true, true);
  return verdict == Verdict::Fail
             ? -1
             : syscall(SYS_pwrite64, file, bytes, halved(verdict, length), offset);
}

ssize_t copy_file_range(int in, off64_t* inAt, int out, off64_t* outAt, size_t length,
                        unsigned flags) {
  const Verdict verdict = judge("copy", true, true);
  return verdict == Verdict::Fail
             ? -1
             : syscall(SYS_copy_file_range, in, inAt, out, outAt, halved(verdict, length), flags);
}

ssize_t read(int file, void* bytes, size_t length) {
  return look("read", SYS_read, file, bytes, length);
}

ssize_t pread(int file, void* bytes, size_t length, off_t offset) {
  return look("read", SYS_pread64, file, bytes, length, offset);
}

int fchown(int file, uid_t user, gid_t group) noexcept {
  return static_cast<int>(change("chown", SYS_fchown, file, user, group));
}

int fchownat(int folder, const char* path, uid_t user, gid_t group, int flags) noexcept {
  return static_cast<int>(change("chown", SYS_fchownat, folder, path, user, group, flags));
}

int link(const char* from, const char* to) noexcept {
  return static_cast<int>(change("link", SYS_linkat, AT_FDCWD, from, AT_FDCWD, to, 0));
}

int linkat(int fromFolder, const char* from, int toFolder, const char* to, int flags) noexcept {
  return static_cast<int>(change("link", SYS_linkat, fromFolder, from, toFolder, to, flags));
}

int symlink(const char* target, const char* path) noexcept {
  return static_cast<int>(change("symlink", SYS_symlinkat, target, AT_FDCWD, path));
}

int symlinkat(const char* target, int folder, const char* path) noexcept {
  return static_cast<int>(change("symlink", SYS_symlinkat, target, folder, path));
}

int unlink(const char* path) noexcept {
  return static_cast<int>(change("unlink", SYS_unlinkat, AT_FDCWD, path, 0));
}

int unlinkat(int folder, const char* path, int flags) noexcept {
  return static_cast<int>(change("unlink", SYS_unlinkat, folder, path, flags));
}

int rmdir(const char* path) noexcept {
  return static_cast<int>(change("unlink", SYS_unlinkat, AT_FDCWD, path, AT_REMOVEDIR));
}

int rename(const char* from, const char* to) noexcept {
  return static_cast<int>(change("rename", SYS_renameat2, AT_FDCWD, from, AT_FDCWD, to, 0));
}

int renameat(int fromFolder, const char* from, int toFolder, const char* to) noexcept {
  return static_cast<int>(change("rename", SYS_renameat2, fromFolder, from, toFolder, to, 0));
}

int renameat2(int fromFolder, const char* from, int toFolder, const char* to,
              unsigned flags) noexcept {
  if ((flags & RENAME_EXCHANGE) != 0 && vireonix::test::isArmed &&
      vireonix::test::armed.withoutExchange) {
    errno = EINVAL;
    return -1;
  }
  return static_cast<int>(change("rename", SYS_renameat2, fromFolder, from, toFolder, to, flags));
}

int remove(const char* path) noexcept {
  if (judge("unlink", true) != Verdict::Call)
    return -1;
  const long removed = syscall(SYS_unlinkat, AT_FDCWD, path, 0);
  return static_cast<int>(removed == 0 || errno != EISDIR
                              ? removed
                              : syscall(SYS_unlinkat, AT_FDCWD, path, AT_REMOVEDIR));
}

int fsync(int file) {
  return static_cast<int>(change("sync", SYS_fsync, file));
}

int ftruncate(int file, off_t length) noexcept {
  return static_cast<int>(change("truncate", SYS_ftruncate, file, length));
}

int fsetxattr(int file, const char* name, const void* value, size_t size, int flags) noexcept {
  return static_cast<int>(change("setxattr", SYS_fsetxattr, file, name, value, size, flags));
}

ssize_t readlinkat(int folder, const char* path, char* target, size_t size) noexcept {
  return look("readlink", SYS_readlinkat, folder, path, target, size);
}

int ioctl(int file, unsigned long request, ...) noexcept {
  va_list arguments;
  va_start(arguments, request);
  void* const argument = va_arg(arguments, void*);
  va_end(arguments);
  return static_cast<int>(request == FICLONE ? change("clone", SYS_ioctl, file, request, argument)
                                             : syscall(SYS_ioctl, file, request, argument));
}

int flock(int file, int operation) noexcept {
  return static_cast<int>(look("flock", SYS_flock, file, operation));
}

} // extern "C"
