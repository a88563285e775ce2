#include "workspace_backup_fixture.h"

#include <cerrno>
#include <filesystem>

namespace vireonix::core {
namespace {

namespace fs = std::filesystem;
using namespace test;

TEST_F(BackupOfWorkspace, AnotherSessionsBackupIsNeitherUsedNorDeleted) {
  begin();
  edit();
  const TreeSnapshot edited = snapshot(workspace);
  WorkspaceBackup other;
  folder.write("home/second/file", "second");
  ASSERT_TRUE(other.prepare(backup).ok());
  revert(); // while the other session has prepared its folder
  EXPECT_EQ(difference(edited, snapshot(workspace)), "");
  ASSERT_TRUE(other.take(folder.at("home/second"), backup).ok());
  revert();
  EXPECT_EQ(difference(edited, snapshot(workspace)), "");
  EXPECT_TRUE(session.remove(backup).ok());
  folder.write("home/second/file", "edited");
  EXPECT_TRUE(other.restore(folder.at("home/second"), backup).ok());
  EXPECT_EQ(fileBytes(folder.at("home/second/file")), "second");
  EXPECT_FALSE(exists(backup));
}

TEST_F(BackupOfWorkspace, ASessionTakesOverAFolderThatAnotherHasOnlyPrepared) {
  ASSERT_TRUE(session.prepare(backup).ok());
  WorkspaceBackup other;
  ASSERT_TRUE(other.prepare(backup).ok());
  ASSERT_TRUE(session.take(workspace, backup).ok());
  edit();
  revert();
  expectReverted();
}

TEST_F(BackupOfWorkspace, ABackupThatALivingSessionTookIsNotTakenOver) {
  ASSERT_TRUE(session.prepare(backup).ok());
  WorkspaceBackup other;
  ASSERT_TRUE(other.prepare(backup).ok());
  ASSERT_TRUE(other.take(workspace, backup).ok());
  EXPECT_EQ(session.take(workspace, backup).error, EBUSY);
  edit();
  const TreeSnapshot edited = snapshot(workspace);
  revert();
  EXPECT_EQ(difference(edited, snapshot(workspace)), "");
  EXPECT_TRUE(other.restore(workspace, backup).ok());
  expectReverted();
}

TEST_F(BackupOfWorkspace, ABackupOfASessionThatDiedIsTakenOver) {
  ASSERT_TRUE(session.prepare(backup).ok());
  inChild([&] {
    WorkspaceBackup other;
    EXPECT_TRUE(other.prepare(backup).ok());
    EXPECT_TRUE(other.take(workspace, backup).ok());
  });
  edit();
  const TreeSnapshot edited = snapshot(workspace);
  revert(); // It is not this session's.
  EXPECT_EQ(difference(edited, snapshot(workspace)), "");
  EXPECT_TRUE(session.take(workspace, backup).ok());
  fs::remove(workspace + "/picture.jpg");
  revert();
  EXPECT_EQ(difference(edited, snapshot(workspace)), "");
}

TEST_F(BackupOfWorkspace, TakingTwiceKeepsTheFirst) {
  begin();
  edit();
  EXPECT_TRUE(session.take(workspace, backup).ok());
  revert();
  expectReverted();
}

TEST_F(BackupOfWorkspace, ABackupIsNotUsedForAnotherWorkspace) {
  begin();
  folder.write("elsewhere/file", "other");
  EXPECT_TRUE(session.restore(folder.at("elsewhere"), backup).ok());
  EXPECT_EQ(listTree(folder.at("elsewhere")), Names{"file"});
}

TEST_F(BackupOfWorkspace, OnlyLeftoversOfDeadProcessesOfThisWorkspaceAreCleared) {
  const std::string dead = "4194304-1"; // no system has such a process
  folder.write("home/.workspace.vireonix-restore-" + dead + "/file", "left");
  folder.write("home/.workspace.vireonix-aside-" + dead + "/file", "left");
  folder.write("home/.workspace.vireonix-restore-1-1/file", "process 1 lives");
  folder.write("home/.workspace.vireonix-restore-mine/file", "not one of ours");
  folder.write("home/.other.vireonix-restore-" + dead + "/file", "another workspace's");
  clearLeftovers(workspace + "/");
  EXPECT_EQ(listTree(folder.at("home")).size(), original.size() + 6);
  EXPECT_FALSE(exists(folder.at("home/.workspace.vireonix-restore-" + dead)));
  EXPECT_FALSE(exists(folder.at("home/.workspace.vireonix-aside-" + dead)));
  expectRestored(workspace);
}

TEST_F(BackupOfWorkspace, AWorkspaceCaughtBetweenTwoRenamesIsPutBack) {
  fs::rename(workspace, folder.at("home/.workspace.vireonix-aside-4194304-1"));
  folder.write("home/.workspace.vireonix-restore-4194304-2/file", "left");
  clearLeftovers(workspace);
  expectReverted();
}

} // namespace
} // namespace vireonix::core
