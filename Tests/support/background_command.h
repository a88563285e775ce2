// A shell command that runs beside the test: how a test plays the user while its own thread sits in
// a modal session.
#pragma once

#include <string>
#include <sys/types.h>

namespace vireonix::test {

/// Starts when made; the destructor ends the command if it still runs.
class BackgroundCommand {
public:
  explicit BackgroundCommand(const std::string& script);
  ~BackgroundCommand();
  BackgroundCommand(const BackgroundCommand&) = delete;
  BackgroundCommand& operator=(const BackgroundCommand&) = delete;

private:
  pid_t child_ = 0;
};

} // namespace vireonix::test
