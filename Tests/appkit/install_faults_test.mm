// The installation killed and failing at every call.
#import "Class/PluginSettingsInfo.h"

#import "Bridge/text.h"
#import "support/faults.h"
#import "support/figures.h"
#import "support/temporary_folder.h"

#include "Core/file_tree.h"
#include "Core/workspace_backup.h"

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <filesystem>

namespace fs = std::filesystem;
using namespace vireonix::test;
using vireonix::bridge::pathString;
using vireonix::core::listTree;

namespace {

using Paths = std::vector<std::string>;

constexpr std::array kErrors = {EIO, ENOSPC, EACCES, EINTR};

class InstallWithFaults : public testing::Test {
protected:
  void SetUp() override {
    folder_.write("p.bundle/Resources/html/index.html", "page");
    folder_.write("p.bundle/Resources/html/js/player.js", std::string(70'000, 'j'));
    folder_.write("p.bundle/Resources/data/vireonix.swf", "movie");
    folder_.write("p.bundle/Resources/data/intro_asset/data.xml", "<main><data/></main>");
    info_ = [[PluginSettingsInfo alloc] init];
    [info_ setWorkSpace:pathString(workspace())];
    [info_ setBundlePath:pathString(folder_.at("p.bundle"))];
  }
  void TearDown() override { [info_ release]; }

  [[nodiscard]] std::string workspace() const { return folder_.at("save/workspace"); }

  /// No workspace, or one of which the user has edited a part and deleted another.
  void begin(bool isFresh) {
    fs::remove_all(folder_.at("save"));
    if (isFresh)
      return;
    folder_.write("save/workspace/intro_asset/data.xml", "the user's");
    folder_.write("save/workspace/mine.png", "the user's");
  }

  Experiment install(const Fault &fault) {
    return runWithFault(fault, [this] {
      @autoreleasepool {
        [info_ installWorkSpace];
      }
      return 0;
    });
  }

  /// Everything is there, the user's as it was, and nothing besides.
  void expectInstalled(bool isFresh) {
    const Paths fresh{"book.swf", "index.html",   "intro_asset", "intro_asset/data.xml",
                      "js",       "js/player.js", "vireonix.swf"};
    const Paths completed{"index.html",   "intro_asset", "intro_asset/data.xml", "js",
                          "js/player.js", "mine.png",    "vireonix.swf"};
    EXPECT_EQ(listTree(workspace()), isFresh ? fresh : completed);
    EXPECT_EQ(listTree(folder_.at("save")).size(), (isFresh ? fresh : completed).size() + 1);
    EXPECT_EQ(fileBytes(workspace() + "/js/player.js").size(), 70'000U);
    expectTheUsersKept(isFresh);
  }

  void expectTheUsersKept(bool isFresh) {
    if (isFresh)
      return;
    EXPECT_EQ(fileBytes(workspace() + "/intro_asset/data.xml"), "the user's");
    EXPECT_EQ(fileBytes(workspace() + "/mine.png"), "the user's");
  }

  void startAgain() {
    vireonix::core::clearLeftovers(workspace());
    @autoreleasepool {
      [info_ installWorkSpace];
    }
  }

  TemporaryFolder folder_{memoryFolder()};
  PluginSettingsInfo *info_ = nil;
};

} // namespace

TEST_F(InstallWithFaults, KilledAtEveryCallTheNextStartCompletesIt) {
  long kills = 0;
  for (const bool isFresh : {true, false}) {
    bool isKilled = true;
    for (long call = 1; isKilled && !HasFailure(); ++call) {
      SCOPED_TRACE("call " + std::to_string(call));
      begin(isFresh);
      const Experiment experiment = install({.kind = FaultKind::Kill, .at = call});
      isKilled = experiment.killed;
      EXPECT_EQ(experiment.crash, "");
      if (isFresh && isKilled)
        EXPECT_TRUE(!fs::exists(workspace()) || fs::exists(workspace() + "/book.swf"));
      expectTheUsersKept(isFresh);
      startAgain();
      expectInstalled(isFresh);
      kills += isKilled ? 1 : 0;
    }
  }
  EXPECT_GT(kills, 20);
  reportFigure("kill.install", std::to_string(kills) + " instants, losses: none");
}

TEST_F(InstallWithFaults, AFailingCallCostsNothingThatTheUserHas) {
  long faults = 0;
  for (const bool isFresh : {true, false}) {
    begin(isFresh);
    const long calls = install({.withReading = true}).calls;
    for (long call = 1; call <= calls; ++call) {
      SCOPED_TRACE("call " + std::to_string(call));
      begin(isFresh);
      const Experiment experiment =
          install({.kind = FaultKind::Error,
                   .at = call,
                   .error = kErrors[static_cast<size_t>(call) % kErrors.size()],
                   .withReading = true});
      EXPECT_EQ(experiment.crash, "") << experiment.hit;
      EXPECT_EQ(experiment.descriptors, 0) << experiment.hit;
      expectTheUsersKept(isFresh);
      startAgain();
      expectTheUsersKept(isFresh);
      EXPECT_EQ(fileBytes(workspace() + "/index.html"), "page") << experiment.hit;
      faults += experiment.hit.empty() ? 0 : 1;
    }
  }
  EXPECT_GT(faults, 100);
  reportFigure("errors.install", std::to_string(faults) + " faults injected, losses: none");
}
