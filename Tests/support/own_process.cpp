#include "support/own_process.h"

#include <cstdio>
#include <sys/wait.h>
#include <unistd.h>

namespace vireonix::test {

testing::AssertionResult passesInOwnProcess(const std::function<void()>& body) {
  std::fflush(nullptr);
  const pid_t child = fork();
  if (child == 0) {
    body();
    std::fflush(nullptr);
    _exit(testing::Test::HasFailure() ? 1 : 0);
  }
  int status = 0;
  if (child < 0 || waitpid(child, &status, 0) != child)
    return testing::AssertionFailure() << "no child process could be run";
  if (WIFEXITED(status) && WEXITSTATUS(status) == 0)
    return testing::AssertionSuccess();
  return testing::AssertionFailure() << "the child process ended with status " << status;
}

} // namespace vireonix::test
