// How a fuzz target says that a promise is broken.
#pragma once

#include <cstdio>
#include <cstdlib>

namespace vireonix::fuzz {

/// Ends the program with a line that names the broken promise; the fuzzer keeps the input.
inline void require(bool holds, const char* promise) {
  if (holds)
    return;
  std::fprintf(stderr, "broken: %s\n", promise);
  std::abort();
}

} // namespace vireonix::fuzz
