#include "Core/file_tree.h"

#include "Core/temporary_entry.h"
#include "support/temporary_folder.h"
#include "tree_snapshot.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <filesystem>
#include <thread>

namespace vireonix::core {
namespace {

namespace fs = std::filesystem;
using namespace test;

using Names = std::vector<std::string>;

TEST(DurableFile, AFileIsMadeAndReplacedWithNothingLeftBesideIt) {
  const TemporaryFolder folder;
  umask(022);
  EXPECT_TRUE(replaceFile(folder.at("file"), "first").ok());
  EXPECT_EQ(modeOf(folder.at("file")), 0644U);
  const std::string large(3'000'000, 'x');
  EXPECT_TRUE(replaceFile(folder.at("file"), large).ok());
  EXPECT_EQ(fileBytes(folder.at("file")), large);
  EXPECT_TRUE(replaceFile(folder.at("file"), "").ok());
  EXPECT_EQ(fileBytes(folder.at("file")), "");
  EXPECT_EQ(listTree(folder.path().string()), Names{"file"});
}

TEST(DurableFile, TheModeOfAnExistingFileIsKept) {
  const TemporaryFolder folder;
  const std::string file = folder.write("file", "old");
  for (const mode_t mode : {0600, 0400, 0755, 0, 0666}) {
    chmod(file.c_str(), mode);
    EXPECT_TRUE(replaceFile(file, "new").ok());
    EXPECT_EQ(modeOf(file), mode);
    // What is added to must be readable.
    EXPECT_EQ(appendToFile(file, "more").ok(), access(file.c_str(), R_OK) == 0);
    EXPECT_EQ(modeOf(file), mode);
  }
}

TEST(DurableFile, ALinkIsReplacedAndWhatItLeadsToIsNotTouched) {
  const TemporaryFolder folder;
  folder.write("outside", "outside");
  fs::create_symlink("outside", folder.at("link"));
  fs::create_symlink("nowhere", folder.at("dangling"));
  EXPECT_TRUE(replaceFile(folder.at("link"), "new").ok());
  EXPECT_TRUE(replaceFile(folder.at("dangling"), "new").ok());
  EXPECT_FALSE(isLink(folder.at("link")));
  EXPECT_EQ(fileBytes(folder.at("outside")), "outside");
  EXPECT_EQ(listTree(folder.path().string()), (Names{"dangling", "link", "outside"}));
}

TEST(DurableFile, AHardLinkedFileIsReplacedUnderThisNameOnly) {
  const TemporaryFolder folder;
  folder.write("file", "old");
  fs::create_hard_link(folder.at("file"), folder.at("other"));
  EXPECT_TRUE(replaceFile(folder.at("file"), "new").ok());
  EXPECT_EQ(fileBytes(folder.at("other")), "old");
}

TEST(DurableFile, AFailedWriteLeavesTheOldFileWholeAndNothingElse) {
  const TemporaryFolder folder;
  folder.write("file", "old");
  inChild([&] {
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{1000, 1000};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    EXPECT_EQ(replaceFile(folder.at("file"), std::string(5000, 'x')).error, EFBIG);
    EXPECT_EQ(appendToFile(folder.at("file"), std::string(5000, 'x')).error, EFBIG);
    EXPECT_EQ(replaceFile(folder.at("new"), std::string(5000, 'x')).error, EFBIG);
  });
  fs::create_directory(folder.at("disk"));
  withSmallDisk(folder.at("disk"), 65536, [&] {
    folder.write("disk/file", "old");
    EXPECT_EQ(replaceFile(folder.at("disk/file"), std::string(100'000, 'x')).error, ENOSPC);
    EXPECT_EQ(fileBytes(folder.at("disk/file")), "old");
    EXPECT_EQ(listTree(folder.at("disk")), Names{"file"});
  });
  EXPECT_EQ(fileBytes(folder.at("file")), "old");
  EXPECT_EQ(listTree(folder.path().string()), (Names{"disk", "file"}));
}

TEST(DurableFile, WhatCannotBeReplacedIsAnswered) {
  const TemporaryFolder folder;
  folder.write("folder/file", "x");
  EXPECT_EQ(replaceFile(folder.at("folder"), "x").error, EISDIR);
  EXPECT_EQ(replaceFile(folder.at("missing/file"), "x").error, ENOENT);
  EXPECT_EQ(replaceFile(folder.at("folder/file/below"), "x").error, ENOTDIR);
  EXPECT_EQ(replaceFile("", "x").error, ENOENT);
  EXPECT_EQ(replaceFile(folder.at("folder/.."), "x").error, EINVAL);
  EXPECT_EQ(listTree(folder.path().string()), (Names{"folder", "folder/file"}));
  chmod(folder.path().c_str(), 0755);
  asOrdinaryUser([&] {
    if (access(folder.path().c_str(), W_OK) != 0)
      EXPECT_EQ(replaceFile(folder.at("new"), "x").error, EACCES);
  });
}

TEST(DurableFile, FilesOfKilledProcessesAreRemovedAndThoseOfLivingOnesStay) {
  const TemporaryFolder folder;
  const pid_t killed = fork();
  ASSERT_GE(killed, 0);
  if (killed == 0) {
    const int opened = open(folder.path().c_str(), O_RDONLY);
    TemporaryFile file(opened);
    (void)file.create(0600);
    raise(SIGKILL);
  }
  waitpid(killed, nullptr, 0);
  ASSERT_EQ(listTree(folder.path().string()).size(), 1U);
  const int opened = open(folder.path().c_str(), O_RDONLY);
  TemporaryFile living(opened);
  ASSERT_EQ(living.create(0600), 0);
  folder.write(".vireonix-new-other", "not one of ours");
  EXPECT_TRUE(replaceFile(folder.at("file"), "x").ok());
  EXPECT_EQ(listTree(folder.path().string()).size(), 3U);
  EXPECT_FALSE(exists(folder.at(".vireonix-new-" + std::to_string(killed) + "-1")));
  EXPECT_EQ(living.replace("finished"), 0);
  close(opened);
  EXPECT_EQ(listTree(folder.path().string()), (Names{".vireonix-new-other", "file", "finished"}));
}

TEST(DurableFile, AFileOfAnEarlierProcessWithThisOnesNumberIsRemoved) {
  const TemporaryFolder folder;
  folder.write(".vireonix-new-" + std::to_string(getpid()) + "-999999", "left");
  EXPECT_TRUE(replaceFile(folder.at("file"), "x").ok());
  EXPECT_EQ(listTree(folder.path().string()), Names{"file"});
}

TEST(DurableFile, ReadersAlwaysSeeAWholeFileWhileSeveralThreadsReplaceIt) {
  const TemporaryFolder folder;
  const std::string path = folder.at("file");
  ASSERT_TRUE(replaceFile(path, std::string(50'000, 'a')).ok());
  std::atomic<bool> stop{false};
  const auto replace = [&](char letter) {
    for (int i = 0; i < 30; ++i)
      EXPECT_TRUE(replaceFile(path, std::string(50'000, letter)).ok());
  };
  std::thread reader([&] {
    while (!stop) {
      const std::optional<std::string> bytes = readFile(path);
      ASSERT_TRUE(bytes);
      ASSERT_EQ(bytes->size(), 50'000U);
      ASSERT_EQ(bytes->find_first_not_of(bytes->front()), std::string::npos);
    }
  });
  std::thread other(replace, 'b');
  replace('c');
  other.join();
  stop = true;
  reader.join();
  EXPECT_EQ(listTree(folder.path().string()), Names{"file"});
}

TEST(DurableFile, AppendingKeepsWhatIsThere) {
  const TemporaryFolder folder;
  EXPECT_TRUE(appendToFile(folder.at("file"), "one").ok());
  EXPECT_TRUE(appendToFile(folder.at("file"), "two").ok());
  EXPECT_EQ(fileBytes(folder.at("file")), "onetwo");
  folder.write("large", std::string(1'000'000, 'x'));
  EXPECT_TRUE(appendToFile(folder.at("large"), "end").ok());
  EXPECT_EQ(fileBytes(folder.at("large")), std::string(1'000'000, 'x') + "end");
}

TEST(DurableFile, OnlyRegularFilesAreReadAndAppendedTo) {
  const TemporaryFolder folder;
  ASSERT_EQ(mkfifo(folder.at("fifo").c_str(), 0600), 0);
  EXPECT_FALSE(readFile(folder.at("fifo")));
  EXPECT_FALSE(readFile(folder.path().string()));
  EXPECT_FALSE(readFile(folder.at("missing")));
  EXPECT_FALSE(readFile("/dev/zero"));
  EXPECT_EQ(appendToFile(folder.at("fifo"), "x").error, EINVAL);
  folder.write("file", "content");
  fs::create_symlink("file", folder.at("link"));
  EXPECT_EQ(readFile(folder.at("link")), "content");
  EXPECT_FALSE(readFile("/proc/self/status").value_or("").empty());
}

} // namespace
} // namespace vireonix::core
