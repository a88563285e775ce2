// Two hosts of one user: sessions in processes of their own that share the backup folder.
#include "workspace_backup_fixture.h"

#include "support/figures.h"
#include "support/sanitizer.h"

#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <vector>

namespace vireonix::core {
namespace {

namespace fs = std::filesystem;
using namespace test;

constexpr int kProcesses = 3;
constexpr int kRounds = rounds(120);

/// A session in a process of its own that does one thing each time it is told.
class OtherHost {
public:
  OtherHost(std::string workspace, std::string backup)
      : workspace_(std::move(workspace)), backup_(std::move(backup)) {
    EXPECT_EQ(pipe(orders_.data()), 0);
    EXPECT_EQ(pipe(answers_.data()), 0);
    process_ = fork();
    if (process_ == 0)
      serve();
  }
  ~OtherHost() {
    tell('q');
    waitpid(process_, nullptr, 0);
    for (const int end : {orders_[0], orders_[1], answers_[0], answers_[1]})
      close(end);
  }
  OtherHost(const OtherHost&) = delete;
  OtherHost& operator=(const OtherHost&) = delete;

  /// Answers whether it went well.
  bool open() { return ask('o'); }
  bool cancel() { return ask('c'); }
  bool apply() { return ask('a'); }

private:
  void tell(char order) { EXPECT_EQ(write(orders_[1], &order, 1), 1); }

  bool ask(char order) {
    tell(order);
    char answer = 0;
    return read(answers_[0], &answer, 1) == 1 && answer == 'y';
  }

  Status follow(char order) {
    if (order == 'c')
      return session_.restore(workspace_, backup_);
    if (order == 'a')
      return session_.remove(backup_);
    const Status prepared = session_.prepare(backup_);
    return prepared.ok() ? session_.take(workspace_, backup_) : prepared;
  }

  [[noreturn]] void serve() {
    session_ = WorkspaceBackup(); // whose number is this process'
    char order = 0;
    while (read(orders_[0], &order, 1) == 1 && order != 'q') {
      const char answer = follow(order).ok() ? 'y' : 'n';
      if (write(answers_[1], &answer, 1) != 1)
        break;
    }
    _exit(0);
  }

  std::string workspace_;
  std::string backup_;
  WorkspaceBackup session_;
  std::array<int, 2> orders_{};
  std::array<int, 2> answers_{};
  pid_t process_ = 0;
};

TEST_F(BackupOfWorkspace, OfTwoHostsOnOneWorkspaceTheLaterOneReverts) {
  OtherHost first(workspace, backup);
  OtherHost second(workspace, backup);
  EXPECT_TRUE(first.open());
  folder.write("home/workspace/first", "first's edit");
  const TreeSnapshot asTheSecondFoundIt = snapshot(workspace);
  EXPECT_TRUE(second.open());
  folder.write("home/workspace/second", "second's edit");
  const TreeSnapshot edited = snapshot(workspace);
  EXPECT_TRUE(first.cancel());
  EXPECT_EQ(difference(edited, snapshot(workspace)), "");
  EXPECT_TRUE(second.cancel());
  EXPECT_EQ(difference(asTheSecondFoundIt, snapshot(workspace)), "");
  EXPECT_EQ(listTree(folder.at("tmp")), Names{});
}

TEST_F(BackupOfWorkspace, OfTwoHostsOnTwoWorkspacesTheEarlierOneKeepsItsEdits) {
  folder.write("home/other/file", "other's");
  const TreeSnapshot other = snapshot(folder.at("home/other"));
  OtherHost first(workspace, backup);
  OtherHost second(folder.at("home/other"), backup);
  EXPECT_TRUE(first.open());
  edit();
  const TreeSnapshot edited = snapshot(workspace);
  EXPECT_TRUE(second.open());
  folder.write("home/other/file", "edited");
  EXPECT_TRUE(first.cancel());
  EXPECT_EQ(difference(edited, snapshot(workspace)), "");
  EXPECT_TRUE(second.cancel());
  EXPECT_EQ(difference(other, snapshot(folder.at("home/other"))), "");
  EXPECT_EQ(listTree(folder.at("tmp")), Names{});
}

TEST_F(BackupOfWorkspace, AHostThatAppliesLeavesTheLaterOnesBackupAlone) {
  OtherHost first(workspace, backup);
  OtherHost second(workspace, backup);
  EXPECT_TRUE(first.open());
  EXPECT_TRUE(second.open());
  edit();
  EXPECT_TRUE(first.apply());
  EXPECT_TRUE(second.cancel());
  expectReverted();
}

/// Opens, edits and cancels again and again; answers how often the workspace was reverted, or -1
/// when it was ever anything but as before or as edited.
int cancelManySessions(const std::string& workspace, const std::string& backup) {
  int reverted = 0;
  for (int round = 0; round < kRounds; ++round) {
    const TreeSnapshot before = snapshot(workspace);
    WorkspaceBackup session;
    if (!session.prepare(backup).ok())
      return -1;
    (void)session.take(workspace, backup); // may be another's by now
    (void)replaceFile(workspace + "/file", workspace + std::to_string(round));
    fs::remove(workspace + "/sub/0");
    const TreeSnapshot edited = snapshot(workspace);
    (void)session.restore(workspace, backup);
    const TreeSnapshot now = snapshot(workspace);
    if (now != before && now != edited)
      return -1;
    reverted += now == before ? 1 : 0;
    (void)replaceFile(workspace + "/sub/0", "again");
  }
  return reverted;
}

TEST(TwoHosts, WhoOpenAndCancelAtTheSameTimeNeverMixTheirWorkspaces) {
  const TemporaryFolder folder(memoryFolder());
  fs::create_directory(folder.at("tmp"));
  std::vector<pid_t> processes;
  for (int host = 0; host < kProcesses; ++host) {
    const std::string name = std::to_string(host);
    for (int i = 0; i < 20; ++i)
      folder.write(name + "/sub/" + std::to_string(i), name);
    folder.write(name + "/file", name);
    processes.push_back(fork());
    ASSERT_GE(processes.back(), 0);
    if (processes.back() == 0) {
      const int reverted = cancelManySessions(folder.at(name), folder.at("tmp/vireonix"));
      folder.write("reverted" + name, std::to_string(reverted));
      _exit(reverted >= 0 ? 0 : 1);
    }
  }
  int reverted = 0;
  for (int host = 0; host < kProcesses; ++host) {
    int status = 0;
    ASSERT_EQ(waitpid(processes[static_cast<size_t>(host)], &status, 0),
              processes[static_cast<size_t>(host)]);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << "host " << host;
    reverted += std::atoi(fileBytes(folder.at("reverted" + std::to_string(host))).c_str());
  }
  EXPECT_GT(reverted, 0);
  EXPECT_EQ(listTree(folder.at("tmp")), Names{});
  reportFigure("hosts", std::to_string(kProcesses) + " processes, " +
                            std::to_string(kProcesses * kRounds) + " sessions, " +
                            std::to_string(reverted) + " reverted, losses: none");
}

} // namespace
} // namespace vireonix::core
