#include "Core/log_file.h"

#include "Core/file_tree.h"
#include "support/temporary_folder.h"
#include "tree_snapshot.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <thread>

namespace vireonix::core {
namespace {

namespace fs = std::filesystem;
using namespace test;

using Names = std::vector<std::string>;

constexpr size_t kLimit = size_t{4} * 1024 * 1024;

class LogFile : public testing::Test {
protected:
  Status add(std::optional<std::string_view> message) {
    return appendToLog(folder.path().string(), message, [this] { return time; });
  }

  std::string log() { return fileBytes(folder.at("Log.txt")); }

  void makeBackups(int count, const std::string& extension = ".txt") {
    for (int i = 0; i < count; ++i)
      folder.write("backupLog/2026010" + std::to_string(i / 10) + "_12000" +
                       std::to_string(i % 10) + extension,
                   "old");
  }

  void makeTooLarge() { folder.write("Log.txt", std::string(kLimit + 1, 'x')); }

  TemporaryFolder folder;
  std::string time = "2026-11-16 07:54:43";
};

TEST_F(LogFile, EntriesAreSeparatedByOneLineFeedAndNoneEndsTheFile) {
  EXPECT_TRUE(add("first").ok());
  EXPECT_EQ(log(), "2026-11-16 07:54:43{bundle}:first");
  time = "2026-11-16 07:54:44";
  EXPECT_TRUE(add("").ok());
  EXPECT_TRUE(add("Grüße %d").ok());
  EXPECT_EQ(log(), "2026-11-16 07:54:43{bundle}:first\n"
                   "2026-11-16 07:54:44{bundle}:\n"
                   "2026-11-16 07:54:44{bundle}:Grüße %d");
  EXPECT_EQ(listTree(folder.path().string()), Names{"Log.txt"});
}

TEST_F(LogFile, AnEmptyLogFileGetsNoLineFeedInFront) {
  folder.write("Log.txt", "");
  EXPECT_TRUE(add("first").ok());
  EXPECT_EQ(log(), "2026-11-16 07:54:43{bundle}:first");
}

TEST_F(LogFile, FourMebibytesAreExtendedAndOneByteMoreIsRotated) {
  folder.write("Log.txt", std::string(kLimit, 'x'));
  EXPECT_TRUE(add("m").ok());
  const std::string extended = std::string(kLimit, 'x') + "\n2026-11-16 07:54:43{bundle}:m";
  EXPECT_TRUE(log() == extended);
  EXPECT_FALSE(exists(folder.at("backupLog")));
  EXPECT_TRUE(add("n").ok());
  EXPECT_EQ(log(), "2026-11-16 07:54:43{bundle}:n");
  EXPECT_TRUE(fileBytes(folder.at("backupLog/20261116_075443.txt")) == extended);
}

TEST_F(LogFile, WithoutAMessageOnlyTheFileIsMadeOrRotated) {
  EXPECT_TRUE(add(std::nullopt).ok());
  EXPECT_TRUE(exists(folder.at("Log.txt")));
  EXPECT_EQ(log(), "");
  folder.write("Log.txt", "kept");
  EXPECT_TRUE(add(std::nullopt).ok());
  EXPECT_EQ(log(), "kept");
  makeTooLarge();
  EXPECT_TRUE(add(std::nullopt).ok());
  EXPECT_EQ(log(), "");
  EXPECT_EQ(fs::file_size(folder.at("backupLog/20261116_075443.txt")), kLimit + 1);
}

TEST_F(LogFile, TheEntryHasTheTimeAfterTheRotation) {
  makeTooLarge();
  int second = 10;
  const auto clock = [&second] { return "2026-11-16 07:54:" + std::to_string(second++); };
  EXPECT_TRUE(appendToLog(folder.path().string(), "m", clock).ok());
  EXPECT_TRUE(exists(folder.at("backupLog/20261116_075410.txt")));
  EXPECT_EQ(log(), "2026-11-16 07:54:11{bundle}:m");
}

TEST_F(LogFile, ABackupOfTheSameSecondIsNotOverwritten) {
  makeTooLarge();
  folder.write("backupLog/20261116_075443.txt", "the first");
  EXPECT_TRUE(add("m").ok());
  EXPECT_EQ(fileBytes(folder.at("backupLog/20261116_075443.txt")), "the first");
  EXPECT_EQ(log(), "2026-11-16 07:54:43{bundle}:m");
}

TEST_F(LogFile, TheThirtyFirstBackupCostsTheFirstByName) {
  makeTooLarge();
  makeBackups(29);
  EXPECT_TRUE(add("m").ok());
  EXPECT_EQ(listTree(folder.at("backupLog")).size(), 30U);
  makeTooLarge();
  time = "2026-11-16 07:54:44";
  EXPECT_TRUE(add("m").ok());
  EXPECT_EQ(listTree(folder.at("backupLog")).size(), 30U);
  EXPECT_FALSE(exists(folder.at("backupLog/20260100_120000.txt")));
  EXPECT_TRUE(exists(folder.at("backupLog/20260100_120001.txt")));
}

TEST_F(LogFile, ARotationDeletesOneBackupHoweverManyThereAre) {
  makeTooLarge();
  makeBackups(39, ".TxT");
  folder.write("backupLog/notes.md", "not a backup");
  folder.write("backupLog/.txt", "a name, not an extension");
  EXPECT_TRUE(add("m").ok());
  EXPECT_EQ(listTree(folder.at("backupLog")).size(), size_t{39 + 2});
  EXPECT_FALSE(exists(folder.at("backupLog/20260100_120000.TxT")));
}

TEST_F(LogFile, FilesInSubfoldersCountAndTheFirstIsFoundWhateverItsCase) {
  makeTooLarge();
  makeBackups(29);
  folder.write("backupLog/0sub/A.TXT", "first");
  folder.write("backupLog/0sub/b.txt", "second");
  EXPECT_TRUE(add("m").ok());
  EXPECT_FALSE(exists(folder.at("backupLog/0sub/A.TXT")));
  EXPECT_TRUE(exists(folder.at("backupLog/0sub/b.txt")));
}

TEST_F(LogFile, AMissingFolderIsNotMade) {
  const std::string missing = folder.at("missing");
  EXPECT_FALSE(appendToLog(missing, "m", [] { return std::string("t"); }).ok());
  EXPECT_FALSE(exists(missing));
}

TEST_F(LogFile, WhatIsNoFileIsLeftAloneAndNotWaitedFor) {
  ASSERT_EQ(mkfifo(folder.at("Log.txt").c_str(), 0600), 0);
  EXPECT_FALSE(add("m").ok());
  fs::remove(folder.at("Log.txt"));
  fs::create_directory(folder.at("Log.txt"));
  EXPECT_FALSE(add("m").ok());
  fs::remove(folder.at("Log.txt"));
  fs::create_symlink("/dev/null", folder.at("Log.txt"));
  EXPECT_FALSE(add("m").ok());
  EXPECT_EQ(linkTarget(folder.at("Log.txt")), "/dev/null");
  EXPECT_EQ(listTree(folder.path().string()), Names{"Log.txt"});
}

TEST_F(LogFile, ALinkedLogFileBecomesAFileOfItsOwn) {
  folder.write("elsewhere", "old");
  fs::create_symlink("elsewhere", folder.at("Log.txt"));
  EXPECT_TRUE(add("m").ok());
  EXPECT_EQ(log(), "old\n2026-11-16 07:54:43{bundle}:m");
  EXPECT_EQ(fileBytes(folder.at("elsewhere")), "old");
}

TEST_F(LogFile, AFullDiskKeepsTheOldEntries) {
  withSmallDisk(folder.path().string(), 8192, [&] {
    folder.write("Log.txt", "old");
    EXPECT_FALSE(add(std::string(9000, 'm')).ok());
    EXPECT_EQ(log(), "old");
    EXPECT_EQ(listTree(folder.path().string()), Names{"Log.txt"});
  });
}

TEST_F(LogFile, NoEntryIsLostBetweenThreads) {
  constexpr int kThreads = 4;
  constexpr int kEntries = 25;
  std::vector<std::thread> threads;
  threads.reserve(kThreads);
  for (int thread = 0; thread < kThreads; ++thread)
    threads.emplace_back([&, thread] {
      for (int i = 0; i < kEntries; ++i)
        EXPECT_TRUE(appendToLog(folder.path().string(), std::to_string(thread), [] {
                      return std::string("t");
                    }).ok());
    });
  for (std::thread& thread : threads)
    thread.join();
  const std::string text = log();
  EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), kThreads * kEntries - 1);
  EXPECT_EQ(std::count(text.begin(), text.end(), '3'), kEntries);
}

} // namespace
} // namespace vireonix::core
