// Measures something of ours beside a named reference in the same run, alternating, and prints one
// line of JSON for each row of the table. figures.mjs makes medians and ratios of the samples.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace vireonix::bench {

/// What a row's limit stands for.
enum class Judged {
  Ratio,      ///< ours / reference, of each round
  Difference, ///< ours - reference
  Ours,       ///< ours alone; the reference, if any, is there to be looked at
};

/// What is measured, beside what, and the limit to stay within.
struct Comparison {
  std::string what;
  std::string reference;
  double limit = 1.0;
  int rounds = 15;
  std::string unit = "s";
  Judged judged = Judged::Ratio;
  double share = 0.5; ///< of the samples that stay within: 0.5 judges the median
  int size = 0;       ///< how many `of` there are, where the row shows how the cost grows
  std::string of = {};
  bool isInThisProcess = true; ///< else this process' peak memory is not the row's
};

/// Whether few rounds of small sizes are wanted, to see that a benchmark works.
bool isQuick();

/// 10, 100 … up to `largest`: the sizes at which a cost that grows is measured.
std::vector<int> sizesTo(int largest);

/// Seconds of one call.
double secondsOf(const std::function<void()>& work);

/// Calls both in turn, once to warm up and then `rounds` times, and prints a row: the samples, the
/// limit, and the peak memory of this process in the first of our calls. The works measure
/// themselves where set-up between rounds must not count: they answer the seconds that count, or
/// another measure in the comparison's unit.
void compare(const Comparison& comparison, const std::function<double()>& ours,
             const std::function<double()>& reference);

/// Prints a row of samples that are there already. `peakKiB` is 0 where nobody has measured it.
void report(const Comparison& comparison, const std::vector<double>& ours,
            const std::vector<double>& theirs, long peakKiB);

/// Prints a figure that stands against a limit of its own instead of a reference.
void report(const std::string& what, double value, const std::string& unit, double limit);

/// The most memory that this process has had since it began or this was forgotten, in KiB.
long peakMemory();
void forgetPeakMemory();

} // namespace vireonix::bench
