// Each operation on a disk that is full, read-only, or not the user's to change.
#include "file_operation.h"

#include "Core/file_tree.h"

#include "core/tree_snapshot.h"
#include "support/figures.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>

namespace vireonix::test {
namespace {

namespace fs = std::filesystem;

constexpr size_t kDisk = size_t{16} << 20;
constexpr long kMostSteps = 4096;

/// Takes all room of the disk but the given number of blocks, which are 4 kB.
void leaveBlocks(const std::string& disk, long free) {
  fs::remove(disk + "/filler");
  struct statvfs info {};
  ASSERT_EQ(statvfs(disk.c_str(), &info), 0);
  const long taken = static_cast<long>(info.f_bavail) - free;
  const int filler = open((disk + "/filler").c_str(), O_WRONLY | O_CREAT, 0600);
  ASSERT_GE(filler, 0);
  const auto size = static_cast<off_t>(static_cast<unsigned long>(taken) * info.f_bsize);
  ASSERT_EQ(size > 0 ? posix_fallocate(filler, 0, size) : 0, 0);
  close(filler);
}

/// Runs the operation with more and more room until it has enough; answers how often it had not.
long sweep(FileOperation& operation, const std::string& disk) {
  long failed = 0;
  for (long free = 0; free < kMostSteps; ++free) {
    SCOPED_TRACE(operation.name() + ", " + std::to_string(free * 4) + " kB free");
    fs::remove(disk + "/filler");
    operation.setUp();
    leaveBlocks(disk, free);
    const core::Status status = operation.run();
    EXPECT_EQ(operation.leftBeside(), "");
    EXPECT_EQ(status.ok() ? operation.wrongWhenDone() : operation.wrongWhenFailed(), "");
    if (status.ok() || testing::Test::HasFailure())
      return failed;
    EXPECT_EQ(status.error, ENOSPC) << status.path;
    ++failed;
  }
  ADD_FAILURE() << "never enough room";
  return failed;
}

TEST(FullDisk, SweptInStepsOf4KilobytesKeepsTheOldStateOrGivesTheNewOne) {
  const TemporaryFolder folder;
  withSmallDisk(folder.path(), kDisk, [&] {
    long steps = 0;
    for (const auto& operation : allFileOperations(folder.path())) {
      steps += sweep(*operation, folder.path()) + 1;
      operation->placeIn(folder.path());
    }
    EXPECT_GT(steps, 20);
    reportFigure("disk.full", std::to_string(steps) + " amounts of room, losses: none");
  });
}

TEST(ReadOnlyFileSystem, NothingIsDoneAndTheErrorIsAnswered) {
  const TemporaryFolder folder;
  withSmallDisk(folder.path(), kDisk, [&] {
    int count = 0;
    for (const auto& operation : allFileOperations(folder.path())) {
      SCOPED_TRACE(operation->name());
      operation->setUp();
      const TreeSnapshot before = snapshot(folder.path());
      setReadOnly(folder.path(), true);
      EXPECT_EQ(operation->run().error, EROFS);
      setReadOnly(folder.path(), false);
      EXPECT_EQ(difference(before, snapshot(folder.path())), "");
      ++count;
    }
    reportFigure("disk.readonly", std::to_string(count) + " operations, losses: none");
  });
}

/// A file that not even its owner, or the superuser, may change; false where there is no such
/// thing.
bool setImmutable(const std::string& path, bool isImmutable) {
  const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  unsigned long flags = 0;
  bool done = file >= 0 && ioctl(file, FS_IOC_GETFLAGS, &flags) == 0;
  flags =
      isImmutable ? flags | FS_IMMUTABLE_FL : flags & ~static_cast<unsigned long>(FS_IMMUTABLE_FL);
  done = done && ioctl(file, FS_IOC_SETFLAGS, &flags) == 0;
  close(file);
  return done;
}

/// A session on "home/workspace" that edits its file "other" brings everything back.
void expectOneRevert(const TemporaryFolder& folder) {
  const std::string workspace = folder.at("home/workspace");
  const std::string backup = folder.at("vireonix");
  const TreeSnapshot before = snapshot(workspace);
  core::WorkspaceBackup session;
  EXPECT_TRUE(session.prepare(backup).ok());
  EXPECT_TRUE(session.take(workspace, backup).ok());
  folder.write("home/workspace/other", "new");
  EXPECT_TRUE(session.restore(workspace, backup).ok());
  EXPECT_EQ(difference(before, snapshot(workspace)), "");
}

TEST(ImmutableFile, StaysWhatItIsAndTheRestIsReverted) {
  const TemporaryFolder folder;
  const std::string workspace = folder.at("home/workspace");
  const std::string file = folder.write("home/workspace/data.xml", "old");
  folder.write("home/workspace/other", "old");
  if (!setImmutable(file, true))
    GTEST_SKIP() << "no file can be made immutable here: " << std::strerror(errno);
  EXPECT_EQ(core::replaceFile(file, "new").error, EPERM);
  EXPECT_EQ(core::appendToFile(file, "new").error, EPERM);
  EXPECT_EQ(fileBytes(file), "old");
  expectOneRevert(folder);
  // The edited workspace that was exchanged cannot be deleted with that file in it.
  for (const auto& entry : fs::recursive_directory_iterator(folder.at("home")))
    if (entry.path().filename() == "data.xml")
      (void)setImmutable(entry.path(), false);
  core::clearLeftovers(workspace);
  EXPECT_EQ(core::listTree(folder.at("home")).size(), 3U);
  reportFigure("disk.immutable", "3 operations, losses: none");
}

TEST(FolderWithoutWritePermission, KeepsItsFileAndIsRevertedAllTheSame) {
  const TemporaryFolder folder;
  ASSERT_EQ(chmod(folder.path().c_str(), 0777), 0);
  asOrdinaryUser([&] {
    const std::string workspace = folder.at("home/workspace");
    const std::string file = folder.write("home/workspace/intro_asset/data.xml", "old");
    folder.write("home/workspace/other", "old");
    folder.write("bundle/intro_asset/missing", "x");
    ASSERT_EQ(chmod((workspace + "/intro_asset").c_str(), 0555), 0);
    const TreeSnapshot before = snapshot(workspace);
    EXPECT_EQ(core::replaceFile(file, "new").error, EACCES);
    EXPECT_EQ(core::mergeTree(folder.at("bundle"), workspace, {}).error, EACCES);
    EXPECT_EQ(difference(before, snapshot(workspace)), "");
    expectOneRevert(folder);
    EXPECT_TRUE(core::removeTree(folder.at("home")).ok());
  });
}

} // namespace
} // namespace vireonix::test
