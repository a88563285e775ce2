// What the plug-in does to files, one operation at a time, on a small workspace: the subjects of
// the tests with faults.
#pragma once

#include "Core/status.h"
#include "Core/workspace_backup.h"

#include "support/temporary_folder.h"
#include "tree_contents.h"

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace vireonix::test {

/// "home/workspace" is a workspace, "bundle" what it is completed from, "tmp" holds the backup,
/// "log" the log.
class FileOperation {
public:
  virtual ~FileOperation();

  [[nodiscard]] virtual std::string name() const = 0;

  /// Chooses the folder below which everything is.
  void placeIn(const std::filesystem::path& place);

  /// Makes the folders as they are before the operation, whatever is there.
  void setUp();
  virtual core::Status run() = 0;

  /// What is wrong after the process was killed at work.
  [[nodiscard]] virtual std::string wrongWhenCutOff() const = 0;
  /// What is wrong after the operation answered that it had failed.
  [[nodiscard]] virtual std::string wrongWhenFailed() const { return wrongWhenCutOff(); }
  /// What is wrong after the operation answered that it had succeeded.
  [[nodiscard]] virtual std::string wrongWhenDone() const = 0;
  /// Whether a failure of this call may leave something beside until the next start.
  [[nodiscard]] virtual bool mayLeave(const std::string& call) const {
    return call == "unlink" || call == "open" || call == "stat"; // all of them removal's
  }
  /// Temporary entries that were left anywhere.
  [[nodiscard]] std::string leftBeside() const;

  /// What the next start of the plug-in does with what is there.
  void startAgain() const;

  /// Where the folders are.
  [[nodiscard]] std::string at(std::string_view relative) const { return folder_->at(relative); }

protected:
  virtual void prepare() {}
  void write(std::string_view relative, std::string_view bytes) const {
    folder_->write(relative, bytes);
  }
  [[nodiscard]] std::string bytes(std::string_view relative) const {
    return fileBytes(at(relative));
  }
  [[nodiscard]] std::string workspace() const { return at("home/workspace"); }
  [[nodiscard]] std::string backup() const { return at("tmp/vireonix"); }
  /// Edits the workspace as a session does.
  void edit() const;

private:
  std::unique_ptr<TemporaryFolder> folder_;
};

using FileOperations = std::vector<std::unique_ptr<FileOperation>>;

/// One of each, in folders of their own below the given one.
FileOperations allFileOperations(const std::filesystem::path& place = memoryFolder());

} // namespace vireonix::test
