#include "Core/media_file.h"

#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include <sys/stat.h>
#include <unistd.h>

using vireonix::core::removeMediaFile;
using vireonix::test::TemporaryFolder;

namespace fs = std::filesystem;

TEST(MediaFile, AFileOfTheWorkspaceIsDeleted) {
  const TemporaryFolder folder;
  for (const std::string path : {"a.jpg", "intro_asset/a.jpg", "\xC3\xA4 \xFF.jpg", "deep/er/a"}) {
    const std::string file = folder.write("w/" + path, "x");
    EXPECT_TRUE(removeMediaFile(folder.at("w"), path)) << path;
    EXPECT_FALSE(fs::exists(file)) << path;
    EXPECT_FALSE(removeMediaFile(folder.at("w"), path)) << path;
  }
}

TEST(MediaFile, NothingElseIsDeleted) {
  const TemporaryFolder folder;
  folder.write("outside.jpg", "precious");
  folder.write("w2/a.jpg", "neighbour");
  folder.write("w/folder/a.jpg", "inside");
  ASSERT_EQ(symlink("..", folder.at("w/up").c_str()), 0);
  ASSERT_EQ(mkfifo(folder.at("w/pipe").c_str(), 0600), 0);
  for (const std::string& path :
       {std::string(), std::string("."), std::string(".."), std::string("/"), std::string("folder"),
        std::string("folder/"), std::string("folder/."), std::string("../outside.jpg"),
        std::string("../w2/a.jpg"), std::string("up/outside.jpg"), std::string("pipe"),
        std::string("folder/../../outside.jpg"), folder.at("outside.jpg"),
        folder.at("w/folder/a.jpg"), std::string("no/such/file"), std::string(5000, 'x')})
    EXPECT_FALSE(removeMediaFile(folder.at("w"), path)) << path;
  EXPECT_FALSE(removeMediaFile("", "outside.jpg"));
  EXPECT_FALSE(removeMediaFile(folder.at("none"), "a.jpg"));
  for (const char* kept : {"outside.jpg", "w2/a.jpg", "w/folder/a.jpg", "w/pipe"})
    EXPECT_TRUE(fs::exists(folder.at(kept))) << kept;
}

TEST(MediaFile, OfALinkOnlyTheLinkIsDeleted) {
  const TemporaryFolder folder;
  const std::string outside = folder.write("outside.jpg", "precious");
  folder.write("w/a.jpg", "x");
  ASSERT_EQ(symlink(outside.c_str(), folder.at("w/link").c_str()), 0);
  ASSERT_EQ(symlink("nowhere", folder.at("w/dangling").c_str()), 0);
  EXPECT_TRUE(removeMediaFile(folder.at("w"), "link"));
  EXPECT_TRUE(removeMediaFile(folder.at("w"), "dangling"));
  EXPECT_TRUE(fs::exists(outside));
}

TEST(MediaFile, TheWorkspaceItselfMayBeALink) {
  const TemporaryFolder folder;
  folder.write("w/a.jpg", "x");
  ASSERT_EQ(symlink("w", folder.at("link").c_str()), 0);
  EXPECT_TRUE(removeMediaFile(folder.at("link"), "a.jpg"));
  EXPECT_FALSE(fs::exists(folder.at("w/a.jpg")));
}
