// A benchmark that measures each thing in a process of its own: in this program, started again with
// the name of what it is to measure and the folder to measure it with.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace vireonix::bench {

/// The numbers that a new process of this program measures; ends this process with a message when
/// there are none.
std::vector<double> measuredInOwnCopy(const std::string& what, const std::filesystem::path& folder);

/// In such a process: calls `measure` with what it is asked for, prints the numbers and ends the
/// process. In any other process: returns at once. Call it first in main().
void answerAsCopy(int argc, char** argv,
                  const std::function<std::vector<double>(const std::string& what,
                                                          const std::string& folder)>& measure);

} // namespace vireonix::bench
