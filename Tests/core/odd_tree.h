// Trees of every kind of entry that a workspace may be given, made and edited at random.
#pragma once

#include "tree_snapshot.h"

#include <random>
#include <string>

namespace vireonix::test {

/// Adds entries below the folder: files, empty, sparse and hard linked ones, folders, links that
/// lead inside, outside, nowhere and to themselves, FIFOs, sockets, devices where the user may make
/// them; with names of 255 bytes and names that are not UTF-8.
void growOddTree(const std::string& folder, const std::string& outside, std::mt19937& random,
                 int entries);

/// Writes, appends, removes, renames, exchanges, replaces and changes entries. No link is followed.
void editOddTree(const std::string& folder, const std::string& outside, std::mt19937& random,
                 int edits);

/// A snapshot with, besides, which names are one file, and which device an entry is.
TreeSnapshot exactSnapshot(const std::string& root);

} // namespace vireonix::test
