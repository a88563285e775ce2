#include "Core/file_tree.h"

#include "Core/file_tree_exchange.h"
#include "support/temporary_folder.h"
#include "tree_snapshot.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>

namespace vireonix::core {
namespace {

namespace fs = std::filesystem;
using namespace test;

using Names = std::vector<std::string>;

/// Makes `depth` folders one in another, each with a name of 200 bytes and a file.
void makeDeepTree(const std::string& root, int depth) {
  int folder = open(root.c_str(), O_RDONLY | O_DIRECTORY);
  const std::string name(200, 'd');
  for (int i = 0; i < depth; ++i) {
    ASSERT_EQ(mkdirat(folder, name.c_str(), 0755), 0);
    const int next = openat(folder, name.c_str(), O_RDONLY | O_DIRECTORY);
    close(openat(next, "file", O_WRONLY | O_CREAT, 0644));
    close(folder);
    folder = next;
  }
  close(folder);
}

TEST(FileTree, ADanglingLinkAndAPathWithANulByteDoNotExist) {
  const TemporaryFolder folder;
  folder.write("file", "x");
  fs::create_symlink("nowhere", folder.at("dangling"));
  fs::create_symlink("file", folder.at("link"));
  fs::create_symlink(".", folder.at("folder link"));
  EXPECT_TRUE(exists(folder.at("file")));
  EXPECT_TRUE(exists(folder.at("link")));
  EXPECT_FALSE(exists(folder.at("dangling")));
  EXPECT_FALSE(exists(""));
  EXPECT_FALSE(exists(folder.at("file") + std::string("\0x", 2)));
  EXPECT_TRUE(isFolder(folder.at("folder link")));
  EXPECT_FALSE(isFolder(folder.at("link")));
}

TEST(FileTree, TheListingHasFoldersBeforeTheirContentsAndDoesNotEnterLinks) {
  const TemporaryFolder folder;
  folder.write("b/.hidden", "");
  folder.write("b/a/file", "");
  folder.write(".top", "");
  folder.write("\xff", "");
  fs::create_symlink("b", folder.at("a link"));
  EXPECT_EQ(listTree(folder.path().string()),
            (Names{".top", "a link", "b", "b/.hidden", "b/a", "b/a/file", "\xff"}));
  fs::create_symlink(folder.path(), folder.at("b/a/up"));
  EXPECT_EQ(listTree(folder.at("b/a/up/b")), (Names{".hidden", "a", "a/file", "a/up"}));
}

TEST(FileTree, TheListingOfAMissingFolderAndOfAFileIsEmpty) {
  const TemporaryFolder folder;
  EXPECT_TRUE(listTree(folder.at("missing")).empty());
  EXPECT_TRUE(listTree(folder.write("file", "x")).empty());
}

TEST(FileTree, FoldersAreMadeWithThoseThatLeadToThem) {
  const TemporaryFolder folder;
  EXPECT_TRUE(createFolders(folder.at("a/b//c/")).ok());
  EXPECT_TRUE(isFolder(folder.at("a/b/c")));
  EXPECT_TRUE(createFolders(folder.at("a/b/c")).ok());
  folder.write("file", "x");
  EXPECT_EQ(createFolders(folder.at("file/below")).error, ENOTDIR);
  EXPECT_EQ(createFolders(folder.at("file")).error, ENOTDIR);
  EXPECT_EQ(createFolders("").error, ENOENT);
}

TEST(FileTree, DeepTreesArePassedWithFewOpenFilesAndPathsLongerThanTheSystemTakes) {
  const TemporaryFolder folder;
  fs::create_directory(folder.at("source"));
  constexpr int kDepth = 300;
  makeDeepTree(folder.at("source"), kDepth);
  inChild([&] {
    const rlimit few{64, 64};
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &few), 0);
    const Names names = listTree(folder.at("source"));
    EXPECT_EQ(names.size(), size_t{2 * kDepth});
    EXPECT_TRUE(copyTree(folder.at("source"), folder.at("copy")).ok());
    EXPECT_EQ(listTree(folder.at("copy")), names);
    fs::create_directory(folder.at("merged"));
    EXPECT_TRUE(mergeTree(folder.at("source"), folder.at("merged"), {}).ok());
    EXPECT_EQ(listTree(folder.at("merged")), names);
    fs::create_directory(folder.at("equal"));
    EXPECT_TRUE(equaliseTree(folder.at("source"), folder.at("equal")).ok());
    EXPECT_EQ(listTree(folder.at("equal")), names);
    for (const char* tree : {"source", "copy", "merged", "equal"}) {
      EXPECT_TRUE(removeTree(folder.at(tree)).ok());
      EXPECT_FALSE(exists(folder.at(tree)));
    }
  });
}

