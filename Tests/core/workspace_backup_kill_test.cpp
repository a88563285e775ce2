#include "Core/workspace_backup.h"

#include "support/sanitizer.h"
#include "support/temporary_folder.h"
#include "tree_snapshot.h"

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <filesystem>
#include <iostream>

namespace vireonix::core {
namespace {

namespace fs = std::filesystem;
using namespace test;
using Clock = std::chrono::steady_clock;

constexpr int kKills = rounds(240);
constexpr int kFiles = 40;

void fill(const TemporaryFolder& folder, char content, const std::string& extra) {
  const std::string workspace = "home/workspace/";
  for (int i = 0; i < kFiles; ++i)
    folder.write(workspace + (i % 2 == 0 ? "sub/" : "") + std::to_string(i),
                 std::string(2000, content));
  folder.write(workspace + extra, "x");
}

/// Restores in a process of its own and kills that after the given time, 0 being never. Answers
/// whether it was still at work.
bool restoreAndKill(const std::string& workspace, const std::string& backup,
                    WorkspaceBackup& session, std::chrono::nanoseconds delay) {
  const pid_t process = fork();
  EXPECT_GE(process, 0);
  if (process == 0) {
    if (delay.count() > 0)
      killSelfAfter(delay);
    _exit(session.restore(workspace, backup).ok() ? 0 : 1);
  }
  int status = 0;
  EXPECT_EQ(waitpid(process, &status, 0), process);
  EXPECT_TRUE(WIFSIGNALED(status) || WEXITSTATUS(status) == 0) << status;
  return WIFSIGNALED(status);
}

/// Many of the instants early, where little time decides, and many over the whole work.
std::chrono::nanoseconds anyInstant(std::chrono::nanoseconds whole, std::mt19937& random) {
  constexpr double kEarliest = 5'000;
  const auto end = static_cast<double>(whole.count());
  const double part = std::uniform_real_distribution<>(0, 1)(random);
  const bool isEarly = random() % 2 == 0;
  const double delay =
      isEarly ? kEarliest * std::pow(end / kEarliest, part) : std::max(end * part, kEarliest);
  return std::chrono::nanoseconds(static_cast<long long>(delay));
}

void killAtManyInstants(const TemporaryFolder& folder, const std::string& backup) {
  const std::string workspace = folder.at("home/workspace");
  std::mt19937 random(20261116);
  std::chrono::nanoseconds whole{0};
  int killed = 0;
  int restored = 0;
  for (int round = 0; round <= kKills; ++round) {
    SCOPED_TRACE(round);
    fs::remove_all(workspace);
    fill(folder, 'b', "before");
    const TreeSnapshot before = snapshot(workspace);
    WorkspaceBackup session;
    ASSERT_TRUE(session.prepare(backup).ok());
    ASSERT_TRUE(session.take(workspace, backup).ok());
    fs::remove(workspace + "/before");
    fill(folder, 'a', "added");
    const TreeSnapshot edited = snapshot(workspace);
    const bool isMeasured = round == 0;
    const Clock::time_point begin = Clock::now();
    killed +=
        restoreAndKill(workspace, backup, session, isMeasured ? whole : anyInstant(whole, random));
    if (isMeasured)
      whole = Clock::now() - begin;
    const TreeSnapshot now = snapshot(workspace);
    restored += now == before;
    ASSERT_TRUE(now == before || now == edited)
        << difference(now.contains("added") ? edited : before, now);
    clearLeftovers(workspace);
    ASSERT_EQ(std::distance(fs::directory_iterator(folder.at("home")), {}), 1);
  }
  // Otherwise the kills did not fall into the work.
  EXPECT_GT(killed, kKills / 4);
  EXPECT_GT(restored, 1);
  EXPECT_LT(restored, kKills);
  std::cout << killed << " of " << kKills << " killed at work, " << restored << " restored\n";
}

TEST(KilledRestore, LeavesTheWorkspaceWholeAsEditedOrAsRestored) {
  const TemporaryFolder folder;
  fs::create_directory(folder.at("home"));
  killAtManyInstants(folder, folder.at("vireonix"));
}

TEST(KilledRestore, LeavesTheWorkspaceWholeWhenTheBackupIsOnAnotherFileSystem) {
  const TemporaryFolder folder;
  fs::create_directory(folder.at("home"));
  const std::string backup = farFrom(folder);
  killAtManyInstants(folder, backup);
  EXPECT_TRUE(removeTree(backup).ok());
  EXPECT_TRUE(removeTree(backup + "-owner").ok());
}

} // namespace
} // namespace vireonix::core
