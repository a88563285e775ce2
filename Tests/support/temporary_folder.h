// A fresh folder for one test, removed with everything in it at the end.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace vireonix::test {

class TemporaryFolder {
public:
  TemporaryFolder();
  /// In the given folder.
  explicit TemporaryFolder(const std::filesystem::path& parent);
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  [[nodiscard]] const std::filesystem::path& path() const { return path_; }
  /// The path of an entry below the folder.
  [[nodiscard]] std::string at(std::string_view relative) const;

  /// Writes a file below the folder, with the folders that lead to it; answers its path.
  std::string write(std::string_view relative, std::string_view bytes) const;

private:
  std::filesystem::path path_;
};

/// A folder for what many rounds make and remove: in memory where there is such a file system.
std::filesystem::path memoryFolder();

/// All bytes of a file; empty when it cannot be read.
std::string fileBytes(const std::filesystem::path& path);

} // namespace vireonix::test
