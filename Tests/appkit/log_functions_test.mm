#import "Class/Log/LogFunctions.h"

#import "Bridge/text.h"
#import "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <thread>
#include <vector>

namespace fs = std::filesystem;
using vireonix::bridge::path;
using vireonix::test::fileBytes;

namespace {

// The log folder in the home folder that the test runs with.
class LogFunctions : public testing::Test {
protected:
  void SetUp() override { fs::create_directories(folder_); }
  void TearDown() override { fs::remove_all(folder_); }

  [[nodiscard]] std::string log() const { return fileBytes(folder_ / "Log.txt"); }

  fs::path folder_ = path([NSHomeDirectory()
      stringByAppendingPathComponent:@"Library/Application Support/Marquell/bundle"]);
};

std::string consoleOf(void (*write)()) {
  testing::internal::CaptureStderr();
  write();
  return testing::internal::GetCapturedStderr();
}

} // namespace

TEST_F(LogFunctions, AnEntryHoldsTheLocalTimeTheWordBundleAndTheMessage) {
  logSave(@"%@ of %d", @"one", 2);
  EXPECT_TRUE(std::regex_match(
      log(), std::regex("\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d\\{bundle\\}:one of 2")))
      << log();
}

TEST_F(LogFunctions, EntriesAreSeparatedByOneLineFeed) {
  logSave(@"a");
  logSave(@"b");
  const std::string text = log();
  EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 1);
  EXPECT_NE(text.find("{bundle}:a\n"), std::string::npos);
  EXPECT_NE(text.back(), '\n');
}

TEST_F(LogFunctions, ANilFormatMakesAMissingFileAndWritesNoEntry) {
  logSave(nil);
  EXPECT_TRUE(fs::exists(folder_ / "Log.txt"));
  EXPECT_EQ(log(), "");
}

TEST_F(LogFunctions, WithoutTheLogFolderNothingIsWritten) {
  fs::remove_all(folder_);
  logSave(@"a");
  EXPECT_FALSE(fs::exists(folder_));
}

TEST_F(LogFunctions, EntriesFromManyThreadsAllArrive) {
  std::vector<std::thread> threads;
  for (int i = 0; i < 8; ++i)
    threads.emplace_back([] { logSave(@"entry"); });
  for (std::thread &thread : threads)
    thread.join();
  const std::string text = log();
  EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 7);
}

TEST_F(LogFunctions, ErrorsAndWarningsGoToTheConsoleOnly) {
  EXPECT_NE(consoleOf([] { logError(@"%@", @"100%d"); }).find("Error:100%d"), std::string::npos);
  EXPECT_NE(consoleOf([] { logWarn(@"low %d", 3); }).find("Warn:low 3"), std::string::npos);
  EXPECT_NE(consoleOf([] { logError(nil); }).find("Error:nil"), std::string::npos);
  EXPECT_FALSE(fs::exists(folder_ / "Log.txt"));
}

TEST_F(LogFunctions, DebugMessagesGoNowhere) {
  EXPECT_EQ(consoleOf([] { logDebug(@"%@", @"x"); }), "");
  EXPECT_FALSE(fs::exists(folder_ / "Log.txt"));
}
