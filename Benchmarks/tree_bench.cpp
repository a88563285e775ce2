// The backup and the restore of a workspace beside cp -a and rm -rf of the same tree.
#include "command.h"
#include "disk_image.h"
#include "measure.h"

#include "Core/file_system_calls.h"
#include "Core/workspace_backup.h"
#include "support/temporary_folder.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <stdexcept>
#include <utility>

namespace {

namespace fs = std::filesystem;
using namespace vireonix;
using bench::run;

constexpr double kLimit = 1.1;
constexpr double kLimitWithSharedBlocks = 1.0;
constexpr size_t kSharedBytes = size_t{1} << 20;

struct Shape {
  std::string name = {}; ///< of a row of its own, or
  std::string of = {};   ///< what grows
  int files = 0;
  size_t bytesEach = 0;
  int filesInFolder = 1;
};

void makeTree(const fs::path& root, const Shape& shape) {
  std::minstd_rand random(1);
  std::string bytes(shape.bytesEach, '\0');
  for (int i = 0; i < shape.files; ++i) {
    const fs::path folder = root / std::to_string(i / shape.filesInFolder);
    fs::create_directories(folder);
    for (char& byte : bytes)
      byte = static_cast<char>(random());
    std::ofstream(folder / std::to_string(i), std::ios::binary) << bytes;
  }
}

void require(const core::Status& status) {
  if (!status.ok())
    throw std::runtime_error(status.path + ": " + std::to_string(status.error));
}

// The shortest of all limits where a copy need not copy: the blocks are shared.
double limitIn(const fs::path& folder) {
  std::ofstream(folder / "shared") << std::string(kSharedBytes, 'x');
  const int from = open((folder / "shared").c_str(), O_RDONLY | O_CLOEXEC);
  const int to = open((folder / "sharing").c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
  const bool canShare = core::calls::shareBlocks(from, to) == 0;
  close(from);
  close(to);
  return canShare ? kLimitWithSharedBlocks : kLimit;
}

bench::Comparison rowOf(const std::string& what, const Shape& shape, const char* reference,
                        double limit) {
  const std::string name = shape.of.empty() ? what + ", " + shape.name : what;
  return {.what = name,
          .reference = reference,
          .limit = limit,
          .size = shape.of.empty() ? 0 : shape.files,
          .of = shape.of};
}

// Each copy of the workspace is made anew for each round and removed afterwards, outside the time.
void compareBackup(const fs::path& home, const Shape& shape, const std::string& what) {
  const std::string workspace = home / "workspace";
  const std::string backup = home / "backup";
  bench::compare(
      rowOf(what, shape, "cp -a", limitIn(home)),
      [&] {
        core::WorkspaceBackup session;
        const double seconds = bench::secondsOf([&] {
          require(session.prepare(backup));
          require(session.take(workspace, backup));
        });
        require(session.remove(backup));
        return seconds;
      },
      [&] {
        const double seconds = bench::secondsOf([&] {
          run({"cp", "-a", workspace.c_str(), backup.c_str()});
        });
        require(core::removeTree(backup));
        return seconds;
      });
}

// A way to put a backup back by commands.
struct Restore {
  const char* name;
  void (*run)(const std::string& workspace, const std::string& backup);
};

// For a moment there is no workspace.
constexpr Restore kRemoveAndCopy = {
    .name = "rm -rf and cp -a", .run = [](const std::string& workspace, const std::string& backup) {
      run({"rm", "-rf", workspace.c_str()});
      run({"cp", "-a", backup.c_str(), workspace.c_str()});
      run({"rm", "-rf", backup.c_str()});
    }};

// As ours does, the old tree stays until the new one is whole.
constexpr Restore kCopyAndExchange = {
    .name = "cp -a beside, mv and rm -rf",
    .run = [](const std::string& workspace, const std::string& backup) {
      const std::string made = workspace + ".new";
      const std::string old = workspace + ".old";
      run({"cp", "-a", backup.c_str(), made.c_str()});
      run({"mv", workspace.c_str(), old.c_str()});
      run({"mv", made.c_str(), workspace.c_str()});
      run({"rm", "-rf", old.c_str(), backup.c_str()});
    }};

void compareRestore(const fs::path& home, const Shape& shape, const std::string& backup,
                    const std::string& what, const Restore& reference = kRemoveAndCopy) {
  const std::string workspace = home / "workspace";
  bench::compare(
      rowOf(what, shape, reference.name, kLimit),
      [&] {
        core::WorkspaceBackup session;
        require(session.prepare(backup));
        require(session.take(workspace, backup));
        return bench::secondsOf([&] { require(session.restore(workspace, backup)); });
      },
      [&] {
        run({"cp", "-a", workspace.c_str(), backup.c_str()});
        return bench::secondsOf([&] { reference.run(workspace, backup); });
      });
}

// In a folder of the given file system, with nothing else in it.
void measure(const fs::path& home, Shape shape, const std::string& fileSystem) {
  shape.name += ", " + fileSystem;
  makeTree(home / "workspace", shape);
  sync(); // Files that are not written yet cannot share their blocks at once.
  compareBackup(home, shape, "backup");
  compareRestore(home, shape, home / "backup", "restore");
  const test::TemporaryFolder far(test::memoryFolder());
  const std::string backup = far.at("backup");
  compareRestore(home, shape, backup, "restore from another file system");
  compareRestore(home, shape, backup, "restore from another file system, beside one as safe",
                 kCopyAndExchange);
}

void measureOnDisk(const std::string& kind, const Shape& shape) {
  const bench::DiskImage disk(kind);
  measure(disk.path(), shape, kind);
}

void measureOnDisks() {
  const Shape large = {
      .name = "43 MB in 250 files", .files = 250, .bytesEach = 172'000, .filesInFolder = 25};
  const Shape small = {
      .name = "1,000 small files", .files = 1'000, .bytesEach = 300, .filesInFolder = 100};
  if (!bench::DiskImage::isPossible()) {
    for (const Shape& shape : {large, small})
      measure(test::TemporaryFolder().path(), shape, "this disk");
    return;
  }
  measureOnDisk("ext4", large);
  measureOnDisk("ext4", small);
  // Where blocks can be shared.
  measureOnDisk("xfs", large);
  measureOnDisk("btrfs", large);
}

// Sizes are compared where making files does not depend on what was removed before.
void measureInMemory(const Shape& shape) {
  const test::TemporaryFolder home(test::memoryFolder());
  makeTree(home.path() / "workspace", shape);
  compareBackup(home.path(), shape, "backup in memory");
  compareRestore(home.path(), shape, home.at("backup"), "restore in memory");
}

} // namespace

int main() {
  try {
    measureOnDisks();
    for (const int files : bench::sizesTo(100'000))
      measureInMemory(
          {.of = "small files", .files = files, .bytesEach = 300, .filesInFolder = 100});
  } catch (const std::exception& error) {
    std::fprintf(stderr, "tree_bench: %s\n", error.what());
    return EXIT_FAILURE;
  }
  return EXIT_SUCCESS;
}
