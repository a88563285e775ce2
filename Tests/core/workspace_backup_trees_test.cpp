// Odd trees: a revert brings every one of them back exactly, and nothing outside is touched.
#include "odd_tree.h"
#include "workspace_backup_fixture.h"

#include "support/figures.h"
#include "support/sanitizer.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <thread>

namespace vireonix::core {
namespace {

namespace fs = std::filesystem;
using namespace test;

constexpr int kEntries = 60;
constexpr int kEdits = 60;

/// A workspace that is edited and reverted again and again, with something outside of it.
class OddTrees : public testing::Test {
protected:
  OddTrees() {
    folder.write("outside/file", "outside");
    folder.write("outside/folder/file", "outside");
    fs::create_directories(workspace);
    fs::create_directory(folder.at("tmp"));
    outsideBefore = snapshot(outside);
  }

  void expectReverts(const std::function<void()>& edit, const std::string& backup) {
    const TreeSnapshot before = exactSnapshot(workspace);
    WorkspaceBackup session;
    ASSERT_TRUE(session.prepare(backup).ok());
    const Status taken = session.take(workspace, backup);
    ASSERT_TRUE(taken.ok()) << taken.path << " " << taken.error;
    ASSERT_EQ(difference(before, exactSnapshot(workspace)), "") << "changed by the backup";
    edit();
    const Status restored = session.restore(workspace, backup);
    ASSERT_TRUE(restored.ok()) << restored.path << " " << restored.error;
    ASSERT_EQ(difference(before, exactSnapshot(workspace)), "");
    ASSERT_EQ(difference(outsideBefore, snapshot(outside)), "");
    ASSERT_EQ(std::distance(fs::directory_iterator(folder.at("home")), {}), 1);
    ASSERT_FALSE(exists(backup));
  }

  TemporaryFolder folder{memoryFolder()};
  std::string workspace = folder.at("home/workspace");
  std::string outside = folder.at("outside");
  std::string near = folder.at("tmp/vireonix");
  TreeSnapshot outsideBefore;
};

unsigned firstSeed() {
  const char* const seed = std::getenv("VIREONIX_SEED");
  return seed != nullptr ? static_cast<unsigned>(std::atoi(seed)) : 20261116;
}

TEST_F(OddTrees, RandomEditScriptsOnRandomTreesAreRevertedExactly) {
  const int trees = isLongRun() ? 1000 : rounds(24);
  const TemporaryFolder elsewhere; // most often another file system
  for (int i = 0; i < trees; ++i) {
    const unsigned seed = firstSeed() + static_cast<unsigned>(i);
    SCOPED_TRACE("VIREONIX_SEED=" + std::to_string(seed));
    std::mt19937 random(seed);
    (void)removeTree(workspace);
    fs::create_directory(workspace);
    growOddTree(workspace, outside, random, kEntries);
    const auto edit = [&] { editOddTree(workspace, outside, random, kEdits); };
    expectReverts(edit, i % 6 == 0 ? elsewhere.at("vireonix") : near);
    if (HasFatalFailure())
      return;
  }
  reportFigure("trees.random", std::to_string(trees) + " trees of " + std::to_string(kEntries) +
                                   " entries and " + std::to_string(kEdits) +
                                   " edits each, losses: none");
}

TEST_F(OddTrees, FortyLevelsAreRevertedExactly) {
  std::string path = workspace;
  for (int level = 0; level < 40; ++level) {
    path += "/level " + std::to_string(level);
    fs::create_directory(path);
    folder.write(fs::path(path).lexically_relative(folder.path()).string() + "/file", path);
    setTime(path, 1'000'000 + level, level);
  }
  expectReverts([&] { fs::remove_all(workspace + "/level 0/level 1/level 2"); }, near);
}

TEST_F(OddTrees, AHundredThousandEntriesAreRevertedExactly) {
  if (!isLongRun())
    GTEST_SKIP() << "takes long: set VIREONIX_LONG_TESTS";
  for (int i = 0; i < 1000; ++i) {
    const std::string sub = workspace + "/" + std::to_string(i);
    fs::create_directory(sub);
    for (int j = 0; j < 99; ++j)
      close(open((sub + "/" + std::to_string(j)).c_str(), O_WRONLY | O_CREAT, 0644));
  }
  const auto begin = std::chrono::steady_clock::now();
  expectReverts([&] { fs::remove_all(workspace + "/7"); }, near);
  const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin;
  std::cout << "100,000 entries in " << taken.count() << " s, the comparisons included\n";
  reportFigure("trees.large", "100000 entries, losses: none");
}

/// Exchanges two entries again and again as long as it lives.
class Swapper {
public:
  Swapper(const std::string& first, const std::string& second)
      : thread_([this, first, second] {
          while (!stop_) {
            if (renameat2(AT_FDCWD, first.c_str(), AT_FDCWD, second.c_str(), RENAME_EXCHANGE) == 0)
              ++swaps_;
          }
        }) {}
  ~Swapper() {
    stop_ = true;
    thread_.join();
  }
  Swapper(const Swapper&) = delete;
  Swapper& operator=(const Swapper&) = delete;

  [[nodiscard]] long swaps() const { return swaps_; }

private:
  std::atomic<bool> stop_{false};
  std::atomic<long> swaps_{0};
  std::thread thread_;
};

/// Whether a tree holds, other than as a link, what is outside.
bool holdsOutside(const std::string& root) {
  for (const auto& [path, text] : snapshot(root))
    if (text.ends_with(" outside"))
      return true;
  return false;
}

TEST_F(OddTrees, FoldersSwappedForLinksMeanwhileNeverLeadOutside) {
  constexpr int kCopies = rounds(200);
  for (int i = 0; i < 10; ++i)
    folder.write("home/workspace/sub/folder/" + std::to_string(i), "inside");
  fs::create_directory_symlink(outside, workspace + "/link");
  const std::string copy = folder.at("copy");
  const Swapper swapper(workspace + "/sub", workspace + "/link");
  for (int i = 0; i < kCopies; ++i) {
    (void)copyTree(workspace, copy); // may fail, as the tree changes under it
    ASSERT_FALSE(holdsOutside(copy));
    (void)equaliseTree(workspace, copy);
    ASSERT_FALSE(holdsOutside(copy));
    ASSERT_TRUE(removeTree(copy).ok());
  }
  reportFigure("trees.swapped", std::to_string(kCopies) + " copies during " +
                                    std::to_string(swapper.swaps()) + " swaps, losses: none");
}

TEST_F(OddTrees, WhatIsRemovedOrReplacedWhileFoldersAreSwappedForLinksIsNeverOutside) {
  constexpr int kRounds = rounds(200);
  folder.write("source/sub/folder/file", "inside");
  folder.write("source/link", "inside");
  for (int i = 0; i < kRounds; ++i) {
    folder.write("home/workspace/sub/folder/file", "edited");
    fs::create_directory_symlink(outside, workspace + "/link");
    {
      const Swapper swapper(workspace + "/sub", workspace + "/link");
      (void)equaliseTree(folder.at("source"), workspace);
      (void)removeTree(workspace);
    }
    ASSERT_EQ(difference(outsideBefore, snapshot(outside)), "");
    (void)removeTree(workspace);
    fs::create_directory(workspace);
  }
  reportFigure("trees.removed", std::to_string(kRounds) + " trees, losses: none");
}

} // namespace
} // namespace vireonix::core
