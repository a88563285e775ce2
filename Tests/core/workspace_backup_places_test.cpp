#include "workspace_backup_fixture.h"

#include <cerrno>
#include <filesystem>

namespace vireonix::core {
namespace {

namespace fs = std::filesystem;
using namespace test;

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

} // namespace
} // namespace vireonix::core
