// What a tree looks like to somebody who compares two of them.
#pragma once

#include <string>

namespace vireonix::test {

/// One line for each entry below `root` and one for `root` itself, in path order: kind, mode,
/// modification time in nanoseconds and, by kind, link target or size and content.
std::string treeFingerprint(const std::string& root);

} // namespace vireonix::test
