// Editing sessions in the real settings window, killed at random times one after the other on one
// workspace. An oracle that the session tells beforehand what it does says which states may be
// found; each next session opens what the last one left.
#include "killed_session.h"

#include "core/faults/tree_contents.h"
#include "support/figures.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <sys/prctl.h>
#include <sys/wait.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <random>

namespace vireonix::test {
namespace {

namespace fs = std::filesystem;

constexpr int kKills = 25;
constexpr int kManyKills = 1000;
constexpr int kEdits = 8;
constexpr int kEditsOfLongRun = 12;
// A workspace that has grown large is begun anew.
constexpr int kSessionsOnAWorkspace = 40;

unsigned firstSeed() {
  const char* const seed = std::getenv("VIREONIX_SEED");
  return seed != nullptr ? static_cast<unsigned>(std::atoi(seed)) : 20261121;
}

/// What a workspace holds, and may hold.
class KilledWindow : public testing::Test {
protected:
  KilledWindow() {
    // What the sessions' own processes leave comes here.
    prctl(PR_SET_CHILD_SUBREAPER, 1);
    fs::create_directory(folder_.at("pictures"));
    fs::create_directory(folder_.at("tmp"));
    // Foundation would make a folder of its own in one that others may read.
    fs::permissions(folder_.at("tmp"), fs::perms::owner_all);
    plan_ = {.workspace = folder_.at("home/workspace"),
             .pictures = folder_.at("pictures"),
             .temporaries = folder_.at("tmp"),
             .seed = firstSeed(),
             .whenOpened = [this](const Told& told) { checkOpened(told); }};
  }

  /// Installs a workspace with a session that is left alone, and learns from it how long each phase
  /// takes.
  void beginAnew() {
    fs::remove_all(folder_.at("home"));
    fs::create_directory(folder_.at("home"));
    plan_.killIn = Phase::Closed;
    plan_.edits = 0;
    installed_.clear();
    ASSERT_EQ(runSession(plan_).failure, "");
    installed_ = contentsOf(plan_.workspace);
    plan_.edits = isLongRun() ? kEditsOfLongRun : kEdits;
    const SessionEnd whole = next();
    ASSERT_EQ(whole.phases.size(), 3U);
    phases_ = whole.phases;
  }

  /// Runs the next session as planned.
  SessionEnd next() {
    ++plan_.seed;
    before_ = stateIn(plan_.workspace);
    SessionEnd end = runSession(plan_);
    EXPECT_EQ(end.failure, "");
    EXPECT_EQ(wrong(end), "");
    EXPECT_EQ(wrongBackup(end.told), "");
    while (waitpid(-1, nullptr, WNOHANG) > 0)
      continue;
    return end;
  }

  /// Most kills hit the editing.
  void planKill(std::mt19937& random) {
    constexpr std::array kPhases = {Phase::Starting, Phase::Editing, Phase::Editing, Phase::Editing,
                                    Phase::Closing};
    plan_.killIn = kPhases[random() % kPhases.size()];
    const auto phase = phases_[static_cast<size_t>(plan_.killIn)];
    plan_.delay = std::chrono::nanoseconds(static_cast<long long>(
        std::uniform_real_distribution<>(0, 1)(random) * static_cast<double>(phase.count())));
  }

private:
  [[nodiscard]] std::string backup() const { return folder_.at("tmp/vireonix"); }

  /// What is wrong with the workspace after a session.
  [[nodiscard]] std::string wrong(const SessionEnd& end) const {
    const WorkspaceState now = stateIn(plan_.workspace);
    std::string text = wrongBytes(plan_.workspace);
    if (end.told.phase == Phase::Starting)
      return text + against(now, before_, withInstalled(before_), {before_.position});
    const bool mayBeReverted = end.told.phase >= Phase::Closing && !end.told.isApplied;
    if (mayBeReverted && against(now, end.told.opened, end.told.opened, {before_.position}).empty())
      return text;
    if (end.told.phase == Phase::Closed && !end.told.isApplied)
      return text + "not reverted\n";
    return text + wrongAsEdited(now, end.told);
  }

  [[nodiscard]] std::string wrongAsEdited(const WorkspaceState& now, const Told& told) const {
    const WorkspaceState& later = told.about ? *told.about : told.done;
    if (told.phase == Phase::Closed)
      return against(now, later, later, {later.position});
    std::set<std::string> positions = told.positions;
    if (!told.isSettled)
      positions.insert(before_.position);
    return against(now, told.done, later, positions);
  }

