// A workspace in a folder of its own, and the session that keeps a backup of it.
#pragma once

#include "Core/workspace_backup.h"

#include "support/temporary_folder.h"
#include "tree_snapshot.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace vireonix::test {

/// The names of a tree's entries, in order.
using Names = std::vector<std::string>;

/// "home/workspace" holds a small tree of every kind of entry; "tmp" is empty and takes the backup.
class BackupOfWorkspace : public testing::Test {
protected:
  BackupOfWorkspace();

  /// Prepares and takes the backup.
  void begin();
  /// Changes, adds and removes entries of the workspace.
  void edit();
  /// Restores the workspace from the backup.
  void revert();
  /// Expects at the path the tree that the workspace was at first.
  void expectRestored(const std::string& where);
  /// Expects the workspace as at first, and nothing else left of the session.
  void expectReverted();

  TemporaryFolder folder;
  std::string workspace = folder.at("home/workspace");
  std::string backup = folder.at("tmp/vireonix");
  core::WorkspaceBackup session;
  TreeSnapshot original;
};

} // namespace vireonix::test
