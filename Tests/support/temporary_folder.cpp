#include "support/temporary_folder.h"

#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>

namespace vireonix::test {

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder() : TemporaryFolder(fs::temp_directory_path()) {}

TemporaryFolder::TemporaryFolder(const fs::path& parent) {
  std::string pattern = parent / "vireonix-test-XXXXXX";
  if (mkdtemp(pattern.data()) == nullptr)
    throw std::runtime_error("no temporary folder could be made");
  path_ = pattern;
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

std::string TemporaryFolder::at(std::string_view relative) const {
  return path_ / relative;
}

std::string TemporaryFolder::write(std::string_view relative, std::string_view bytes) const {
  const fs::path file = path_ / relative;
  fs::create_directories(file.parent_path());
  std::ofstream(file, std::ios::binary)
      .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  return file;
}

fs::path memoryFolder() {
  constexpr const char* kMemory = "/dev/shm";
  return access(kMemory, W_OK | X_OK) == 0 ? fs::path(kMemory) : fs::temp_directory_path();
}

std::string fileBytes(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

} // namespace vireonix::test
