#include "workspace_backup_fixture.h"

#include <sys/stat.h>

namespace vireonix::test {

namespace fs = std::filesystem;

BackupOfWorkspace::BackupOfWorkspace() {
  folder.write("home/workspace/index.html", "<html>");
  folder.write("home/workspace/intro_asset/data.xml", "<main/>");
  folder.write("home/workspace/.hidden/.deeper", "hidden");
  fs::create_symlink("intro_asset/data.xml", workspace + "/link");
  fs::create_directory(workspace + "/empty");
  setTime(workspace + "/intro_asset/data.xml", 1'000'000, 5);
  setTime(workspace, 2'000'000, 7);
  chmod(workspace.c_str(), 0750);
  chmod(folder.path().c_str(), 0777);
  fs::create_directory(folder.at("tmp"));
  original = snapshot(workspace);
}

void BackupOfWorkspace::begin() {
  ASSERT_TRUE(session.prepare(backup).ok());
  const core::Status status = session.take(workspace, backup);
  ASSERT_TRUE(status.ok()) << status.path << " " << status.error;
}

void BackupOfWorkspace::edit() {
  folder.write("home/workspace/intro_asset/data.xml", "<main>edited</main>");
  folder.write("home/workspace/picture.jpg", "picture");
  fs::remove(workspace + "/index.html");
  fs::remove_all(workspace + "/empty");
  folder.write("home/workspace/empty", "now a file");
}

void BackupOfWorkspace::revert() {
  const core::Status status = session.restore(workspace, backup);
  EXPECT_TRUE(status.ok()) << status.path << " " << status.error;
}

void BackupOfWorkspace::expectRestored(const std::string& where) {
  EXPECT_EQ(difference(original, snapshot(where)), "");
}

void BackupOfWorkspace::expectReverted() {
  expectRestored(workspace);
  EXPECT_EQ(core::listTree(folder.at("tmp")), Names{});
  for (const auto& entry : fs::directory_iterator(folder.at("home")))
    EXPECT_EQ(entry.path().filename().string(), "workspace");
}

} // namespace vireonix::test
