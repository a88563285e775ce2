// Measures something of ours beside a named reference in the same run, alternating, and reports
// both as one figure.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace vireonix::bench {

/// What is measured, beside what, and the ratio (ours / reference) to stay within.
struct Comparison {
  std::string what;
  std::string reference;
  double target = 1.0;
  int rounds = 15;
};

/// Seconds of one call.
double secondsOf(const std::function<void()>& work);

/// Calls both in turn, once to warm up and then `rounds` times, and prints one line of JSON:
/// medians in seconds, their quartiles, the ratio of the medians, the target and the peak memory of
/// this process in KiB. The works time themselves where set-up between rounds must not count: they
/// answer the seconds that count.
void compare(const Comparison& comparison, const std::function<double()>& ours,
             const std::function<double()>& reference);

/// Prints a figure that stands against a limit of its own instead of a reference.
void report(const std::string& what, double value, const std::string& unit, double limit);

} // namespace vireonix::bench
