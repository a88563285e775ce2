// One line for a log file that has almost reached the size at which it is rotated, beside a copy of
// the same file that is as durable: both leave a file of 4 MiB on the disk under its name.
#include "measure.h"

#include "Core/log_file.h"
#include "support/temporary_folder.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>

namespace {

namespace bench = vireonix::bench;
namespace core = vireonix::core;

constexpr double kLimit = 1.2;
constexpr size_t kLogSize = size_t{4} * 1024 * 1024;
// What all rounds add must not reach the rotation.
constexpr size_t kRoom = size_t{16} * 1024;
constexpr size_t kLineLength = 64;

void require(bool condition, const char* what) {
  if (!condition)
    throw std::runtime_error(what);
}

std::string logText() {
  const std::string line = std::string(kLineLength - 1, 'x') + "\n";
  std::string text;
  while (text.size() < kLogSize - kRoom)
    text += line;
  return text;
}

// As `cp` does, with what it leaves out: the disk.
void copyDurably(const std::string& folder, const std::string& from, const std::string& to) {
  const int in = open(from.c_str(), O_RDONLY | O_CLOEXEC);
  const std::string fresh = to + ".new";
  const int out = open(fresh.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
  ssize_t copied = 1;
  while (copied > 0)
    copied = copy_file_range(in, nullptr, out, nullptr, kLogSize, 0);
  require(copied == 0 && fsync(out) == 0, "the copy failed");
  close(in);
  close(out);
  require(rename(fresh.c_str(), to.c_str()) == 0, "the copy could not be put in its place");
  const int parent = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  require(fsync(parent) == 0, "the folder could not be synced");
  close(parent);
}

void measure() {
  const vireonix::test::TemporaryFolder home;
  const std::string log = home.write("log/Log.txt", logText());
  const std::string copy = home.write("copy/Log.txt", logText());
  const auto clock = [] { return std::string("2026-11-16 07:54:43"); };
  bench::compare(
      {.what = "one log line at 4 MiB",
       .reference = "copying the same file durably",
       .limit = kLimit,
       .rounds = 45},
      [&] {
        return bench::secondsOf([&] {
          require(core::appendToLog(home.at("log"), "the picture was replaced", clock).ok(),
                  "the line was not added");
        });
      },
      [&] { return bench::secondsOf([&] { copyDurably(home.at("copy"), log, copy); }); });
  require(!std::filesystem::exists(home.at("log/backupLog")), "the log was rotated");
}

} // namespace

int main() {
  try {
    measure();
  } catch (const std::exception& error) {
    std::fprintf(stderr, "log_bench: %s\n", error.what());
    return EXIT_FAILURE;
  }
  return EXIT_SUCCESS;
}
