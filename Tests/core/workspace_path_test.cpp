#include "Core/workspace_path.h"

#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <filesystem>

using vireonix::core::isInsideWorkspace;
using vireonix::test::TemporaryFolder;

namespace fs = std::filesystem;

TEST(WorkspacePath, IsInsideWhenItsFolderIs) {
  const TemporaryFolder folder;
  folder.write("w/intro_asset/data.xml", "x");
  fs::create_directory_symlink("intro_asset", folder.at("w/inner"));
  fs::create_directory_symlink("w", folder.at("link"));
  for (const char* path : {"a.jpg", "intro_asset/data.xml", "inner/new.xml", "./a", "inner/../a"})
    EXPECT_TRUE(isInsideWorkspace(folder.at("w"), path)) << path;
  EXPECT_TRUE(isInsideWorkspace(folder.at("link"), "intro_asset/data.xml"));
}

TEST(WorkspacePath, IsOutsideWhenItsFolderIsElsewhereOrNowhere) {
  const TemporaryFolder folder;
  folder.write("w/a.jpg", "x");
  folder.write("wider/a.jpg", "x");
  fs::create_directory_symlink("../wider", folder.at("w/up"));
  fs::create_directory_symlink("nowhere", folder.at("w/dangling"));
  for (const char* path : {"up/a.jpg", "../wider/a.jpg", "missing/a.jpg", "dangling/a.jpg"})
    EXPECT_FALSE(isInsideWorkspace(folder.at("w"), path)) << path;
  EXPECT_FALSE(isInsideWorkspace(folder.at("w"), folder.at("w/a.jpg")));
  EXPECT_FALSE(isInsideWorkspace(folder.at("gone"), "a.jpg"));
}
