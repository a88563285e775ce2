#include "Core/file_tree.h"
#include "Core/folder_lock.h"

#include "support/temporary_folder.h"
#include "tree_snapshot.h"

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <filesystem>

namespace vireonix::core {
namespace {

namespace fs = std::filesystem;
using namespace test;

using Names = std::vector<std::string>;

TEST(FolderWhole, AppearsWithEverythingInIt) {
  const TemporaryFolder folder;
  const std::string path = folder.at("deep/er/new");
  EXPECT_TRUE(makeFolderWhole(path + "/", [&](const std::string& staging) {
                EXPECT_FALSE(exists(path));
                EXPECT_TRUE(replaceFile(staging + "/file", "x").ok());
              }).ok());
  EXPECT_EQ(listTree(folder.path().string()),
            (Names{"deep", "deep/er", "deep/er/new", "deep/er/new/file"}));
}

TEST(FolderWhole, AKilledProcessLeavesNothingAtItsPlaceAndTheNextCallClearsUp) {
  const TemporaryFolder folder;
  const std::string path = folder.at("new");
  const pid_t killed = fork();
  ASSERT_GE(killed, 0);
  if (killed == 0)
    (void)makeFolderWhole(path, [](const std::string& staging) {
      (void)replaceFile(staging + "/half", "x");
      raise(SIGKILL);
    });
  waitpid(killed, nullptr, 0);
  EXPECT_FALSE(exists(path));
  EXPECT_EQ(listTree(folder.path().string()).size(), 2U);
  EXPECT_TRUE(makeFolderWhole(path, [](const std::string&) {}).ok());
  EXPECT_EQ(listTree(folder.path().string()), Names{"new"});
}

TEST(FolderWhole, WhatIsThereIsCompletedAndANameTooLongForASiblingIsMadeInPlace) {
  const TemporaryFolder folder;
  folder.write("there/file", "mine");
  const FolderFiller fill = [](const std::string& at) { (void)replaceFile(at + "/other", "x"); };
  EXPECT_TRUE(makeFolderWhole(folder.at("there"), fill).ok());
  EXPECT_EQ(listTree(folder.at("there")), (Names{"file", "other"}));
  const std::string longest = folder.at(std::string(255, 'n'));
  EXPECT_TRUE(makeFolderWhole(longest, fill).ok());
  EXPECT_EQ(listTree(longest), Names{"other"});
  folder.write("file", "x");
  EXPECT_EQ(makeFolderWhole(folder.at("file/below"), fill).error, ENOTDIR);
}

TEST(FolderWhole, WhatAnotherProcessMakesMeanwhileStaysAndIsCompleted) {
  const TemporaryFolder folder;
  const std::string path = folder.at("new");
  EXPECT_TRUE(makeFolderWhole(path, [&](const std::string& at) {
                if (at != path)
                  folder.write("new/edited", "theirs");
                EXPECT_TRUE(replaceFile(at + "/file", "x").ok());
              }).ok());
  EXPECT_EQ(listTree(folder.path().string()), (Names{"new", "new/edited", "new/file"}));
}

TEST(FolderLock, KeepsOthersOutUntilItGoesAndGivesUpAfterAWhile) {
  const TemporaryFolder folder;
  const std::string path = folder.path().string();
  using std::chrono::milliseconds;
  {
    const FolderLock lock(path, milliseconds(0));
    EXPECT_TRUE(lock.isHeld());
    EXPECT_FALSE(FolderLock(path, milliseconds(30)).isHeld());
    inChild([&] { EXPECT_FALSE(FolderLock(path, milliseconds(0)).isHeld()); });
  }
  EXPECT_TRUE(FolderLock(path, milliseconds(0)).isHeld());
  EXPECT_TRUE(FolderLock(folder.at("missing"), milliseconds(0)).isHeld());
}

} // namespace
} // namespace vireonix::core
