// What the tests of folder trees share: making entries, and comparing whole trees exactly.
#pragma once

#include "support/temporary_folder.h"

#include <chrono>
#include <functional>
#include <map>
#include <random>
#include <string>
#include <string_view>

namespace vireonix::test {

/// Everything below a folder and, under the name ".", the folder itself: for each entry its kind,
/// mode, modification time to the nanosecond, and content or target. Links are not followed.
using TreeSnapshot = std::map<std::string, std::string>;

TreeSnapshot snapshot(const std::string& root);

/// The names that the two do not have alike, for a message.
std::string difference(const TreeSnapshot& before, const TreeSnapshot& after);

mode_t modeOf(const std::string& path);
bool isLink(const std::string& path);
std::string linkTarget(const std::string& path);
/// Sets the modification time to a moment in the past, with nanoseconds.
void setTime(const std::string& path, long seconds, long nanoseconds = 0);

/// A path that is not taken, on another file system than the folders of tests usually are.
std::string farFrom(const TemporaryFolder& folder);

/// Runs the body in a process of its own as a user without privileges; a failed expectation in it
/// fails the test.
void asOrdinaryUser(const std::function<void()>& body);

/// Runs the body in a process of its own with a small file system of `bytes` mounted at `folder`.
void withSmallDisk(const std::string& folder, size_t bytes, const std::function<void()>& body);

/// Makes the mounted file system at the folder read-only, or writable again. For bodies of
/// withSmallDisk.
void setReadOnly(const std::string& folder, bool isReadOnly);

/// Makes the system kill this process, with no chance to clean up, after the given time.
void killSelfAfter(std::chrono::nanoseconds delay);

/// Runs the body in a process of its own.
void inChild(const std::function<void()>& body);

/// Fills the folder with files, folders, links and FIFOs at random.
void growTree(const std::string& folder, std::mt19937& random, int entries);
/// Changes, adds, removes and renames entries of the tree at random.
void editTree(const std::string& folder, std::mt19937& random, int edits);

} // namespace vireonix::test
