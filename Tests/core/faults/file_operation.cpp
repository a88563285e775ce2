#include "file_operation.h"

#include "Core/file_tree.h"
#include "Core/log_file.h"
#include "Core/position.h"
#include "Core/slider_document.h"

#include "core/tree_snapshot.h"

#include <sys/stat.h>

#include <cerrno>
#include <filesystem>

namespace vireonix::test {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kFullLog = std::size_t{4} * 1024 * 1024 + 1;

std::string documentOf(const std::string& caption) {
  core::slider::Slide slide;
  slide.backgroundImage = "intro_asset/a.png";
  slide.textObjects = {{{std::string(core::slider::kText), caption}}};
  return core::slider::writeDocument({slide, slide}, {});
}

/// Replaces one file of the workspace.
class Save : public FileOperation {
public:
  Save(std::string file, std::string before, std::string after)
      : file_("home/workspace/" + std::move(file)), before_(std::move(before)),
        after_(std::move(after)) {}

  core::Status run() override { return core::replaceFile(at(file_), after_); }

  [[nodiscard]] std::string wrongWhenCutOff() const override {
    return isKept(before_) || isKept(after_) ? "" : wrong();
  }
  [[nodiscard]] std::string wrongWhenDone() const override { return isKept(after_) ? "" : wrong(); }

  [[nodiscard]] bool mayLeave(const std::string& call) const override { return call == "unlink"; }

private:
  void prepare() override {
    write(file_, before_);
    chmod(at(file_).c_str(), 0640);
  }

  [[nodiscard]] bool isKept(const std::string& state) const {
    return bytes(file_) == state && modeOf(at(file_)) == 0640;
  }
  [[nodiscard]] std::string wrong() const {
    return "mode " + std::to_string(modeOf(at(file_))) + ": " + bytes(file_) + "\n";
  }

  std::string file_;
  std::string before_;
  std::string after_;
};

class SaveDocument : public Save {
public:
  SaveDocument() : Save("intro_asset/data.xml", documentOf("before"), documentOf("after")) {}
  [[nodiscard]] std::string name() const override { return "saving the document"; }
};

class SavePosition : public Save {
public:
  SavePosition()
      : Save("settings.dat", core::positionText({1, 2, 3, 4, 5, 0}),
             core::positionText({6, 7, 8, 9, 10, 1})) {}
  [[nodiscard]] std::string name() const override { return "saving the position"; }
};

/// Opens a session. Whatever becomes of it, the workspace is not touched.
class TakeBackup : public FileOperation {
public:
  [[nodiscard]] std::string name() const override { return "backup"; }

  core::Status run() override {
    core::Status prepared = session_.prepare(backup());
    core::Status taken = session_.take(workspace(), backup());
    return prepared.ok() ? taken : prepared;
  }

  [[nodiscard]] std::string wrongWhenCutOff() const override {
    return difference(before_, snapshot(workspace()));
  }
  [[nodiscard]] std::string wrongWhenDone() const override {
    return wrongWhenCutOff() + difference(before_, snapshot(backup()));
  }

private:
  void prepare() override {
    session_ = core::WorkspaceBackup();
    before_ = snapshot(workspace());
  }

  core::WorkspaceBackup session_;
  TreeSnapshot before_;
};

/// Closes a session.
class CloseSession : public FileOperation {
public:
  [[nodiscard]] std::string wrongWhenDone() const override {
    return difference(expected(), snapshot(workspace()));
  }

protected:
  void prepare() override {
    session_ = core::WorkspaceBackup();
    before_ = snapshot(workspace());
    (void)session_.prepare(backup());
    (void)session_.take(workspace(), backup());
    contentsBefore_ = contentsOf(workspace());
    edit();
    edited_ = snapshot(workspace());
    contentsEdited_ = contentsOf(workspace());
  }

  [[nodiscard]] virtual const TreeSnapshot& expected() const = 0;

  core::WorkspaceBackup session_;
  TreeSnapshot before_;
  TreeSnapshot edited_;
  Contents contentsBefore_;
  Contents contentsEdited_;
};

class Restore : public CloseSession {
public:
  [[nodiscard]] std::string name() const override { return "restore"; }
  core::Status run() override { return session_.restore(workspace(), backup()); }

