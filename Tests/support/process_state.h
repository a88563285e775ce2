// What this process holds that a leak would make more of.
#pragma once

#include <cstddef>
#include <iosfwd>

namespace vireonix::test {

struct ProcessState {
  std::size_t descriptors = 0;
  std::size_t threads = 0;
  std::size_t children = 0;

  bool operator==(const ProcessState&) const = default;
};

/// Counted from the process file system now.
ProcessState processState();

std::ostream& operator<<(std::ostream& out, const ProcessState& state);

} // namespace vireonix::test
