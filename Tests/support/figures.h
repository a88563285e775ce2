// What a test counted, in a line that Tools/shell/reliability collects.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <iostream>
#include <string_view>

namespace vireonix::test {

/// Whether the tests with faults are to try everything that they know, which takes minutes.
inline bool isLongRun() {
  return std::getenv("VIREONIX_LONG_TESTS") != nullptr;
}

/// Prints the figure of a test without failures under the key of its row in docs/reliability.md.
inline void reportFigure(std::string_view key, std::string_view text) {
  if (!testing::Test::HasFailure())
    std::cout << "FIGURE " << key << ": " << text << '\n';
}

} // namespace vireonix::test