  [[nodiscard]] std::string wrongWhenCutOff() const override {
    // Caught between two renames it is whole once the plug-in has started again.
    core::clearLeftovers(workspace());
    const TreeSnapshot now = snapshot(workspace());
    return now == before_ || now == edited_ ? "" : difference(before_, now);
  }
  // Where nothing can be made beside the workspace, it is restored file by file.
  [[nodiscard]] std::string wrongWhenFailed() const override {
    return lossAgainst(contentsBefore_, contentsEdited_, contentsOf(workspace()));
  }

private:
  [[nodiscard]] const TreeSnapshot& expected() const override { return before_; }
};

class Apply : public CloseSession {
public:
  [[nodiscard]] std::string name() const override { return "apply"; }
  core::Status run() override { return session_.remove(backup()); }
  [[nodiscard]] std::string wrongWhenCutOff() const override { return wrongWhenDone(); }

private:
  [[nodiscard]] const TreeSnapshot& expected() const override { return edited_; }
};

/// Another session begins while this one is open: this one is then reverted, or left as edited.
class BeginBeside : public CloseSession {
public:
  [[nodiscard]] std::string name() const override { return "a second session's beginning"; }
  core::Status run() override {
    core::WorkspaceBackup second;
    core::Status status = second.prepare(backup());
    return status.ok() ? second.take(at("home"), backup()) : status;
  }
  [[nodiscard]] std::string wrongWhenCutOff() const override {
    core::WorkspaceBackup first = session_;
    (void)first.restore(workspace(), backup());
    const TreeSnapshot now = snapshot(workspace());
    return now == before_ || now == edited_ ? "" : difference(before_, now);
  }

private:
  [[nodiscard]] const TreeSnapshot& expected() const override { return edited_; }
};

/// Adds an entry to the log. What was logged before is never lost.
class Log : public FileOperation {
public:
  explicit Log(std::string before) : before_(std::move(before)) {}

  core::Status run() override {
    return core::appendToLog(at("log"), "entry", [] { return "2026-11-16 07:54:43"; });
  }

  [[nodiscard]] std::string wrongWhenCutOff() const override {
    const bool isKept = bytes("log/Log.txt").starts_with(before_) || rotated() == before_;
    return wrongAtTheEnd() + (isKept ? "" : "earlier entries are gone\n");
  }
  [[nodiscard]] std::string wrongWhenDone() const override {
    return wrongWhenCutOff() + (bytes("log/Log.txt").ends_with(entry()) ? "" : "no entry\n");
  }

protected:
  void prepare() override {
    fs::remove_all(at("log"));
    write("log/Log.txt", before_);
  }

  /// What is wrong with the log file besides what was in it before.
  [[nodiscard]] std::string wrongAtTheEnd() const {
    const std::string now = bytes("log/Log.txt");
    const std::string rest = now.starts_with(before_) ? now.substr(before_.size()) : now;
    const bool isWhole = rest.empty() || rest == entry() || rest == "\n" + entry();
    return isWhole ? "" : "the log now has " + std::to_string(now.size()) + " bytes\n";
  }

private:
  [[nodiscard]] std::string rotated() const { return bytes("log/backupLog/20261116_075443.txt"); }
  static std::string entry() { return "2026-11-16 07:54:43{bundle}:entry"; }

  std::string before_;
};

class LogEntry : public Log {
public:
  LogEntry() : Log("2026-11-16 07:54:42{bundle}:earlier") {}
  [[nodiscard]] std::string name() const override { return "a log entry"; }
};

class LogRotation : public Log {
public:
  LogRotation() : Log(std::string(kFullLog, 'x')) {}
  [[nodiscard]] std::string name() const override { return "log rotation"; }
  // The log must not grow for ever: what cannot be put aside is given up.
  [[nodiscard]] std::string wrongWhenFailed() const override { return wrongAtTheEnd(); }
};

/// What an installation does to a workspace, new or not.
class Install : public FileOperation {
public:
  core::Status run() override {
    const core::MergeOptions options{.hidden = true, .danglingLinks = true};
    if (core::errorAt(workspace()) != ENOENT)
      return core::mergeTree(at("bundle"), workspace(), options);
    core::Status filled;
    core::Status made = core::makeFolderWhole(workspace(), [&](const std::string& folder) {
      filled = core::mergeTree(at("bundle"), folder, {.hidden = false});
      core::Status copied = core::copyFile(folder + "/vireonix.swf", folder + "/book.swf");
      filled = filled.ok() ? copied : filled;
    });
    return made.ok() ? filled : made;
  }

