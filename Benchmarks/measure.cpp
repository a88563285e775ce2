#include "measure.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <sys/resource.h>

namespace vireonix::bench {
namespace {

struct Summary {
  double lowerQuartile = 0;
  double median = 0;
  double upperQuartile = 0;
};

Summary summaryOf(std::vector<double> samples) {
  std::sort(samples.begin(), samples.end());
  const auto at = [&samples](double share) {
    return samples.at(
        static_cast<size_t>(std::lround(share * static_cast<double>(samples.size() - 1))));
  };
  return {at(0.25), at(0.5), at(0.75)};
}

long peakMemory() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss;
}

std::string json(const std::string& name, const Summary& summary) {
  char text[160];
  std::snprintf(text, sizeof text, R"("%s":{"q1":%.9f,"median":%.9f,"q3":%.9f})", name.c_str(),
                summary.lowerQuartile, summary.median, summary.upperQuartile);
  return text;
}

} // namespace

double secondsOf(const std::function<void()>& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

void compare(const Comparison& comparison, const std::function<double()>& ours,
             const std::function<double()>& reference) {
  std::vector<double> oursSamples;
  std::vector<double> referenceSamples;
  ours();
  reference();
  for (int i = 0; i < comparison.rounds; ++i) {
    oursSamples.push_back(ours());
    referenceSamples.push_back(reference());
  }
  const Summary oursSummary = summaryOf(oursSamples);
  const Summary referenceSummary = summaryOf(referenceSamples);
  std::printf("{\"what\":\"%s\",\"reference\":\"%s\",%s,%s,\"ratio\":%.3f,\"target\":%.2f,"
              "\"rounds\":%d,\"peakKiB\":%ld}\n",
              comparison.what.c_str(), comparison.reference.c_str(),
              json("ours", oursSummary).c_str(), json("theirs", referenceSummary).c_str(),
              oursSummary.median / referenceSummary.median, comparison.target, comparison.rounds,
              peakMemory());
  std::fflush(stdout);
}

void report(const std::string& what, double value, const std::string& unit, double limit) {
  std::printf("{\"what\":\"%s\",\"value\":%.6f,\"unit\":\"%s\",\"limit\":%.6f,\"peakKiB\":%ld}\n",
              what.c_str(), value, unit.c_str(), limit, peakMemory());
  std::fflush(stdout);
}

} // namespace vireonix::bench
