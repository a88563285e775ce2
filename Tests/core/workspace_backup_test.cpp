#include "workspace_backup_fixture.h"

#include "support/sanitizer.h"

#include <filesystem>
#include <random>

namespace vireonix::core {
namespace {

namespace fs = std::filesystem;
using namespace test;

TEST_F(BackupOfWorkspace, PreparingMakesAnEmptyFolderWhateverWasThere) {
  folder.write("tmp/vireonix/old", "old");
  ASSERT_TRUE(session.prepare(backup).ok());
  EXPECT_TRUE(isFolder(backup));
  EXPECT_TRUE(listTree(backup).empty());
  fs::remove_all(folder.at("tmp"));
  EXPECT_TRUE(session.prepare(backup + "/").ok());
  EXPECT_TRUE(isFolder(backup));
  EXPECT_TRUE(session.remove(backup + "/").ok());
  folder.write("tmp/vireonix", "a file");
  EXPECT_TRUE(session.prepare(backup).ok());
  EXPECT_TRUE(isFolder(backup));
}

TEST_F(BackupOfWorkspace, TheBackupIsTheWholeWorkspaceAndItsMarkStandsBeside) {
  begin();
  expectRestored(backup);
  expectRestored(workspace);
  EXPECT_TRUE(exists(backup + "-owner"));
}

TEST_F(BackupOfWorkspace, RevertingBringsBackEverythingAsItWas) {
  begin();
  edit();
  revert();
  expectReverted();
}

TEST_F(BackupOfWorkspace, RevertingWithoutAnyEditChangesNothing) {
  begin();
  revert();
  expectReverted();
}

TEST_F(BackupOfWorkspace, ApplyingRemovesTheBackupOnly) {
  begin();
  edit();
  EXPECT_TRUE(session.remove(backup).ok());
  EXPECT_EQ(fileBytes(workspace + "/picture.jpg"), "picture");
  EXPECT_EQ(listTree(folder.at("tmp")), Names{});
}

TEST_F(BackupOfWorkspace, WithoutABackupTheWorkspaceStaysAsItIs) {
  begin();
  edit();
  const TreeSnapshot edited = snapshot(workspace);
  fs::remove_all(backup);
  revert();
  EXPECT_EQ(difference(edited, snapshot(workspace)), "");
  EXPECT_TRUE(session.take(workspace, backup).ok());
  EXPECT_FALSE(exists(backup));
}

TEST_F(BackupOfWorkspace, AMissingWorkspaceGivesAnEmptyBackupAndIsEmptyAfterwards) {
  fs::remove_all(workspace);
  begin();
  EXPECT_TRUE(listTree(backup).empty());
  folder.write("home/workspace/file", "made meanwhile");
  revert();
  EXPECT_TRUE(isFolder(workspace));
  EXPECT_TRUE(listTree(workspace).empty());
}

TEST_F(BackupOfWorkspace, AFolderMadeByHandIsUsedAsBackup) {
  folder.write("tmp/vireonix/sub/file", "by hand");
  const TreeSnapshot byHand = snapshot(backup);
  revert();
  EXPECT_EQ(difference(byHand, snapshot(workspace)), "");
  EXPECT_FALSE(exists(backup));
}

TEST_F(BackupOfWorkspace, RandomEditsAreRevertedExactlyAndNothingOutsideIsTouched) {
  folder.write("home/outside/file", "outside");
  const TreeSnapshot outside = snapshot(folder.at("home/outside"));
  for (int seed = 0; seed < rounds(30); ++seed) {
    SCOPED_TRACE(seed);
    std::mt19937 random(static_cast<unsigned>(seed));
    growTree(workspace, random, 25);
    original = snapshot(workspace);
    const bool isFar = seed % 3 == 0;
    backup = isFar ? farFrom(folder) : folder.at("tmp/vireonix");
    begin();
    editTree(workspace, random, 25);
    fs::create_directory_symlink("../outside", workspace + "/leading out");
    revert();
    expectRestored(workspace);
    EXPECT_EQ(difference(outside, snapshot(folder.at("home/outside"))), "");
    EXPECT_FALSE(exists(backup));
  }
}

} // namespace
} // namespace vireonix::core
