#include "command.h"

#include <sys/wait.h>
#include <unistd.h>

#include <stdexcept>
#include <string>

namespace vireonix::bench {

void run(const std::vector<const char*>& words) {
  const pid_t process = fork();
  if (process == 0) {
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (const char* word : words)
      arguments.push_back(const_cast<char*>(word));
    arguments.push_back(nullptr);
    execvp(arguments.front(), arguments.data());
    _exit(127);
  }
  int status = 0;
  if (waitpid(process, &status, 0) != process || status != 0)
    throw std::runtime_error(std::string(words.front()) + " failed");
}

} // namespace vireonix::bench
