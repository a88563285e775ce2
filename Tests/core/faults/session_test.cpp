// Whole editing sessions, killed at random times. An oracle that knows what the session was about
// to do says which states may be found.
#include "file_operation.h"

#include "Core/file_tree.h"
#include "Core/media_file.h"
#include "Core/position.h"
#include "Core/slider_document.h"
#include "Core/workspace_backup.h"

#include "core/tree_snapshot.h"
#include "support/figures.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <filesystem>
#include <random>

namespace vireonix::test {
namespace {

namespace fs = std::filesystem;
namespace slider = core::slider;

constexpr int kEdits = 24;
constexpr const char* kDocument = "intro_asset/data.xml";
constexpr const char* kPosition = "settings.dat";

/// What the session has in hand: the slides of the panel and the position of the canvas.
struct Records {
  std::vector<slider::Slide> slides;
  core::Position position;
  int pictures = 0;
};

/// One step of the session, and what the workspace holds once it is done.
struct Step {
  std::string file; ///< Written when not empty.
  std::string bytes;
  std::string added;   ///< A picture that is copied in.
  std::string removed; ///< A picture that is deleted.
};

std::string pictureBytes(const std::string& name) {
  return "picture " + name + std::string(9000, 'p');
}

Step saveDocument(const Records& records) {
  return {.file = kDocument, .bytes = slider::writeDocument(records.slides, {})};
}

Step savePosition(const Records& records) {
  return {.file = kPosition, .bytes = core::positionText(records.position)};
}

void addSlide(Records& records, std::vector<Step>& steps) {
  const std::string name = "intro_asset/" + std::to_string(records.pictures++) + ".png";
  steps.push_back({.added = name});
  records.slides.push_back({.backgroundImage = name, .textObjects = {}});
}

void removeSlide(Records& records, std::vector<Step>& steps, std::mt19937& random) {
  const size_t row = random() % records.slides.size();
  steps.push_back({.removed = *records.slides[row].backgroundImage});
  records.slides.erase(records.slides.begin() + static_cast<std::ptrdiff_t>(row));
}

void editCaption(Records& records, std::mt19937& random) {
  slider::Slide& slide = records.slides[random() % records.slides.size()];
  slide.textObjects.push_back(
      {{std::string(slider::kText), std::to_string(random())}, {std::string(slider::kSize), "24"}});
}

/// The whole session by its seed, as steps that each change one file.
std::vector<Step> plannedSteps(unsigned seed) {
  std::mt19937 random(seed);
  Records records;
  std::vector<Step> steps;
  for (int edit = 0; edit < kEdits; ++edit) {
    const auto kind = random() % 4;
    if (records.slides.empty() || kind == 0)
      addSlide(records, steps);
    else if (kind == 1)
      removeSlide(records, steps, random);
    else
      editCaption(records, random);
    records.position.left = static_cast<float>(random() % 100);
    steps.push_back(saveDocument(records));
    steps.push_back(savePosition(records));
  }
  return steps;
}

/// The workspace before the session and after each of its steps.
std::vector<Contents> plannedStates(const Contents& before, const std::vector<Step>& steps) {
  std::vector<Contents> states{before};
  for (const Step& step : steps) {
    Contents next = states.back();
    if (!step.file.empty())
      next[step.file] = "file " + step.bytes;
    if (!step.added.empty())
      next[step.added] = "file " + pictureBytes(step.added);
    next.erase(step.removed);
    states.push_back(std::move(next));
  }
  return states;
}

/// How far the session has come, shared with its process. Steps count from 1; what follows the last
/// one is its end.
struct Progress {
  std::atomic<int> begun;
  std::atomic<bool> isBackedUp;
};

class Session {
public:
  Session() : folder_(memoryFolder()) {
    progress_ = static_cast<Progress*>(
        mmap(nullptr, sizeof(Progress), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
    folder_.write("bundle/index.html", "<html>");
    folder_.write(std::string("bundle/") + kDocument, "<main/>");
    folder_.write("bundle/js/player.js", std::string(30'000, 'j'));
    for (int i = 0; i <= kEdits; ++i) {
      const std::string name = "intro_asset/" + std::to_string(i) + ".png";
      folder_.write("elsewhere/" + name, pictureBytes(name));
    }
    fs::create_directory(folder_.at("tmp"));
  }
  ~Session() { munmap(progress_, sizeof(Progress)); }
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  /// Runs the session in a process of its own and kills that after the delay, 0 being never.
  /// Answers whether it was still at work.
  bool run(unsigned seed, std::chrono::nanoseconds delay) {
    steps_ = plannedSteps(seed);
    isReverting_ = seed % 2 == 0;
    fs::remove_all(folder_.at("home"));
    fs::create_directory(folder_.at("home"));
    (void)core::mergeTree(folder_.at("bundle"), makeWorkspace(), {});
    folder_.write("home/workspace/settings.dat", core::positionText({}));
    before_ = snapshot(workspace());
    states_ = plannedStates(contentsOf(workspace()), steps_);
    new (progress_) Progress{};
    const pid_t process = fork();
    if (process == 0)
      edit(delay);
    int status = 0;
    EXPECT_EQ(waitpid(process, &status, 0), process);
    EXPECT_TRUE(WIFSIGNALED(status) ? WTERMSIG(status) == SIGKILL : WEXITSTATUS(status) == 0);
    return WIFSIGNALED(status);
  }

  /// What the oracle does not allow; empty when all is well.
  std::string wrong() {
    const int begun = progress_->begun;
    core::clearLeftovers(workspace());
    if (begun > static_cast<int>(steps_.size()))
      return wrongAtTheEnd();
    const Contents now = withoutTemporaries(contentsOf(workspace()));
    // The step that was begun is done or not.
    if (now == states_[static_cast<size_t>(begun)])
      return "";
    const Contents& earlier = states_[static_cast<size_t>(std::max(begun - 1, 0))];
    return now == earlier ? ""
                          : "not a state of step " + std::to_string(begun) + "\n" +
                                lossAgainst(earlier, earlier, now);
  }

  /// What is still beside after the plug-in has started once more.
  std::string leftAfterTheNextStart() {
    core::clearLeftovers(workspace());
    (void)core::mergeTree(folder_.at("bundle"), workspace(), {});
    core::WorkspaceBackup next;
    (void)next.prepare(folder_.at("tmp/vireonix"));
    (void)next.remove(folder_.at("tmp/vireonix"));
    std::string left;
    for (const auto& entry : contentsOf(folder_.path()))
      if (entry.first.find("vireonix-") != std::string::npos)
        left += entry.first + "\n";
    return left;
  }

private:
  [[nodiscard]] std::string workspace() const { return folder_.at("home/workspace"); }
  [[nodiscard]] std::string makeWorkspace() const {
    (void)core::createFolders(workspace());
    return workspace();
  }

  std::string wrongAtTheEnd() {
    if (contentsOf(workspace()) == states_.back())
      return "";
    const bool isReverted = isReverting_ && snapshot(workspace()) == before_;
    return isReverted ? "" : "neither as edited nor as before\n";
  }

  void perform(const Step& step) {
    const std::string root = workspace() + "/";
    if (!step.file.empty())
      (void)core::replaceFile(root + step.file, step.bytes);
    if (!step.added.empty())
      (void)core::copyFile(folder_.at("elsewhere/" + step.added), root + step.added);
    if (!step.removed.empty())
      (void)core::removeMediaFile(workspace(), step.removed);
  }

  [[noreturn]] void edit(std::chrono::nanoseconds delay) {
    if (delay.count() > 0)
      killSelfAfter(delay);
    const std::string backup = folder_.at("tmp/vireonix");
    core::clearLeftovers(workspace());
    (void)core::mergeTree(folder_.at("bundle"), workspace(), {});
    core::WorkspaceBackup session;
    (void)session.prepare(backup);
    if (!session.take(workspace(), backup).ok())
      _exit(1);
    for (const Step& step : steps_) {
      ++progress_->begun;
      perform(step);
    }
    ++progress_->begun;
    const core::Status closed =
        isReverting_ ? session.restore(workspace(), backup) : session.remove(backup);
    _exit(closed.ok() ? 0 : 1);
  }

  TemporaryFolder folder_;
  Progress* progress_;
  std::vector<Step> steps_;
  std::vector<Contents> states_;
  TreeSnapshot before_;
  bool isReverting_ = false;
};

TEST(KilledSession, LeavesAStateThatTheOracleKnows) {
  const int kills = isLongRun() ? 1000 : 60;
  Session session;
  std::chrono::nanoseconds whole{0};
  for (unsigned seed = 0; seed < 4; ++seed) {
    const auto begin = std::chrono::steady_clock::now();
    ASSERT_FALSE(session.run(seed, {}));
    ASSERT_EQ(session.wrong(), "");
    whole = std::max<std::chrono::nanoseconds>(whole, std::chrono::steady_clock::now() - begin);
  }
  int killed = 0;
  std::mt19937 random(20261116);
  for (unsigned seed = 0; killed < kills; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    ASSERT_LT(seed, 20U * static_cast<unsigned>(kills)) << "the kills do not fall into the work";
    const double part = std::uniform_real_distribution<>(0.001, 1)(random);
    killed += session.run(seed, std::chrono::nanoseconds(static_cast<long long>(
                                    static_cast<double>(whole.count()) * part)))
                  ? 1
                  : 0;
    ASSERT_EQ(session.wrong(), "");
    ASSERT_EQ(session.leftAfterTheNextStart(), "");
  }
  reportFigure("kill.sessions", std::to_string(killed) + " sessions killed, losses: none");
}

} // namespace
} // namespace vireonix::test
