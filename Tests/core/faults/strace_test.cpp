// The same kills by the kernel's own tracer: they would show a call that faults.cpp does not know.
#include "file_operation.h"

#include "support/faults.h"
#include "support/figures.h"

#include <gtest/gtest.h>

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <string>
#include <string_view>

namespace vireonix::test {
namespace {

// All that change files but opening, of which the tracer cannot tell what it is for.
constexpr std::array kCalls{
    "rename",    "renameat",  "renameat2",       "link",         "linkat",         "symlink",
    "symlinkat", "mkdir",     "mkdirat",         "mknod",        "mknodat",        "unlink",
    "unlinkat",  "rmdir",     "write",           "writev",       "pwrite64",       "pwritev",
    "sendfile",  "splice",    "copy_file_range", "truncate",     "ftruncate",      "fallocate",
    "chmod",     "fchmod",    "fchmodat",        "chown",        "fchown",         "fchownat",
    "lchown",    "utimensat", "utimes",          "futimesat",    "setxattr",       "fsetxattr",
    "fsync",     "fdatasync", "lsetxattr",       "fremovexattr", "sync_file_range"};

bool isTraced(pid_t process) {
  std::ifstream in("/proc/" + std::to_string(process) + "/status");
  constexpr std::string_view kField = "TracerPid:";
  for (std::string line; std::getline(in, line);)
    if (line.starts_with(kField))
      return std::atol(line.c_str() + kField.size()) != 0;
  return false;
}

/// Stops until it is told to go on, runs the operation and ends.
[[noreturn]] void operate(FileOperation& operation) {
  prctl(PR_SET_PTRACER, PR_SET_PTRACER_ANY);
  raise(SIGSTOP);
  _exit(operation.run().ok() ? 0 : 1);
}

pid_t startTracer(pid_t process, const std::string& name, long call) {
  const std::string inject = "inject=?" + name + ":signal=KILL:when=" + std::to_string(call);
  // "?": not every machine has each of these calls.
  const pid_t tracer = fork();
  if (tracer == 0) {
    execlp("strace", "strace", "-qq", "-f", "-o", "/dev/null", "-e", ("trace=?" + name).c_str(),
           "-e", inject.c_str(), "-p", std::to_string(process).c_str(), nullptr);
    _exit(127);
  }
  return tracer;
}

enum class Outcome { Killed, Done, NotTraced };

/// Waits until the process is traced, or the tracer has given up.
bool waitForTracer(pid_t process, pid_t tracer) {
  int ended = 0;
  while (!isTraced(process))
    if (waitpid(tracer, &ended, WNOHANG) != 0)
      return false;
  return true;
}

/// Has the operation killed by the tracer at its N-th call of that name.
Outcome traceAndKill(FileOperation& operation, const std::string& name, long call) {
  const pid_t process = fork();
  if (process == 0)
    operate(operation);
  // A process that is stopped when it is traced makes no call that the tracer does not see.
  int status = 0;
  waitpid(process, &status, WUNTRACED);
  const pid_t tracer = startTracer(process, name, call);
  const bool traced = waitForTracer(process, tracer);
  kill(process, traced ? SIGCONT : SIGKILL);
  waitpid(process, &status, 0);
  if (!traced)
    return Outcome::NotTraced;
  waitpid(tracer, nullptr, 0);
  return WIFSIGNALED(status) ? Outcome::Killed : Outcome::Done;
}

/// How many calls, but those that open, this program's own counting knows.
long countedCalls(FileOperation& operation) {
  long others = 0;
  for (long call = 1;; ++call) {
    operation.setUp();
    const Experiment experiment =
        runWithFault({.kind = FaultKind::Kill, .at = call}, [&] { return operation.run().error; });
    if (!experiment.killed)
      return others;
    others += experiment.hit == "open" || experiment.hit == "clone" ? 0 : 1;
  }
}

/// Kills the operation at each of its calls of that name; answers how many there were, or -1
/// without a tracer.
long killAtEvery(FileOperation& operation, const std::string& name) {
  for (long call = 1;; ++call) {
    SCOPED_TRACE(name + " " + std::to_string(call));
    operation.setUp();
    const Outcome outcome = traceAndKill(operation, name, call);
    if (outcome == Outcome::NotTraced)
      return -1;
    EXPECT_EQ(operation.wrongWhenCutOff(), "");
    operation.startAgain();
    EXPECT_EQ(operation.leftBeside(), "");
    if (outcome == Outcome::Done || testing::Test::HasFailure())
      return call - 1;
  }
}

TEST(KilledByTheTracer, EveryOperationLeavesTheOldStateOrTheNewOneAndNoCallIsOverlooked) {
  long all = 0;
  for (const auto& operation : allFileOperations()) {
    SCOPED_TRACE(operation->name());
    if (!isLongRun() && operation->name() != "restore")
      continue;
    long kills = 0;
    for (const char* const name : kCalls) {
      const long here = killAtEvery(*operation, name);
      if (here < 0 && !isLongRun())
        GTEST_SKIP() << "strace is missing, or may not trace here; the other kills do not need it";
      ASSERT_GE(here, 0) << "strace is missing, or may not trace here";
      kills += here;
    }
    EXPECT_EQ(kills, countedCalls(*operation)) << "there are calls that faults.cpp misses";
    all += kills;
  }
  reportFigure("kill.traced", std::to_string(all) + " instants, losses: none");
}

} // namespace
} // namespace vireonix::test
