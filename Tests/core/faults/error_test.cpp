// Each operation with each of its file calls failing, once or from then on.
#include "file_operation.h"

#include "Core/workspace_backup.h"

#include "support/faults.h"
#include "support/figures.h"

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <vector>

namespace vireonix::test {
namespace {

constexpr std::array kErrors{EIO, ENOSPC, EACCES, EINTR, EDQUOT};

std::string describe(const Fault& fault, const Experiment& experiment) {
  return experiment.hit + ", call " + std::to_string(fault.at) + ": " +
         strerrordesc_np(fault.error);
}

/// Runs the operation with the fault; answers whether it was hit.
bool failAt(FileOperation& operation, Fault fault) {
  // Nothing is interrupted for ever.
  if (fault.kind == FaultKind::ErrorsOn && fault.error == EINTR)
    fault.error = EROFS;
  operation.setUp();
  const Experiment experiment = runWithFault(fault, [&] { return operation.run().error; });
  SCOPED_TRACE(describe(fault, experiment));
  EXPECT_EQ(experiment.crash, "");
  EXPECT_EQ(experiment.descriptors, 0);
  if (experiment.answer == 0)
    EXPECT_EQ(operation.wrongWhenDone(), "") << "and yet it said that it was done";
  else
    EXPECT_EQ(operation.wrongWhenFailed(), "");
  if (fault.kind == FaultKind::ShortWrite)
    EXPECT_EQ(experiment.answer, 0);
  // What cannot be removed now, the next start removes.
  if (fault.kind != FaultKind::ErrorsOn && !operation.mayLeave(experiment.hit))
    EXPECT_EQ(operation.leftBeside(), "");
  operation.startAgain();
  EXPECT_EQ(operation.leftBeside(), "");
  return !experiment.hit.empty();
}

/// With every call as the first that fails; answers how many faults there were.
long failAtEveryCall(FileOperation& operation, Fault fault) {
  operation.setUp();
  Fault counting;
  counting.withReading = fault.withReading;
  const long calls = runWithFault(counting, [&] { return operation.run().error; }).calls;
  long faults = 0;
  const bool inTurn = fault.error == 0;
  for (fault.at = 1; fault.at <= calls; ++fault.at) {
    if (inTurn)
      fault.error = kErrors[static_cast<std::size_t>(fault.at) % kErrors.size()];
    faults += failAt(operation, fault) ? 1 : 0;
  }
  return faults;
}

long failEverywhere(FaultKind kind, bool withReading) {
  long faults = 0;
  for (const auto& operation : allFileOperations()) {
    SCOPED_TRACE(operation->name());
    long here = 0;
    // In short, each call gets one of the errors, the next call the next one.
    for (const int error :
         isLongRun() ? std::vector<int>(kErrors.begin(), kErrors.end()) : std::vector<int>{0})
      here +=
          failAtEveryCall(*operation, {.kind = kind, .error = error, .withReading = withReading});
    std::cout << operation->name() << ": " << here << " faults\n";
    faults += here;
  }
  return faults;
}

std::string figure(long faults) {
  return std::to_string(faults) + " faults injected, losses: none";
}

TEST(FailingCall, OnceAnywhereKeepsTheOldStateOrGivesTheNewOne) {
  reportFigure("errors.once", figure(failEverywhere(FaultKind::Error, true)));
}

TEST(FailingCall, AndAllThatFollowKeepsTheOldStateOrGivesTheNewOne) {
  reportFigure("errors.on", figure(failEverywhere(FaultKind::ErrorsOn, false)));
}

/// A session whose backup meets the fault, and which is reverted all the same.
class RevertedSession : public FileOperation {
public:
  [[nodiscard]] std::string name() const override { return "a session"; }

  core::Status run() override {
    core::WorkspaceBackup session;
    const core::Status prepared = session.prepare(backup());
    core::Status taken = session.take(workspace(), backup());
    endFaults();
    edit();
    (void)session.restore(workspace(), backup());
    return prepared.ok() ? taken : prepared;
  }

  [[nodiscard]] std::string wrongWhenCutOff() const override { return {}; }
  [[nodiscard]] std::string wrongWhenFailed() const override {
    return lossAgainst(before_, edited_, contentsOf(workspace()));
  }
  [[nodiscard]] std::string wrongWhenDone() const override {
    return contentsOf(workspace()) == before_ ? "" : "not reverted\n";
  }

private:
  void prepare() override {
    before_ = contentsOf(workspace());
    core::WorkspaceBackup session;
    (void)session.prepare(at("tmp/other"));
    (void)session.take(workspace(), at("tmp/other"));
    edit();
    edited_ = contentsOf(workspace());
    (void)session.restore(workspace(), at("tmp/other"));
  }

  Contents before_;
  Contents edited_;
};

TEST(FailingCall, OfABackupNeverCostsAFileWhenTheSessionIsReverted) {
  RevertedSession session;
  session.placeIn(memoryFolder());
  const long faults = failAtEveryCall(session, {.kind = FaultKind::Error, .withReading = true}) +
                      failAtEveryCall(session, {.kind = FaultKind::ErrorsOn, .withReading = true});
  EXPECT_GT(faults, 100);
  reportFigure("errors.backup", figure(faults));
}

TEST(FailingCall, AShortWriteIsContinued) {
  long faults = 0;
  for (const auto& operation : allFileOperations()) {
    SCOPED_TRACE(operation->name());
    faults += failAtEveryCall(*operation, {.kind = FaultKind::ShortWrite});
  }
  reportFigure("errors.short", figure(faults));
}

} // namespace
} // namespace vireonix::test
