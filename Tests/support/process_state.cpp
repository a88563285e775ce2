#include "support/process_state.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <ostream>
#include <string>

namespace fs = std::filesystem;

namespace vireonix::test {
namespace {

std::size_t entriesOf(const char* folder) {
  return static_cast<std::size_t>(
      std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
}

std::size_t childProcesses() {
  std::size_t count = 0;
  for (const auto& task : fs::directory_iterator("/proc/self/task")) {
    std::ifstream in(task.path() / "children");
    count += static_cast<std::size_t>(std::distance(std::istream_iterator<std::string>(in),
                                                    std::istream_iterator<std::string>()));
  }
  return count;
}

} // namespace

ProcessState processState() {
  return {entriesOf("/proc/self/fd"), entriesOf("/proc/self/task"), childProcesses()};
}

std::ostream& operator<<(std::ostream& out, const ProcessState& state) {
  return out << state.descriptors << " descriptors, " << state.threads << " threads, "
             << state.children << " child processes";
}

} // namespace vireonix::test