  /// What makes `now` something else than the one state, the other one or what is on the way.
  static std::string against(const WorkspaceState& now, const WorkspaceState& first,
                             const WorkspaceState& second, const std::set<std::string>& positions) {
    std::string text;
    if (now.document.empty() || (now.document != first.document && now.document != second.document))
      text += "document: " + now.document + "\n not: " + first.document +
              "\n nor: " + second.document + "\n";
    if (!positions.contains(now.position))
      text += "position: " + now.position + "\n";
    for (const std::string& path : now.others)
      if (!first.others.contains(path) && !second.others.contains(path))
        text += "added: " + path + "\n";
    for (const std::string& path : first.others)
      if (second.others.contains(path) && !now.others.contains(path))
        text += "lost: " + path + "\n";
    return text;
  }

  /// The next start puts back what came with the workspace and was removed.
  [[nodiscard]] WorkspaceState withInstalled(WorkspaceState state) const {
    for (const auto& [path, text] : installed_)
      if (text != "folder" && path != kDocumentFile && path != kPositionFile)
        state.others.insert(path);
    return state;
  }

  /// Files that are not what they were or what was chosen for them.
  [[nodiscard]] std::string wrongBytes(const std::string& root) const {
    std::string text;
    for (const auto& [path, content] : withoutTemporaries(contentsOf(root))) {
      if (content == "folder" || path == kDocumentFile || path == kPositionFile)
        continue;
      const auto found = installed_.find(path);
      const bool isWhole = found != installed_.end()
                               ? found->second == content
                               : content == "file " + pictureBytes(fs::path(path).filename());
      text += isWhole ? "" : "not whole: " + path + "\n";
    }
    return text;
  }

  /// The backup is what the session opened; once it closes it may be gone.
  [[nodiscard]] std::string wrongBackup(const Told& told) const {
    if (told.phase == Phase::Starting || told.phase == Phase::Closed)
      return "";
    if (!fs::exists(backup()))
      return told.phase == Phase::Closing ? "" : "no backup\n";
    const std::string text =
        against(stateIn(backup()), told.opened, told.opened, {before_.position});
    return (text + wrongBytes(backup())).empty() ? "" : "backup: " + text + wrongBytes(backup());
  }

  /// The window shows what the last session left, and what that left besides is gone.
  void checkOpened(const Told& told) const {
    if (installed_.empty())
      return;
    EXPECT_EQ(told.opened.document, before_.document) << "opened";
    EXPECT_EQ(wrongBytes(plan_.workspace), "");
    for (const auto& entry : contentsOf(folder_.path())) {
      const fs::path name = fs::path(entry.first).filename();
      EXPECT_TRUE(name == "vireonix-owner" || name.string().find("vireonix-") == std::string::npos)
          << "left: " << entry.first;
    }
  }

  TemporaryFolder folder_;
  SessionPlan plan_;
  std::vector<std::chrono::nanoseconds> phases_;
  Contents installed_;
  WorkspaceState before_;
};

TEST_F(KilledWindow, LeavesAStateThatWasToldAndTheNextStartOpensIt) {
  const int kills = isLongRun() ? kManyKills : kKills;
  std::mt19937 random(firstSeed());
  std::map<Phase, int> killed;
  int sum = 0;
  for (int session = 0; sum < kills; ++session) {
    ASSERT_LT(session, 4 * kills) << "the kills do not fall into the work";
    if (session % kSessionsOnAWorkspace == 0)
      ASSERT_NO_FATAL_FAILURE(beginAnew());
    planKill(random);
    const SessionEnd end = next();
    ASSERT_FALSE(HasFailure()) << "session " << session << " of VIREONIX_SEED=" << firstSeed();
    killed[end.told.phase] += end.isKilled ? 1 : 0;
    sum += end.isKilled ? 1 : 0;
  }
  reportFigure("kill.windows", std::to_string(sum) + " windows killed (" +
                                   std::to_string(killed[Phase::Starting]) + " starting, " +
                                   std::to_string(killed[Phase::Editing]) + " editing, " +
                                   std::to_string(killed[Phase::Closing] + killed[Phase::Closed]) +
                                   " closing), losses: none");
}

} // namespace
} // namespace vireonix::test
