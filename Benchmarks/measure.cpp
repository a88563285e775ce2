#include "measure.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>

namespace vireonix::bench {
namespace {

constexpr int kQuickRounds = 2;
constexpr int kQuickSize = 1'000;

std::string quoted(std::string_view text) {
  std::string out = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\')
      out += '\\';
    out += c;
  }
  return out + '"';
}

std::string list(const std::vector<double>& samples) {
  std::ostringstream out;
  out.precision(9);
  for (const double sample : samples)
    out << (out.tellp() > 0 ? "," : "") << sample;
  return "[" + out.str() + "]";
}

const char* nameOf(Judged judged) {
  switch (judged) {
  case Judged::Ratio:
    return "ratio";
  case Judged::Difference:
    return "difference";
  case Judged::Ours:
    break;
  }
  return "ours";
}

} // namespace

bool isQuick() {
  return std::getenv("VIREONIX_BENCH_QUICK") != nullptr;
}

std::vector<int> sizesTo(int largest) {
  std::vector<int> sizes;
  for (int size = 10; size <= (isQuick() ? std::min(largest, kQuickSize) : largest); size *= 10)
    sizes.push_back(size);
  return sizes;
}

double secondsOf(const std::function<void()>& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

void compare(const Comparison& comparison, const std::function<double()>& ours,
             const std::function<double()>& reference) {
  forgetPeakMemory();
  ours();
  const long peak = comparison.isInThisProcess ? peakMemory() : 0;
  reference();
  std::vector<double> oursSamples;
  std::vector<double> referenceSamples;
  for (int i = 0; i < (isQuick() ? kQuickRounds : comparison.rounds); ++i) {
    oursSamples.push_back(ours());
    referenceSamples.push_back(reference());
  }
  report(comparison, oursSamples, referenceSamples, peak);
}

void report(const Comparison& comparison, const std::vector<double>& ours,
            const std::vector<double>& theirs, long peakKiB) {
  std::ostringstream row;
  row << "{\"what\":" << quoted(comparison.what) << ",\"unit\":" << quoted(comparison.unit)
      << ",\"ours\":" << list(ours);
  if (!theirs.empty())
    row << ",\"reference\":" << quoted(comparison.reference) << ",\"theirs\":" << list(theirs);
  if (comparison.size > 0)
    row << ",\"size\":" << comparison.size << ",\"of\":" << quoted(comparison.of);
  if (peakKiB > 0)
    row << ",\"peakKiB\":" << peakKiB;
  row << R"(,"judged":")" << nameOf(comparison.judged) << R"(","share":)" << comparison.share
      << ",\"limit\":" << comparison.limit << "}";
  std::puts(row.str().c_str());
  std::fflush(stdout);
}

void report(const std::string& what, double value, const std::string& unit, double limit) {
  report({.what = what, .reference = {}, .limit = limit, .unit = unit, .judged = Judged::Ours},
         {value}, {}, peakMemory());
}

long peakMemory() {
  std::ifstream status("/proc/self/status");
  long peak = 0;
  for (std::string line; std::getline(status, line);)
    std::sscanf(line.c_str(), "VmHWM: %ld", &peak);
  return peak;
}

void forgetPeakMemory() {
  std::ofstream("/proc/self/clear_refs") << "5";
}

} // namespace vireonix::bench
