// Each operation killed before each of its calls that change files.
#include "file_operation.h"

#include "support/faults.h"
#include "support/figures.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace vireonix::test {
namespace {

constexpr long kMostCalls = 100'000;

class KilledAtEveryCall : public testing::TestWithParam<bool> {};

/// Kills the operation at the call; answers whether that came before its end.
bool killAt(FileOperation& operation, long call, bool withoutExchange) {
  SCOPED_TRACE("killed at call " + std::to_string(call));
  operation.setUp();
  Fault fault{.kind = FaultKind::Kill, .at = call};
  fault.withoutExchange = withoutExchange;
  const Experiment experiment = runWithFault(fault, [&] { return operation.run().error; });
  EXPECT_EQ(experiment.crash, "");
  if (!experiment.killed) {
    EXPECT_EQ(experiment.answer, 0);
    EXPECT_EQ(experiment.descriptors, 0);
    EXPECT_EQ(operation.wrongWhenDone(), "");
  }
  EXPECT_EQ(operation.wrongWhenCutOff(), "") << "at " << experiment.hit;
  operation.startAgain();
  EXPECT_EQ(operation.leftBeside(), "");
  return experiment.killed;
}

TEST_P(KilledAtEveryCall, EveryOperationLeavesTheOldStateOrTheNewOne) {
  long kills = 0;
  for (const auto& operation : allFileOperations()) {
    SCOPED_TRACE(operation->name());
    long call = 1;
    while (call < kMostCalls && killAt(*operation, call, GetParam()) && !HasFailure())
      ++call;
    EXPECT_GT(call, 3) << "the kills did not fall into the work";
    std::cout << operation->name() << ": killed at each of " << call - 1 << " calls\n";
    kills += call - 1;
  }
  reportFigure(GetParam() ? "kill.renames" : "kill.calls",
               std::to_string(kills) + " instants, losses: none");
}

INSTANTIATE_TEST_SUITE_P(FileSystem, KilledAtEveryCall, testing::Bool(), [](const auto& info) {
  return info.param ? "WithoutExchange" : "WithExchange";
});

TEST(KilledAtEveryCallOfTheNextStart, WhatAKilledRestoreLeftIsClearedAllTheSame) {
  long kills = 0;
  for (const auto& operation : allFileOperations()) {
    if (operation->name() != "restore")
      continue;
    for (long first = 1; first < kMostCalls; first += 3) {
      bool isKilled = true;
      long killedBefore = 0;
      for (long second = 1; isKilled && !HasFailure(); second += 2) {
        SCOPED_TRACE(std::to_string(first) + ", then " + std::to_string(second));
        operation->setUp();
        const Experiment restore =
            runWithFault({.kind = FaultKind::Kill, .at = first, .withoutExchange = true},
                         [&] { return operation->run().error; });
        const Experiment start = runWithFault({.kind = FaultKind::Kill, .at = second}, [&] {
          operation->startAgain();
          return 0;
        });
        EXPECT_EQ(operation->wrongWhenCutOff(), "");
        operation->startAgain();
        EXPECT_EQ(operation->leftBeside(), "");
        isKilled = restore.killed && start.killed;
        killedBefore += isKilled ? 1 : 0;
      }
      kills += killedBefore;
      if (killedBefore == 0)
        break;
    }
  }
  EXPECT_GT(kills, 10);
  reportFigure("kill.twice", std::to_string(kills) + " pairs of instants, losses: none");
}

} // namespace
} // namespace vireonix::test
