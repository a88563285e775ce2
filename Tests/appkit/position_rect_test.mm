#import "Bridge/text.h"
#import "Class/PositionRect.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

using vireonix::bridge::pathString;
using vireonix::core::Position;
using vireonix::test::fileBytes;
using vireonix::test::TemporaryFolder;

namespace {

PositionRect *record(const Position &position) {
  PositionRect *made = [[[PositionRect alloc] init] autorelease];
  [made setPosition:position];
  return made;
}

} // namespace

TEST(PositionRect, ANewRecordIsAllZeros) {
  EXPECT_EQ([record({}) position], Position {});
  EXPECT_EQ([[[[PositionRect alloc] init] autorelease] position], Position{});
}

TEST(PositionRect, EveryFieldIsReachedByItsName) {
  PositionRect *rect = record({});
  const NSArray *names = @[ @"left", @"top", @"right", @"bottom", @"transparency", @"layer" ];
  int value = 1;
  for (NSString *name in names) {
    [rect setValue:[NSNumber numberWithInt:value] forKey:name];
    EXPECT_EQ([[rect valueForKey:name] intValue], value);
    ++value;
  }
  EXPECT_EQ([rect position], (Position{1, 2, 3, 4, 5, 6}));
}

TEST(PositionRect, ItsRectangleIsAShareOfTheCanvas) {
  PositionRect *rect = record({10, 20, 30, 40, 100, 1});
  const NSRect expected = NSMakeRect(20, 40, 120, 40);
  EXPECT_TRUE(NSEqualRects([rect getObjectFrameWithSize:NSMakeSize(200, 100)], expected));
  EXPECT_TRUE(NSEqualRects([PositionRect getObjectFrameWith:rect OutlineSize:NSMakeSize(200, 100)],
                           expected));
  EXPECT_TRUE(NSEqualRects([PositionRect getObjectFrameWith:nil OutlineSize:NSMakeSize(200, 100)],
                           NSZeroRect));
}

TEST(PositionRect, SavingWritesSixLinesAndReplacesAnEarlierFile) {
  const TemporaryFolder folder;
  const std::string path = folder.write("settings.dat", "something longer than the six lines are");
  chmod(path.c_str(), 0640);
  [record({10, 20, 30, 40, 100, 1}) saveToFile:pathString(path)];
  EXPECT_EQ(fileBytes(path), "10.0\n20.0\n30.0\n40.0\n100.0\n1");
  struct stat information {};
  ASSERT_EQ(stat(path.c_str(), &information), 0);
  EXPECT_EQ(information.st_mode & 0777, 0640U);
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 1);
}

TEST(PositionRect, ASaveThatCannotBeMadeChangesNothing) {
  const TemporaryFolder folder;
  const std::string path = folder.at("settings.dat");
  std::filesystem::create_directory(path);
  [record({1, 2, 3, 4, 5, 6}) saveToFile:pathString(path)];
  [record({1, 2, 3, 4, 5, 6}) saveToFile:pathString(folder.at("missing/settings.dat"))];
  [record({1, 2, 3, 4, 5, 6}) saveToFile:nil];
  EXPECT_TRUE(std::filesystem::is_directory(path));
  EXPECT_FALSE(std::filesystem::exists(folder.at("missing")));
}