  [[nodiscard]] std::string wrongWhenCutOff() const override {
    if (!core::exists(workspace()))
      return installed_.contains("added") ? "the workspace is gone\n" : "";
    Contents all = installed_;
    Contents none;
    for (const auto& [path, text] : all)
      if (before_.contains(path))
        none.emplace(path, text);
    return lossAgainst(all, none, withoutTemporaries(contentsOf(workspace())));
  }
  [[nodiscard]] std::string wrongWhenDone() const override {
    return contentsOf(workspace()) == installed_ ? "" : "not all is installed\n";
  }

protected:
  Contents before_;
  Contents installed_;
};

class InstallFresh : public Install {
public:
  [[nodiscard]] std::string name() const override { return "first installation"; }

private:
  void prepare() override {
    installed_ = contentsOf(at("bundle"));
    installed_["book.swf"] = installed_["vireonix.swf"];
    fs::remove_all(workspace());
  }
};

class InstallCompletion : public Install {
public:
  [[nodiscard]] std::string name() const override { return "completing installation"; }

private:
  void prepare() override {
    fs::remove_all(workspace() + "/js");
    fs::remove(workspace() + "/index.html");
    write("home/workspace/added", "the user's");
    before_ = contentsOf(workspace());
    installed_ = before_;
    installed_.merge(contentsOf(at("bundle")));
  }
};

} // namespace

FileOperation::~FileOperation() = default;

void FileOperation::placeIn(const fs::path& place) {
  folder_ = std::make_unique<TemporaryFolder>(place);
}

void FileOperation::setUp() {
  for (const char* part : {"home", "tmp"})
    fs::remove_all(at(part));
  if (!core::exists(at("bundle"))) {
    write("bundle/index.html", "<html>");
    write("bundle/js/player.js", std::string(70'000, 'j'));
    write("bundle/vireonix.swf", "movie");
    write("bundle/intro_asset/data.xml", documentOf("bundle"));
  }
  fs::create_directory(at("tmp"));
  fs::create_directory(at("home"));
  fs::copy(at("bundle"), workspace(), fs::copy_options::recursive);
  write("home/workspace/intro_asset/a.png", std::string(40'000, 'a'));
  write("home/workspace/settings.dat", core::positionText({}));
  write("home/workspace/.hidden/.deeper", "hidden");
  fs::create_symlink("intro_asset/a.png", workspace() + "/link");
  fs::create_hard_link(workspace() + "/index.html", workspace() + "/same.html");
  setTime(workspace() + "/intro_asset/data.xml", 1'000'000, 5);
  chmod(workspace().c_str(), 0750);
  prepare();
}

void FileOperation::edit() const {
  write("home/workspace/intro_asset/data.xml", documentOf("edited"));
  write("home/workspace/intro_asset/b.png", "added");
  fs::remove(workspace() + "/intro_asset/a.png");
}

std::string FileOperation::leftBeside() const {
  std::string left;
  for (const auto& entry : fs::recursive_directory_iterator(folder_->path()))
    if (entry.path().filename().string().find(".vireonix-") != std::string::npos)
      left += "left: " + entry.path().string() + "\n";
  return left;
}

void FileOperation::startAgain() const {
  core::clearLeftovers(workspace());
  if (core::exists(workspace()))
    (void)core::mergeTree(at("bundle"), workspace(), {.hidden = true, .danglingLinks = true});
  core::WorkspaceBackup session;
  (void)session.prepare(backup());
  (void)core::appendToLog(at("log"), "next", [] { return "2026-11-17 00:00:00"; });
}

FileOperations allFileOperations(const fs::path& place) {
  FileOperations all;
  all.push_back(std::make_unique<SaveDocument>());
  all.push_back(std::make_unique<SavePosition>());
  all.push_back(std::make_unique<TakeBackup>());
  all.push_back(std::make_unique<Restore>());
  all.push_back(std::make_unique<Apply>());
  all.push_back(std::make_unique<BeginBeside>());
  all.push_back(std::make_unique<InstallFresh>());
  all.push_back(std::make_unique<InstallCompletion>());
  all.push_back(std::make_unique<LogEntry>());
  all.push_back(std::make_unique<LogRotation>());
  for (const auto& operation : all)
    operation->placeIn(place);
  return all;
}

} // namespace vireonix::test
