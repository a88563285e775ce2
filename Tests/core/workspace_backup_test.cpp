#include "Core/workspace_backup.h"

#include "support/temporary_folder.h"
#include "tree_snapshot.h"

#include <gtest/gtest.h>

#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <filesystem>

namespace vireonix::core {
namespace {

namespace fs = std::filesystem;
using namespace test;

using Names = std::vector<std::string>;

class BackupOfWorkspace : public testing::Test {
protected:
  BackupOfWorkspace() {
    folder.write("home/workspace/index.html", "<html>");
    folder.write("home/workspace/intro_asset/data.xml", "<main/>");
    folder.write("home/workspace/.hidden/.deeper", "hidden");
    fs::create_symlink("intro_asset/data.xml", workspace + "/link");
    fs::create_directory(workspace + "/empty");
    setTime(workspace + "/intro_asset/data.xml", 1'000'000, 5);
    setTime(workspace, 2'000'000, 7);
    chmod(workspace.c_str(), 0750);
    chmod(folder.path().c_str(), 0777);
    fs::create_directory(folder.at("tmp"));
    original = snapshot(workspace);
  }

  void begin() {
    ASSERT_TRUE(session.prepare(backup).ok());
    const Status status = session.take(workspace, backup);
    ASSERT_TRUE(status.ok()) << status.path << " " << status.error;
  }

  void edit() {
    folder.write("home/workspace/intro_asset/data.xml", "<main>edited</main>");
    folder.write("home/workspace/picture.jpg", "picture");
    fs::remove(workspace + "/index.html");
    fs::remove_all(workspace + "/empty");
    folder.write("home/workspace/empty", "now a file");
  }

  void expectRestored(const std::string& where) {
    EXPECT_EQ(difference(original, snapshot(where)), "");
  }

  /// The workspace is as at first, and nothing else of the session is left.
  void expectReverted() {
    expectRestored(workspace);
    EXPECT_EQ(listTree(folder.at("tmp")), Names{});
    for (const auto& entry : fs::directory_iterator(folder.at("home")))
      EXPECT_EQ(entry.path().filename().string(), "workspace");
  }

  void revert() {
    const Status status = session.restore(workspace, backup);
    EXPECT_TRUE(status.ok()) << status.path << " " << status.error;
  }