TEST(FileTree, RemovingTakesReadOnlyFoldersAndNeverWhatALinkLeadsTo) {
  const TemporaryFolder folder;
  chmod(folder.path().c_str(), 0777);
  folder.write("outside/kept", "kept");
  chmod(folder.at("outside").c_str(), 0555);
  asOrdinaryUser([&] {
    for (const mode_t mode : {0555, 0000, 0444, 0111}) {
      folder.write("tree/locked/inner/file", "x");
      fs::create_symlink("../../outside", folder.at("tree/locked/link"));
      fs::create_symlink("../outside/kept", folder.at("tree/file link"));
      chmod(folder.at("tree/locked/inner").c_str(), mode);
      chmod(folder.at("tree/locked").c_str(), mode);
      chmod(folder.at("tree").c_str(), mode);
      const Status status = removeTree(folder.at("tree"));
      EXPECT_TRUE(status.ok()) << status.path << " " << status.error;
      EXPECT_FALSE(exists(folder.at("tree")));
    }
  });
  EXPECT_EQ(fileBytes(folder.at("outside/kept")), "kept");
  EXPECT_EQ(modeOf(folder.at("outside")), 0555U);
}

TEST(FileTree, RemovingALinkRemovesTheLinkAndNothingThereIsASuccess) {
  const TemporaryFolder folder;
  folder.write("tree/file", "x");
  fs::create_symlink("tree", folder.at("link"));
  EXPECT_TRUE(removeTree(folder.at("link/")).ok());
  EXPECT_FALSE(isLink(folder.at("link")));
  EXPECT_TRUE(exists(folder.at("tree/file")));
  EXPECT_TRUE(removeTree(folder.at("link")).ok());
  EXPECT_TRUE(removeTree(folder.at("no/such/folder")).ok());
}

TEST(FileTree, RemovingRefusesWhatNamesNoEntry) {
  const TemporaryFolder folder;
  folder.write("file", "x");
  for (const std::string& path : {std::string("/"), folder.at("."), folder.at("x/.."),
                                  std::string("."), folder.at("") + std::string("\0", 1)})
    EXPECT_EQ(removeTree(path).error, EINVAL) << path;
  EXPECT_EQ(removeTree("").error, ENOENT);
  EXPECT_TRUE(exists(folder.at("file")));
}

TEST(FileTree, WhatCannotBeRemovedIsAnsweredAndTheRestIsGone) {
  const TemporaryFolder folder;
  chmod(folder.path().c_str(), 0777);
  asOrdinaryUser([&] { folder.write("tree/mine", "x"); });
  folder.write("tree/theirs/file", "x");
  asOrdinaryUser([&] {
    const Status status = removeTree(folder.at("tree"));
    if (geteuid() != 0 && !exists(folder.at("tree")))
      return; // Without privileges to begin with, all of it was this user's own.
    EXPECT_EQ(status.error, EACCES);
    EXPECT_EQ(status.path, folder.at("tree/theirs/file"));
    EXPECT_FALSE(exists(folder.at("tree/mine")));
  });
}

TEST(FileTree, ExchangingSwapsTreesInOneStepAndByRenames) {
  const TemporaryFolder folder;
  folder.write("one/1", "1");
  folder.write("two/2", "2");
  ASSERT_TRUE(exchangeTrees(folder.at("one"), folder.at("two")).ok());
  EXPECT_EQ(listTree(folder.at("one")), Names{"2"});
  EXPECT_EQ(listTree(folder.at("two")), Names{"1"});
  ASSERT_TRUE(exchangeByRenames(folder.at("one"), folder.at("two")).ok());
  EXPECT_EQ(listTree(folder.path().string()), (Names{"one", "one/1", "two", "two/2"}));
}

TEST(FileTree, AFailedExchangeLeavesBothWhereTheyAre) {
  const TemporaryFolder folder;
  folder.write("one/1", "1");
  EXPECT_EQ(exchangeTrees(folder.at("one"), folder.at("missing")).error, ENOENT);
  EXPECT_EQ(exchangeByRenames(folder.at("one"), folder.at("missing")).error, ENOENT);
  EXPECT_EQ(listTree(folder.path().string()), (Names{"one", "one/1"}));
}

} // namespace
} // namespace vireonix::core
