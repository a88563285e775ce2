// Runs a test's body in a forked child, for state that a process keeps for good. No AppKit in the
// body: the child shares the parent's connection to the display.
#pragma once

#include <gtest/gtest.h>

#include <functional>

namespace vireonix::test {

/// Success when the body ended without a failed expectation and without a crash.
testing::AssertionResult passesInOwnProcess(const std::function<void()>& body);

} // namespace vireonix::test
