#include "support/background_command.h"

#include <array>
#include <csignal>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vireonix::test {

BackgroundCommand::BackgroundCommand(const std::string& script) {
  std::string text = script;
  std::array<char*, 4> arguments = {const_cast<char*>("bash"), const_cast<char*>("-c"), text.data(),
                                    nullptr};
  posix_spawnattr_t attributes;
  posix_spawnattr_init(&attributes);
  posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP);
  if (posix_spawnp(&child_, "bash", nullptr, &attributes, arguments.data(), environ) != 0)
    child_ = 0;
  posix_spawnattr_destroy(&attributes);
}

BackgroundCommand::~BackgroundCommand() {
  if (child_ == 0)
    return;
  kill(-child_, SIGTERM);
  waitpid(child_, nullptr, 0);
}

} // namespace vireonix::test
