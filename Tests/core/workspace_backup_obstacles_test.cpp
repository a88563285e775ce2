#include "workspace_backup_fixture.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>

namespace vireonix::core {
namespace {

namespace fs = std::filesystem;
using namespace test;

TEST_F(BackupOfWorkspace, AParentFolderThatCannotBeWrittenIsNoObstacle) {
  if (geteuid() != 0)
    GTEST_SKIP() << "only the superuser can give files away";
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

TEST_F(BackupOfWorkspace, AWorkspaceBehindALinkToItselfIsNoWorkspace) {
  fs::create_symlink("circle", folder.at("home/circle"));
  const std::string nowhere = folder.at("home/circle/workspace");
  const TreeSnapshot before = snapshot(folder.at("home"));
  ASSERT_TRUE(session.prepare(backup).ok());
  EXPECT_EQ(session.take(nowhere, backup).error, ELOOP);
  EXPECT_TRUE(session.restore(nowhere, backup).ok());
  EXPECT_EQ(snapshot(folder.at("home")), before);
  EXPECT_FALSE(fs::exists("/workspace"));
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

} // namespace
} // namespace vireonix::core
