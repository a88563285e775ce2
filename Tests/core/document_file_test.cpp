#include "Core/document_file.h"

#include "Core/slider_document.h"

#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <string>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace xml = vireonix::core::xml;
using vireonix::core::fileState;
using vireonix::core::isSettled;
using vireonix::core::slider::DocumentFile;
using vireonix::test::TemporaryFolder;

namespace {

std::string markupOf(const xml::Tree& root) {
  return root ? xml::write(*root) : "(nothing)";
}

// What this process has asked to be read from files so far.
long bytesRead() {
  std::ifstream counts("/proc/self/io");
  std::string name;
  long bytes = -1;
  counts >> name >> bytes;
  return bytes;
}

void overwrite(const std::string& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary | std::ios::in | std::ios::out) << bytes;
}

// Overwrites a file's content in place and gives it back its times.
void forge(const std::string& path, const std::string& bytes) {
  struct stat before {};
  ASSERT_EQ(stat(path.c_str(), &before), 0);
  overwrite(path, bytes);
  const timespec times[] = {before.st_atim, before.st_mtim};
  ASSERT_EQ(utimensat(AT_FDCWD, path.c_str(), times, 0), 0);
}

class DocumentFileTest : public testing::Test {
protected:
  std::string root() { return markupOf(file_.root(path_)); }

  TemporaryFolder folder_;
  std::string path_ = folder_.write("data.xml", "<m a=\"1\" b=\"&amp;\"><data>x</data></m>");
  DocumentFile file_;
};

} // namespace

TEST_F(DocumentFileTest, TheRootComesWithItsAttributesAndNothingElse) {
  EXPECT_EQ(root(), "<m a=\"1\" b=\"&amp;\"/>");
}

TEST_F(DocumentFileTest, ADocumentThatNobodyChangedIsNotReadAgain) {
  const std::string document =
      "<main a=\"1\"><data>" + std::string(100'000, 'x') + "</data></main>";
  EXPECT_EQ(root(), "<m a=\"1\" b=\"&amp;\"/>");
  ASSERT_TRUE(file_.replace(path_, document).ok());
  const long before = bytesRead();
  EXPECT_EQ(root(), "<m a=\"1\" b=\"&amp;\"/>");
  EXPECT_LT(bytesRead() - before, 10'000);
}

TEST_F(DocumentFileTest, ADocumentThatSomebodyHasReadIsNotReadAgain) {
  const std::string old = "/bin/sh"; // No document, and not just changed.
  const xml::Tree read = xml::parse("<m a='5'><data/></m>", xml::Mode::Strict);
  file_.willRead(old);
  file_.didRead(read.get());
  EXPECT_EQ(markupOf(file_.root(old)), "<m a=\"5\"/>");
  file_.willRead(path_);
  file_.didRead(read.get());
  EXPECT_EQ(root(), "<m a=\"1\" b=\"&amp;\"/>") << "it may have been changed meanwhile";
}

TEST_F(DocumentFileTest, ADocumentThatSomebodyElseReplacedIsReadAgain) {
  root();
  ASSERT_TRUE(file_.replace(path_, "<main a=\"1\"/>").ok());
  folder_.write("other.xml", "<main a=\"2\"/>");
  ASSERT_EQ(std::rename(folder_.at("other.xml").c_str(), path_.c_str()), 0);
  EXPECT_EQ(root(), "<main a=\"2\"/>");
}

TEST_F(DocumentFileTest, AChangeInPlaceIsSeenEvenWhenItKeepsSizeAndTimes) {
  root();
  ASSERT_TRUE(file_.replace(path_, "<main a=\"1\"/>").ok());
  const auto made = fileState(path_);
  // The file system's clock ticks on.
  while (fileState(path_)->changedNanoseconds == made->changedNanoseconds)
    forge(path_, "<main a=\"3\"/>");
  EXPECT_EQ(fileState(path_)->modifiedNanoseconds, made->modifiedNanoseconds);
  EXPECT_EQ(root(), "<main a=\"3\"/>");
}

// Where the file system's clock is coarse, some of the attempts fall in one tick.
TEST_F(DocumentFileTest, AChangeInPlaceIsSeenHoweverSoonAfterTheReplacement) {
  root();
  for (int i = 0; i < 20; ++i) {
    ASSERT_TRUE(file_.replace(path_, "<main a=\"1\"/>").ok());
    overwrite(path_, "<main a=\"3\"/>");
    ASSERT_EQ(root(), "<main a=\"3\"/>");
  }
}

TEST_F(DocumentFileTest, AChangeInPlaceIsSeenHoweverSoonAfterTheReading) {
  for (int i = 0; i < 20; ++i) {
    folder_.write("data.xml", "<main a=\"1\"/>");
    ASSERT_EQ(root(), "<main a=\"1\"/>");
    overwrite(path_, "<main a=\"3\"/>");
    ASSERT_EQ(root(), "<main a=\"3\"/>");
  }
}

TEST_F(DocumentFileTest, ADocumentThatWasJustChangedIsReadAgain) {
  folder_.write("data.xml", "<main a=\"1\"><data>" + std::string(100'000, 'x') + "</data></main>");
  EXPECT_EQ(root(), "<main a=\"1\"/>");
  const long before = bytesRead();
  EXPECT_EQ(root(), "<main a=\"1\"/>");
  EXPECT_GT(bytesRead() - before, 100'000);
}

TEST(FileState, IsSettledOnceTheCoarsestClockHasTicked) {
  TemporaryFolder folder;
  const auto young = fileState(folder.write("file", ""));
  ASSERT_TRUE(young);
  EXPECT_FALSE(isSettled(*young));
  auto old = *young;
  old.changedSeconds -= 3;
  EXPECT_TRUE(isSettled(old));
}

TEST_F(DocumentFileTest, ADocumentThatVanishedHasNoRootUntilOneIsThereAgain) {
  root();
  ASSERT_EQ(unlink(path_.c_str()), 0);
  EXPECT_EQ(root(), "(nothing)");
  ASSERT_TRUE(file_.replace(path_, "<main/>").ok());
  EXPECT_EQ(root(), "(nothing)");
  folder_.write("data.xml", "<main c=\"1\"/>");
  EXPECT_EQ(root(), "<main c=\"1\"/>");
}

TEST_F(DocumentFileTest, ADocumentThatBecameUnreadableHasNoRoot) {
  root();
  folder_.write("data.xml", "no markup");
  EXPECT_EQ(root(), "(nothing)");
}

TEST_F(DocumentFileTest, AnotherPathIsAnotherDocument) {
  root();
  const std::string other = folder_.write("other.xml", "<o d=\"1\"/>");
  EXPECT_EQ(markupOf(file_.root(other)), "<o d=\"1\"/>");
  EXPECT_EQ(root(), "<m a=\"1\" b=\"&amp;\"/>");
}

TEST_F(DocumentFileTest, AReplacementThatFailsLeavesWhatIsKnown) {
  EXPECT_FALSE(file_.replace(folder_.at("missing/data.xml"), "<main/>").ok());
  EXPECT_EQ(root(), "<m a=\"1\" b=\"&amp;\"/>");
}
