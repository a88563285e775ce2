// The backup and the restore of a workspace beside cp -a and rm -rf of the same tree.
#include "Core/workspace_backup.h"
#include "measure.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <stdexcept>

namespace {

namespace fs = std::filesystem;
using namespace vireonix;

constexpr double kTarget = 1.25;

struct Shape {
  std::string name;
  int files;
  size_t bytesEach;
  int filesInFolder;
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

void run(const std::vector<const char*>& words) {
  const pid_t process = fork();
  if (process == 0) {
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (const char* word : words)
      arguments.push_back(const_cast<char*>(word));
    arguments.push_back(nullptr);
    execvp(arguments.front(), arguments.data());
    _exit(127);
  }
  int status = 0;
  if (waitpid(process, &status, 0) != process || status != 0)
    throw std::runtime_error(std::string(words.front()) + " failed");
}

void require(const core::Status& status) {
  if (!status.ok())
    throw std::runtime_error(status.path + ": " + std::to_string(status.error));
}

/// Each copy of the workspace is made anew for each round and removed afterwards, outside the time.
void compareBackup(const fs::path& home, const Shape& shape) {
  const std::string workspace = home / "workspace";
  const std::string backup = home / "backup";
  bench::compare(
      {"backup, " + shape.name, "cp -a", kTarget},
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

void compareRestore(const fs::path& home, const Shape& shape, const std::string& backup,
                    const std::string& where) {
  const std::string workspace = home / "workspace";
  bench::compare(
      {"restore" + where + ", " + shape.name, "rm -rf, cp -a", kTarget},
      [&] {
        core::WorkspaceBackup session;
        require(session.prepare(backup));
        require(session.take(workspace, backup));
        return bench::secondsOf([&] { require(session.restore(workspace, backup)); });
      },
      [&] {
        run({"cp", "-a", workspace.c_str(), backup.c_str()});
        return bench::secondsOf([&] {
          run({"rm", "-rf", workspace.c_str()});
          run({"cp", "-a", backup.c_str(), workspace.c_str()});
          run({"rm", "-rf", backup.c_str()});
        });
      });
}

} // namespace

int main() {
  std::string pattern = fs::temp_directory_path() / "vireonix-bench-XXXXXX";
  if (mkdtemp(pattern.data()) == nullptr)
    return 1;
  const fs::path home = pattern;
  const std::string far = "/dev/shm/" + home.filename().string() + "-far";
  for (const Shape& shape : {Shape{"43 MB in 250 files", 250, 172'000, 25},
                             Shape{"10,000 small files", 10'000, 300, 100}}) {
    makeTree(home / "workspace", shape);
    compareBackup(home, shape);
    compareRestore(home, shape, home / "backup", "");
    compareRestore(home, shape, far, " from another file system");
    fs::remove_all(home / "workspace");
  }
  fs::remove_all(home);
  return 0;
}
