#include "support/memory_use.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <malloc.h>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace vireonix::test {
namespace {

constexpr double kBytesInKiB = 1024;

std::string wordOf(const fs::path& file) {
  std::ifstream in(file);
  std::string word;
  std::getline(in, word);
  return word;
}

std::vector<std::string> childrenOf(const std::string& process) {
  std::vector<std::string> children;
  std::error_code error;
  for (const auto& task : fs::directory_iterator("/proc/" + process + "/task", error)) {
    std::ifstream in(task.path() / "children");
    children.insert(children.end(), std::istream_iterator<std::string>(in),
                    std::istream_iterator<std::string>());
  }
  return children;
}

// The sum of the lines that begin with `name`.
double memory(const std::string& process, std::string_view name) {
  std::ifstream in("/proc/" + process + "/smaps_rollup");
  double sum = 0;
  for (std::string line; std::getline(in, line);)
    if (line.starts_with(name))
      sum += std::stod(line.substr(line.find(':') + 1));
  return sum;
}

double privateMemoryBelow(const std::string& process, std::string_view name) {
  double sum = 0;
  for (const std::string& child : childrenOf(process)) {
    if (wordOf("/proc/" + child + "/comm").starts_with(name))
      sum += memory(child, "Private_");
    sum += privateMemoryBelow(child, name);
  }
  return sum;
}

double sharedOutMemory(const std::string& process) {
  double sum = memory(process, "Pss:");
  for (const std::string& child : childrenOf(process))
    sum += sharedOutMemory(child);
  return sum;
}

} // namespace

double heapInUse() {
  const struct mallinfo2 books = mallinfo2();
  return static_cast<double>(books.uordblks + books.hblkhd) / kBytesInKiB;
}

double privateMemoryOfChildren(std::string_view name) {
  return privateMemoryBelow("self", name);
}

double memoryOfTree() {
  return sharedOutMemory("self");
}

} // namespace vireonix::test
