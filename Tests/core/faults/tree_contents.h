// Comparing trees of which one may have been caught in the middle of a change.
#pragma once

#include <map>
#include <set>
#include <string>

namespace vireonix::test {

/// Every entry below a folder: its kind and, but for folders, its bytes or target.
using Contents = std::map<std::string, std::string>;

Contents contentsOf(const std::string& root);

/// Without the temporary entries that a killed process leaves until the next start.
Contents withoutTemporaries(const Contents& contents);

/// What makes `now` something else than a mixture of two trees, in which no entry that both have is
/// missing; empty when it is one.
std::string lossAgainst(const Contents& first, const Contents& second, const Contents& now);

} // namespace vireonix::test
