#include "Core/file_tree.h"

#include "support/temporary_folder.h"
#include "tree_snapshot.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <cerrno>
#include <csignal>
#include <filesystem>

namespace vireonix::core {
namespace {

namespace fs = std::filesystem;
using namespace test;

using Names = std::vector<std::string>;

class MergeTree : public testing::Test {
protected:
  Status merge(const MergeOptions& options = {}) {
    fs::create_directory(folder.at("to"));
    return mergeTree(folder.at("from"), folder.at("to"), options);
  }

  Names merged() { return listTree(folder.at("to")); }

  TemporaryFolder folder;
};

TEST_F(MergeTree, OnlyTheFirstCharacterOfTheWholePathHides) {
  folder.write("from/.git/config", "x");
  folder.write("from/.top", "x");
  folder.write("from/js/.hidden", "x");
  folder.write("from/js/.folder/file", "x");
  EXPECT_TRUE(merge({.hidden = false}).ok());
  EXPECT_EQ(merged(), (Names{"js", "js/.folder", "js/.folder/file", "js/.hidden"}));
  EXPECT_TRUE(merge({.hidden = true}).ok());
  EXPECT_EQ(merged(), listTree(folder.at("from")));
}

TEST_F(MergeTree, WhatIsThereStaysWhateverItsKind) {
  folder.write("from/file", "new");
  folder.write("from/folder/inside", "new");
  folder.write("from/kind", "new");
  folder.write("from/sub/both", "new");
  folder.write("from/sub/lacking", "new");
  folder.write("to/file", "old");
  folder.write("to/folder", "a file in the way");
  folder.write("to/kind/file", "a folder in the way");
  folder.write("to/sub/both", "old");
  EXPECT_TRUE(merge().ok());
  EXPECT_EQ(merged(),
            (Names{"file", "folder", "kind", "kind/file", "sub", "sub/both", "sub/lacking"}));
  EXPECT_EQ(fileBytes(folder.at("to/file")), "old");
  EXPECT_EQ(fileBytes(folder.at("to/folder")), "a file in the way");
  EXPECT_EQ(fileBytes(folder.at("to/sub/both")), "old");
  EXPECT_EQ(fileBytes(folder.at("to/sub/lacking")), "new");
}

TEST_F(MergeTree, InstalledEntriesAreTheUsersToChangeAndKeepTimesAndExecutableBits) {
  folder.write("from/readonly/file", "x");
  folder.write("from/readonly/program", "x");
  chmod(folder.at("from/readonly/file").c_str(), 0444);
  chmod(folder.at("from/readonly/program").c_str(), 0555);
  chmod(folder.at("from/readonly").c_str(), 0555);
  setTime(folder.at("from/readonly/file"), 1234, 56);
  chmod(folder.path().c_str(), 0777);
  asOrdinaryUser([&] {
    umask(022);
    EXPECT_TRUE(merge().ok());
    EXPECT_EQ(modeOf(folder.at("to/readonly")), 0755U);
    EXPECT_EQ(modeOf(folder.at("to/readonly/file")), 0644U);
    EXPECT_EQ(modeOf(folder.at("to/readonly/program")), 0755U);
    struct stat info {};
    ASSERT_EQ(stat(folder.at("to/readonly/file").c_str(), &info), 0);
    EXPECT_EQ(info.st_mtim.tv_sec, 1234);
    EXPECT_EQ(info.st_mtim.tv_nsec, 56);
    EXPECT_TRUE(replaceFile(folder.at("to/readonly/file"), "edited").ok());
  });
}

TEST_F(MergeTree, LinksAreCopiedAsLinksAndDanglingOnesOnDemand) {
  folder.write("from/file", "x");
  folder.write("from/folder/inside", "x");
  fs::create_symlink("file", folder.at("from/link"));
  fs::create_symlink("folder", folder.at("from/to folder"));
  fs::create_symlink("nowhere", folder.at("from/dangling"));
  EXPECT_TRUE(merge().ok());
  EXPECT_EQ(merged(), (Names{"file", "folder", "folder/inside", "link", "to folder"}));
  EXPECT_EQ(linkTarget(folder.at("to/link")), "file");
  EXPECT_EQ(linkTarget(folder.at("to/to folder")), "folder");
  EXPECT_TRUE(merge({.danglingLinks = true}).ok());
  EXPECT_TRUE(isLink(folder.at("to/dangling")));
}

TEST_F(MergeTree, NothingIsWrittenThroughALinkInTheDestination) {
  folder.write("from/js/script", "new");
  folder.write("from/file", "new");
  fs::create_directory(folder.at("outside"));
  fs::create_directory(folder.at("to"));
  fs::create_symlink("../outside", folder.at("to/js"));
  fs::create_symlink("../outside/made", folder.at("to/file"));
  EXPECT_TRUE(merge().ok());
  EXPECT_TRUE(listTree(folder.at("outside")).empty());
  EXPECT_TRUE(isLink(folder.at("to/file")));
}

TEST_F(MergeTree, ADestinationThatIsALinkToAFolderIsFilled) {
  folder.write("from/file", "x");
  fs::create_directory(folder.at("real"));
  fs::create_symlink("real", folder.at("to"));
  EXPECT_TRUE(mergeTree(folder.at("from"), folder.at("to"), {}).ok());
  EXPECT_EQ(listTree(folder.at("real")), Names{"file"});
}

TEST_F(MergeTree, SpecialFilesAreLeftOutAndNeverWaitedFor) {
  folder.write("from/file", "x");
  ASSERT_EQ(mkfifo(folder.at("from/a fifo").c_str(), 0600), 0);
  const Status status = merge();
  EXPECT_EQ(status.path, folder.at("from/a fifo"));
  EXPECT_EQ(merged(), Names{"file"});
}

TEST_F(MergeTree, AnUnreadableFileIsAnsweredAndTheRestIsCopied) {
  chmod(folder.path().c_str(), 0777);
  asOrdinaryUser([&] {
    folder.write("from/a", "a");
    folder.write("from/z", "z");
    chmod(folder.at("from/a").c_str(), 0);
    EXPECT_EQ(merge().error, EACCES);
    EXPECT_EQ(merged(), Names{"z"});
  });
}

TEST_F(MergeTree, ADestinationInsideTheSourceIsNotCopiedIntoItself) {
  folder.write("from/file", "x");
  fs::create_directory(folder.at("from/export"));
  EXPECT_TRUE(mergeTree(folder.at("from"), folder.at("from/export"), {}).ok());
  EXPECT_EQ(listTree(folder.at("from/export")), Names{"file"});
}

TEST_F(MergeTree, MissingFoldersAreAnswered) {
  EXPECT_EQ(merge().error, ENOENT);
  folder.write("from/file", "x");
  EXPECT_EQ(mergeTree(folder.at("from"), folder.at("missing"), {}).error, ENOENT);
  EXPECT_FALSE(exists(folder.at("missing")));
}

TEST_F(MergeTree, AFullDiskLeavesNoHalfFile) {
  folder.write("from/large", std::string(900'000, 'l'));
  folder.write("from/larger", std::string(900'000, 'l'));
  fs::create_directory(folder.at("to"));
  withSmallDisk(folder.at("to"), size_t{1} << 20, [&] {
    EXPECT_EQ(merge().error, ENOSPC);
    EXPECT_EQ(merged(), Names{"large"});
  });
}

TEST_F(MergeTree, HalfFilesOfAKilledInstallationAreNotTakenForInstalledOnes) {
  folder.write("from/js/script", std::string(100, 's'));
  folder.write("to/js/.vireonix-new-4194304-1", "half a scr"); // no system has a process 4194304
  EXPECT_TRUE(merge().ok());
  EXPECT_EQ(merged(), (Names{"js", "js/script"}));
}

TEST_F(MergeTree, OneFileIsCopiedUnlessItsNameIsTaken) {
  const std::string movie = folder.write("movie.swf", "movie");
  chmod(movie.c_str(), 0400);
  fs::create_symlink("movie.swf", folder.at("link"));
  EXPECT_TRUE(copyFile(folder.at("link"), folder.at("book.swf")).ok());
  EXPECT_FALSE(isLink(folder.at("book.swf")));
  EXPECT_EQ(fileBytes(folder.at("book.swf")), "movie");
  EXPECT_EQ(modeOf(folder.at("book.swf")), 0600U);
  folder.write("other", "other");
  EXPECT_EQ(copyFile(folder.at("other"), folder.at("book.swf")).error, EEXIST);
  EXPECT_EQ(fileBytes(folder.at("book.swf")), "movie");
  fs::create_symlink("nowhere", folder.at("dangling"));
  EXPECT_EQ(copyFile(folder.at("other"), folder.at("dangling")).error, EEXIST);
  EXPECT_EQ(copyFile(folder.at("missing"), folder.at("copy")).error, ENOENT);
  EXPECT_EQ(copyFile(folder.path().string(), folder.at("copy")).error, EINVAL);
  EXPECT_FALSE(exists(folder.at("copy")));
}

} // namespace
} // namespace vireonix::core
