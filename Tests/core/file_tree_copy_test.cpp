#include "Core/file_tree.h"

#include "support/sanitizer.h"
#include "support/temporary_folder.h"
#include "tree_snapshot.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>

namespace vireonix::core {
namespace {

namespace fs = std::filesystem;
using namespace test;

void expectCopied(const std::string& source, const std::string& copy) {
  const TreeSnapshot before = snapshot(source);
  const Status status = copyTree(source, copy);
  EXPECT_TRUE(status.ok()) << status.path << " " << status.error;
  EXPECT_EQ(difference(before, snapshot(copy)), "");
  EXPECT_EQ(difference(before, snapshot(source)), "");
}

TEST(CopyTree, RandomTreesAreCopiedExactlyAlsoToAnotherFileSystem) {
  const TemporaryFolder folder;
  for (int seed = 0; seed < rounds(16); ++seed) {
    SCOPED_TRACE(seed);
    std::mt19937 random(static_cast<unsigned>(seed));
    const std::string source = folder.at("source" + std::to_string(seed));
    fs::create_directory(source);
    growTree(source, random, 60);
    expectCopied(source, folder.at("copy" + std::to_string(seed)));
    const std::string far = farFrom(folder);
    expectCopied(source, far);
    EXPECT_TRUE(removeTree(far).ok());
  }
}

TEST(CopyTree, ReadOnlyAndClosedFoldersAreCopiedWithTheirModes) {
  const TemporaryFolder folder;
  chmod(folder.path().c_str(), 0777);
  asOrdinaryUser([&] {
    folder.write("source/readonly/deeper/file", "x");
    fs::create_directory(folder.at("source/open/"));
    chmod(folder.at("source/readonly/deeper").c_str(), 0555);
    chmod(folder.at("source/readonly").c_str(), 0555);
    chmod(folder.at("source").c_str(), 0511);
    setTime(folder.at("source/readonly"), 1000, 7);
    chmod(folder.at("source").c_str(), 0555);
    expectCopied(folder.at("source"), folder.at("copy"));
  });
}

TEST(CopyTree, WhatCannotBeReadIsNamedAndTheRestIsCopied) {
  const TemporaryFolder folder;
  chmod(folder.path().c_str(), 0777);
  asOrdinaryUser([&] {
    folder.write("source/a", "a");
    folder.write("source/sub/secret", "s");
    folder.write("source/sub/z", "z");
    folder.write("source/locked/inside", "i");
    chmod(folder.at("source/sub/secret").c_str(), 0);
    chmod(folder.at("source/locked").c_str(), 0);
    Omissions omissions;
    const Status status = copyTree(folder.at("source"), folder.at("copy"), &omissions);
    EXPECT_EQ(status.error, EACCES);
    EXPECT_EQ(status.path, folder.at("source/locked"));
    EXPECT_EQ(omissions, (Omissions{"locked", "sub/secret"}));
    EXPECT_EQ(listTree(folder.at("copy")),
              (std::vector<std::string>{"a", "locked", "sub", "sub/z"}));
    EXPECT_EQ(modeOf(folder.at("copy/locked")), 0U);
    chmod(folder.at("source/locked").c_str(), 0700);
  });
}

TEST(CopyTree, LinksAreCopiedAsLinksAndWhatTheyLeadToIsNotTouched) {
  const TemporaryFolder folder;
  folder.write("outside/file", "o");
  chmod(folder.at("outside/file").c_str(), 0600);
  setTime(folder.at("outside/file"), 99);
  fs::create_directory(folder.at("source"));
  fs::create_symlink("../outside/file", folder.at("source/link"));
  fs::create_symlink("../outside", folder.at("source/folder"));
  fs::create_symlink(std::string(3000, 'x'), folder.at("source/long"));
  setTime(folder.at("source/link"), 5000, 1);
  const TreeSnapshot outside = snapshot(folder.at("outside"));
  expectCopied(folder.at("source"), folder.at("copy"));
  EXPECT_EQ(difference(outside, snapshot(folder.at("outside"))), "");
}

TEST(CopyTree, ALinkInTheDestinationIsNotWrittenThrough) {
  const TemporaryFolder folder;
  folder.write("source/sub/file", "new");
  fs::create_directory(folder.at("outside"));
  fs::create_directory(folder.at("copy"));
  fs::create_symlink("../outside", folder.at("copy/sub"));
  Omissions omissions;
  EXPECT_FALSE(copyTree(folder.at("source"), folder.at("copy"), &omissions).ok());
  EXPECT_EQ(omissions, Omissions{"sub"});
  EXPECT_TRUE(listTree(folder.at("outside")).empty());
}

TEST(CopyTree, ExistingFilesAreNotOverwritten) {
  const TemporaryFolder folder;
  folder.write("source/file", "new");
  folder.write("copy/file", "old");
  EXPECT_EQ(copyTree(folder.at("source"), folder.at("copy")).error, EEXIST);
  EXPECT_EQ(fileBytes(folder.at("copy/file")), "old");
}

TEST(CopyTree, ADestinationInsideTheSourceIsNotCopiedIntoItself) {
  const TemporaryFolder folder;
  folder.write("file", "x");
  EXPECT_TRUE(copyTree(folder.path().string(), folder.at("copy")).ok());
  EXPECT_EQ(listTree(folder.at("copy")), std::vector<std::string>{"file"});
}

TEST(CopyTree, SpecialFilesAreMadeAgainAndNeverWaitedFor) {
  const TemporaryFolder folder;
  fs::create_directory(folder.at("source"));
  ASSERT_EQ(mkfifo(folder.at("source/fifo").c_str(), 0620), 0);
  ASSERT_EQ(mknod(folder.at("source/socket").c_str(), S_IFSOCK | 0600, 0), 0);
  expectCopied(folder.at("source"), folder.at("copy"));
}

TEST(CopyTree, HolesStayHoles) {
  const TemporaryFolder folder;
  const std::string file = folder.write("source/sparse", "start");
  constexpr off_t kSize = off_t{8} << 20;
  ASSERT_EQ(truncate(file.c_str(), kSize), 0);
  const int out = open(file.c_str(), O_WRONLY);
  EXPECT_EQ(pwrite(out, "middle", 6, kSize / 2), 6);
  close(out);
  expectCopied(folder.at("source"), folder.at("copy"));
  struct stat info {};
  ASSERT_EQ(stat(folder.at("copy/sparse").c_str(), &info), 0);
  EXPECT_LT(info.st_blocks * 512, kSize / 8);
}

TEST(CopyTree, HardLinksWithinTheTreeStayTogether) {
  const TemporaryFolder folder;
  folder.write("source/a/one", "shared");
  fs::create_directory(folder.at("source/b"));
  fs::create_hard_link(folder.at("source/a/one"), folder.at("source/b/two"));
  fs::create_hard_link(folder.at("source/a/one"), folder.at("outside name"));
  expectCopied(folder.at("source"), folder.at("copy"));
  EXPECT_TRUE(fs::equivalent(folder.at("copy/a/one"), folder.at("copy/b/two")));
  EXPECT_FALSE(fs::equivalent(folder.at("copy/a/one"), folder.at("source/a/one")));
}

TEST(CopyTree, ExtendedAttributesAreKept) {
  const TemporaryFolder folder;
  const std::string file = folder.write("source/sub/file", "x");
  ASSERT_EQ(setxattr(file.c_str(), "user.tag", "red", 3, 0), 0);
  ASSERT_EQ(setxattr(folder.at("source/sub").c_str(), "user.tag", "blue", 4, 0), 0);
  expectCopied(folder.at("source"), folder.at("copy"));
  std::string value(8, '\0');
  EXPECT_EQ(getxattr(folder.at("copy/sub/file").c_str(), "user.tag", value.data(), 8), 3);
  EXPECT_EQ(getxattr(folder.at("copy/sub").c_str(), "user.tag", value.data(), 8), 4);
  EXPECT_EQ(value.substr(0, 4), "blue");
}

TEST(CopyTree, AFullDiskLeavesNoHalfFilesAndNamesWhatIsMissing) {
  const TemporaryFolder folder;
  for (const char* name : {"a", "b", "c", "d"})
    folder.write(std::string("source/") + name, std::string(400'000, *name));
  fs::create_directory(folder.at("disk"));
  withSmallDisk(folder.at("disk"), size_t{1} << 20, [&] {
    Omissions omissions;
    EXPECT_EQ(copyTree(folder.at("source"), folder.at("disk/copy"), &omissions).error, ENOSPC);
    EXPECT_EQ(omissions, (Omissions{"c", "d"}));
    EXPECT_EQ(listTree(folder.at("disk/copy")), (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(fileBytes(folder.at("disk/copy/b")), fileBytes(folder.at("source/b")));
  });
}

TEST(CopyTree, AMissingSourceIsAnsweredAndMakesNothing) {
  const TemporaryFolder folder;
  Omissions omissions;
  const Status status = copyTree(folder.at("missing"), folder.at("copy"), &omissions);
  EXPECT_EQ(status.error, ENOENT);
  EXPECT_EQ(omissions, Omissions{""});
  EXPECT_FALSE(exists(folder.at("copy")));
}

TEST(EqualiseTree, RandomEditsAreUndone) {
  const TemporaryFolder folder;
  for (int seed = 0; seed < rounds(16); ++seed) {
    SCOPED_TRACE(seed);
    std::mt19937 random(static_cast<unsigned>(seed));
    const std::string source = folder.at("source" + std::to_string(seed));
    const std::string copy = folder.at("copy" + std::to_string(seed));
    fs::create_directory(source);
    growTree(source, random, 60);
    ASSERT_TRUE(copyTree(source, copy).ok());
    editTree(copy, random, 30);
    const Status status = equaliseTree(source, copy);
    EXPECT_TRUE(status.ok()) << status.path << " " << status.error;
    EXPECT_EQ(difference(snapshot(source), snapshot(copy)), "");
  }
}

TEST(EqualiseTree, EqualFilesKeepTheirIdentityAndChangedOnesAreReplaced) {
  const TemporaryFolder folder;
  folder.write("source/same", "same");
  folder.write("source/changed", "before");
  ASSERT_TRUE(copyTree(folder.at("source"), folder.at("copy")).ok());
  struct stat same {};
  ASSERT_EQ(stat(folder.at("copy/same").c_str(), &same), 0);
  fs::create_hard_link(folder.at("copy/changed"), folder.at("outside"));
  struct stat times {};
  ASSERT_EQ(stat(folder.at("copy/changed").c_str(), &times), 0);
  folder.write("copy/changed", "after!"); // as long as before, and with the same time
  setTime(folder.at("copy/changed"), times.st_mtim.tv_sec, times.st_mtim.tv_nsec);
  EXPECT_TRUE(equaliseTree(folder.at("source"), folder.at("copy")).ok());
  struct stat now {};
  ASSERT_EQ(stat(folder.at("copy/same").c_str(), &now), 0);
  EXPECT_EQ(now.st_ino, same.st_ino);
  EXPECT_EQ(fileBytes(folder.at("copy/changed")), "before");
  EXPECT_EQ(fileBytes(folder.at("outside")), "after!");
}

TEST(EqualiseTree, ExceptedEntriesStayAsTheyAre) {
  const TemporaryFolder folder;
  folder.write("source/a", "a");
  folder.write("copy/a", "edited");
  folder.write("copy/kept/deep/file", "kept");
  folder.write("copy/gone", "gone");
  EXPECT_TRUE(equaliseTree(folder.at("source"), folder.at("copy"), {"a", "kept"}).ok());
  EXPECT_EQ(listTree(folder.at("copy")),
            (std::vector<std::string>{"a", "kept", "kept/deep", "kept/deep/file"}));
  EXPECT_EQ(fileBytes(folder.at("copy/a")), "edited");
}

TEST(EqualiseTree, LinksInTheDestinationAreReplacedAndNotFollowed) {
  const TemporaryFolder folder;
  folder.write("source/sub/file", "inside");
  folder.write("outside/file", "outside");
  fs::create_directory(folder.at("copy"));
  fs::create_symlink("../outside", folder.at("copy/sub"));
  EXPECT_TRUE(equaliseTree(folder.at("source"), folder.at("copy")).ok());
  EXPECT_EQ(fileBytes(folder.at("outside/file")), "outside");
  EXPECT_EQ(difference(snapshot(folder.at("source")), snapshot(folder.at("copy"))), "");
}

TEST(EqualiseTree, ClosedFoldersOfTheUserAreOpenedForIt) {
  const TemporaryFolder folder;
  chmod(folder.path().c_str(), 0777);
  asOrdinaryUser([&] {
    folder.write("source/sub/file", "x");
    chmod(folder.at("source/sub").c_str(), 0555);
    folder.write("copy/sub/other", "y");
    folder.write("copy/more/other", "y");
    for (const char* path : {"copy/sub", "copy/more", "copy"})
      chmod(folder.at(path).c_str(), 0);
    const Status status = equaliseTree(folder.at("source"), folder.at("copy"));
    EXPECT_TRUE(status.ok()) << status.path << " " << status.error;
    EXPECT_EQ(difference(snapshot(folder.at("source")), snapshot(folder.at("copy"))), "");
  });
}

TEST(EqualiseTree, ADiskWithoutRoomFindsItOnceTheAdditionalFilesAreGone) {
  const TemporaryFolder folder;
  folder.write("source/wanted", std::string(700'000, 'w'));
  fs::create_directory(folder.at("disk"));
  withSmallDisk(folder.at("disk"), size_t{1} << 20, [&] {
    folder.write("disk/copy/additional", std::string(700'000, 'a'));
    EXPECT_TRUE(equaliseTree(folder.at("source"), folder.at("disk/copy")).ok());
    EXPECT_EQ(difference(snapshot(folder.at("source")), snapshot(folder.at("disk/copy"))), "");
  });
}

} // namespace
} // namespace vireonix::core