  TemporaryFolder folder;
  std::string workspace = folder.at("home/workspace");
  std::string backup = folder.at("tmp/vireonix");
  WorkspaceBackup session;
  TreeSnapshot original;
};

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

TEST_F(BackupOfWorkspace, AFolderMadeByHandIsUsedAsBackup) {
  folder.write("tmp/vireonix/sub/file", "by hand");
  const TreeSnapshot byHand = snapshot(backup);
  revert();
  EXPECT_EQ(difference(byHand, snapshot(workspace)), "");
  EXPECT_FALSE(exists(backup));
}

TEST_F(BackupOfWorkspace, ALinkInTheBackupsPlaceDoesNotBecomeTheWorkspace) {
  folder.write("elsewhere/file", "kept");
  fs::create_symlink(folder.at("elsewhere"), backup);
  revert();
  EXPECT_FALSE(isLink(workspace));
  EXPECT_EQ(listTree(workspace), Names{"file"});
  EXPECT_EQ(fileBytes(folder.at("elsewhere/file")), "kept");
}

TEST_F(BackupOfWorkspace, AWorkspaceThatVanishedIsMadeAgain) {
  begin();
  fs::remove_all(folder.at("home"));
  revert();
  expectReverted();
}

TEST_F(BackupOfWorkspace, AFileOrLinkInPlaceOfTheWorkspaceGivesWay) {
  begin();
  fs::remove_all(workspace);
  folder.write("home/workspace", "a file");
  revert();
  expectReverted();
  begin();
  fs::remove_all(workspace);
  fs::create_symlink("nowhere", workspace);
  revert();
  expectReverted();
}

TEST_F(BackupOfWorkspace, AWorkspaceThatIsALinkStaysOne) {
  const std::string link = folder.at("link to workspace");
  fs::create_symlink("home/workspace", link);
  ASSERT_TRUE(session.prepare(backup).ok());
  ASSERT_TRUE(session.take(link + "/", backup).ok());
  edit();
  EXPECT_TRUE(session.restore(link, backup).ok());
  EXPECT_TRUE(isLink(link));
  expectReverted();
  ASSERT_TRUE(session.prepare(backup).ok());
  ASSERT_TRUE(session.take(link, backup).ok());
  fs::remove_all(workspace); // The link leads nowhere now.
  EXPECT_TRUE(session.restore(link, backup).ok());
  EXPECT_TRUE(isLink(link));
  expectReverted();
}

TEST_F(BackupOfWorkspace, ALinkThatWasLedElsewhereGivesWayAndTheOtherFolderStays) {
  const std::string link = folder.at("link to workspace");
  fs::create_symlink("home/workspace", link);
  ASSERT_TRUE(session.prepare(backup).ok());
  ASSERT_TRUE(session.take(link, backup).ok());
  folder.write("other/file", "other");
  fs::remove(link);
  fs::create_symlink("other", link);
  EXPECT_TRUE(session.restore(link, backup).ok());
  EXPECT_FALSE(isLink(link));
  expectRestored(link);
  EXPECT_EQ(listTree(folder.at("other")), Names{"file"});
}

TEST_F(BackupOfWorkspace, AWorkspaceThatIsAFileOrHoldsTheBackupIsNotBackedUp) {
  ASSERT_TRUE(session.prepare(backup).ok());
  const std::string file = folder.write("file", "kept");
  EXPECT_EQ(session.take(file, backup).error, ENOTDIR);
  EXPECT_TRUE(session.restore(file, backup).ok());
  EXPECT_EQ(fileBytes(file), "kept");
  ASSERT_TRUE(session.prepare(backup).ok());
  EXPECT_EQ(session.take(folder.path().string(), backup).error, EINVAL);
  EXPECT_TRUE(session.restore(folder.path().string(), backup).ok());
  EXPECT_EQ(fileBytes(file), "kept");
  ASSERT_TRUE(session.prepare(backup).ok());
  fs::create_directory(backup + "/inside");
  EXPECT_EQ(session.take(backup + "/inside", backup).error, EINVAL);
  EXPECT_TRUE(isFolder(backup + "/inside"));
}

TEST_F(BackupOfWorkspace, ABackupOnAnotherFileSystemIsRestoredTheSame) {
  const std::string far = farFrom(folder);
  ASSERT_TRUE(session.prepare(far).ok());
  ASSERT_TRUE(session.take(workspace, far).ok());
  edit();
  EXPECT_TRUE(session.restore(workspace, far).ok());
  expectReverted();
  EXPECT_FALSE(exists(far));
  EXPECT_FALSE(exists(far + "-owner"));
}

TEST_F(BackupOfWorkspace, AParentFolderThatCannotBeWrittenIsNoObstacle) {
  // Everything in it is the ordinary user's, the folder that holds it is not.
  for (const char* path : {"home/workspace", "tmp"})
    for (const std::string& name : listTree(folder.at(path)))
      ASSERT_EQ(lchown(folder.at(std::string(path) + "/" + name).c_str(), 65534, 65534), 0);
  ASSERT_EQ(chown(workspace.c_str(), 65534, 65534), 0);
  ASSERT_EQ(chown(folder.at("tmp").c_str(), 65534, 65534), 0);
  asOrdinaryUser([&] {
    begin();
    edit();
    ASSERT_NE(mkdir(folder.at("home/other").c_str(), 0700), 0);
    revert();
    expectReverted();
  });
}

TEST_F(BackupOfWorkspace, AWorkspaceThatIsAMountedFileSystemIsRestoredInPlace) {
  withSmallDisk(workspace, size_t{1} << 20, [&] {
    folder.write("home/workspace/file", "before");
    setTime(workspace, 1'000);
    original = snapshot(workspace);
    begin();
    folder.write("home/workspace/file", "after");
    folder.write("home/workspace/new", "new");
    revert();
    expectReverted();
  });
}

TEST_F(BackupOfWorkspace, ADiskWithoutRoomForASecondTreeIsRestoredInPlace) {
  withSmallDisk(folder.at("home"), size_t{1} << 20, [&] {
    folder.write("home/workspace/large", std::string(600'000, 'l'));
    folder.write("home/workspace/data.xml", "before");
    original = snapshot(workspace);
    begin();
    folder.write("home/workspace/data.xml", "after");
    folder.write("home/workspace/picture.jpg", std::string(300'000, 'p'));
    revert();
    expectReverted();
  });
}

TEST_F(BackupOfWorkspace, WhatCouldNotBeBackedUpStaysAsEditedAndTheRestIsReverted) {
  asOrdinaryUser([&] {
    const std::string mine = folder.at("mine");
    folder.write("mine/data.xml", "before");
    folder.write("mine/secret", "secret");
    folder.write("mine/closed/inside", "inside");
    fs::create_directory(folder.at("mine/tmp"));
    chmod(folder.at("mine/secret").c_str(), 0);
    chmod(folder.at("mine/closed").c_str(), 0);
    const std::string own = folder.at("own backup");
    EXPECT_EQ(session.prepare(own).error, 0);
    EXPECT_EQ(session.take(mine, own).error, EACCES);
    folder.write("mine/data.xml", "after");
    folder.write("mine/new", "new");
    EXPECT_TRUE(session.restore(mine, own).ok());
    EXPECT_EQ(fileBytes(folder.at("mine/data.xml")), "before");
    EXPECT_FALSE(exists(folder.at("mine/new")));
    EXPECT_EQ(modeOf(folder.at("mine/closed")), 0U);
    chmod(folder.at("mine/secret").c_str(), 0600);
    chmod(folder.at("mine/closed").c_str(), 0700);
    EXPECT_EQ(fileBytes(folder.at("mine/secret")), "secret");
    EXPECT_EQ(fileBytes(folder.at("mine/closed/inside")), "inside");
  });
}

TEST_F(BackupOfWorkspace, ABackupThatRanOutOfRoomNeverCostsAFile) {
  const TreeSnapshot before = snapshot(workspace);
  withSmallDisk(folder.at("tmp"), size_t{1} << 20, [&] {
    folder.write("home/workspace/a", std::string(700'000, 'a'));
    folder.write("home/workspace/b", std::string(700'000, 'b'));
    ASSERT_TRUE(session.prepare(backup).ok());
    EXPECT_EQ(session.take(workspace, backup).error, ENOSPC);
    folder.write("home/workspace/a", "edited");
    folder.write("home/workspace/b", "edited");
    folder.write("home/workspace/c", "new");
    revert();
    EXPECT_EQ(fileBytes(workspace + "/a").size(), 700'000U);
    EXPECT_EQ(fileBytes(workspace + "/b"), "edited");
    EXPECT_FALSE(exists(workspace + "/c"));
    EXPECT_EQ(fileBytes(workspace + "/index.html"), "<html>");
  });
}

TEST_F(BackupOfWorkspace, WithoutRoomForTheMarkTheWorkspaceStaysAsEdited) {
  withSmallDisk(folder.at("tmp"), 65536, [&] {
    ASSERT_TRUE(session.prepare(backup).ok());
    folder.write("tmp/filler", std::string(100'000, 'f'));
    EXPECT_EQ(session.take(workspace, backup).error, ENOSPC);
    edit();
    const TreeSnapshot edited = snapshot(workspace);
    revert();
    EXPECT_EQ(difference(edited, snapshot(workspace)), "");
  });
}

TEST_F(BackupOfWorkspace, ARestoreThatFailedKeepsTheBackup) {
  begin();
  fs::remove_all(folder.at("home"));
  folder.write("home", "a file where the workspace's folder was");
  EXPECT_FALSE(session.restore(workspace, backup).ok());
  expectRestored(backup);
  EXPECT_EQ(fileBytes(folder.at("home")), "a file where the workspace's folder was");
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

TEST_F(BackupOfWorkspace, RandomEditsAreRevertedExactlyAndNothingOutsideIsTouched) {
  folder.write("home/outside/file", "outside");
  const TreeSnapshot outside = snapshot(folder.at("home/outside"));
  for (unsigned seed = 0; seed < 30; ++seed) {
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
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
