// Commands that a benchmark is measured beside, or needs.
#pragma once

#include <vector>

namespace vireonix::bench {

/// Runs a command, found along PATH, to its end. Throws std::runtime_error when it fails.
void run(const std::vector<const char*>& words);

} // namespace vireonix::bench
