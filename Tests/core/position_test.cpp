#include "Core/position.h"

#include "support/sanitizer.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cmath>
#include <filesystem>
#include <limits>
#include <random>
#include <string>

using vireonix::test::rounds;
using namespace vireonix::core;
using vireonix::test::TemporaryFolder;

namespace {

Position margins(float left, float top, float right, float bottom) {
  return {left, top, right, bottom, 70, 3};
}

struct DragRow {
  const char* name;
  Position before;
  int32_t edges;
  float dx;
  float dy;
  Position after;
};

struct TextRow {
  std::string_view text;
  Position position;
};

std::array<float, 4> all(const Position& p) {
  return {p.left, p.top, p.right, p.bottom};
}

} // namespace

TEST(PositionFrame, MarginsArePercentOfThePageFromItsLowerLeft) {
  EXPECT_EQ(frameOf(margins(10, 20, 30, 40), 200, 100), (Frame{20, 40, 120, 40}));
  EXPECT_EQ(frameOf(margins(0, 0, 0, 0), 333, 77), (Frame{0, 0, 333, 77}));
  EXPECT_EQ(frameOf(margins(50, 50, 50, 50), 200, 100), (Frame{100, 50, 0, 0}));
  EXPECT_EQ(frameOf(margins(80, 0, 90, 0), 100, 100), (Frame{80, 0, -70, 100}));
}

TEST(PositionFrame, EachCoordinateIsMultipliedBeforeItIsDivided) {
  const float width = 37;
  const float left = 12.3F;
  EXPECT_EQ(frameOf(margins(left, 0, 0, 0), width, 10).x, (width * left) / 100.0F);
}

TEST(PositionFrame, OnlyAFiniteRectangleOfPositiveSizeIsVisible) {
  EXPECT_TRUE((Frame{0, 0, 1, 1}.visible()));
  EXPECT_TRUE((Frame{-50, -50, 0.1F, 500}.visible()));
  EXPECT_FALSE((Frame{0, 0, 0, 1}.visible()));
  EXPECT_FALSE((Frame{0, 0, 1, -1}.visible()));
  const float huge = std::numeric_limits<float>::max();
  EXPECT_FALSE(frameOf(margins(-huge, 0, 0, 0), 200, 100).visible());
  EXPECT_FALSE(frameOf(margins(huge, 0, -huge, 0), 200, 100).visible());
}

TEST(PositionEdges, EachEdgeIsGrabbedWithinTenPoints) {
  struct Row {
    double x, y, width, height;
    int32_t edges;
  };
  const std::array<Row, 20> rows = {{
      {50, 40, 100, 80, 0},
      {9.9, 40, 100, 80, kLeftEdge},
      {10, 40, 100, 80, 0},
      {90, 40, 100, 80, 0},
      {90.1, 40, 100, 80, kRightEdge},
      {50, 9.9, 100, 80, kBottomEdge},
      {50, 10, 100, 80, 0},
      {50, 70, 100, 80, 0},
      {50, 70.1, 100, 80, kTopEdge},
      {1, 1, 100, 80, kLeftEdge | kBottomEdge},
      {1, 79, 100, 80, kLeftEdge | kTopEdge},
      {99, 1, 100, 80, kRightEdge | kBottomEdge},
      {99, 79, 100, 80, kRightEdge | kTopEdge},
      {7, 7, 15, 15, kLeftEdge | kBottomEdge},
      {12, 12, 15, 15, kRightEdge | kTopEdge},
      {9.99, 5, 11, 11, kLeftEdge | kBottomEdge},
      {10, 10, 20, 20, 0},
      {10, 10, 19.9, 19.9, kRightEdge | kTopEdge},
      {0, 0, 0, 0, kLeftEdge | kBottomEdge},
      {-1, 500, 100, 80, kLeftEdge | kTopEdge},
  }};
  for (const auto& [x, y, width, height, edges] : rows)
    EXPECT_EQ(edgesAt(x, y, width, height), edges) << x << ' ' << y;
}

TEST(PositionDrag, EveryRuleOfTheEdgesHolds) {
  const std::array<DragRow, 34> rows = {{
      {"move", margins(10, 20, 30, 40), 0, 5, 7, margins(15, 13, 25, 47)},
      {"move stops left", margins(10, 20, 30, 40), 0, -25, 0, margins(0, 20, 40, 40)},
      {"move stops right", margins(10, 20, 30, 40), 0, 55, 0, margins(40, 20, 0, 40)},
      {"move stops below", margins(10, 20, 30, 40), 0, 0, -50, margins(10, 60, 30, 0)},
      {"move stops above", margins(10, 20, 30, 40), 0, 0, 50, margins(10, 0, 30, 60)},
      {"move into a corner", margins(10, 20, 30, 40), 0, -90, 90, margins(0, 0, 40, 60)},
      {"move of a box beyond the page", margins(-10, 0, -10, 0), 0, 0, 0, margins(-20, 0, 0, 0)},
      {"left", margins(10, 20, 30, 40), kLeftEdge, 5, 9, margins(15, 20, 30, 40)},
      {"left stops at the page", margins(10, 20, 30, 40), kLeftEdge, -50, 0,
       margins(0, 20, 30, 40)},
      {"left keeps 20 percent", margins(10, 20, 30, 40), kLeftEdge, 45, 0, margins(50, 20, 30, 40)},
      {"left past the right edge", margins(10, 20, 30, 40), kLeftEdge, 500, 0,
       margins(50, 20, 30, 40)},
      {"left at exactly 20 percent", margins(10, 20, 30, 40), kLeftEdge, 40, 0,
       margins(50, 20, 30, 40)},
      {"left pushes right", margins(5, 20, 90, 40), kLeftEdge, 1, 0, margins(0, 20, 80, 40)},
      {"left pushes a right beyond the page", margins(5, 20, 130, 40), kLeftEdge, 1, 0,
       margins(0, 20, 80, 40)},
      {"left with a negative right", margins(10, 20, -30, 40), kLeftEdge, 200, 0,
       margins(110, 20, -30, 40)},
      {"right", margins(10, 20, 30, 40), kRightEdge, 5, 9, margins(10, 20, 25, 40)},
      {"right stops at the page", margins(10, 20, 30, 40), kRightEdge, 50, 0,
       margins(10, 20, 0, 40)},
      {"right keeps 20 percent", margins(10, 20, 30, 40), kRightEdge, -60, 0,
       margins(10, 20, 70, 40)},
      {"right leaves left alone", margins(90, 20, 0, 40), kRightEdge, -1, 0,
       margins(90, 20, 80, 40)},
      {"right leaves a left beyond the page alone", margins(130, 20, 0, 40), kRightEdge, 5, 0,
       margins(130, 20, 80, 40)},
      {"bottom", margins(10, 20, 30, 40), kBottomEdge, 9, 5, margins(10, 20, 30, 45)},
      {"bottom stops at the page", margins(10, 20, 30, 40), kBottomEdge, 0, -50,
       margins(10, 20, 30, 0)},
      {"bottom keeps 20 percent", margins(10, 20, 30, 40), kBottomEdge, 0, 30,
       margins(10, 20, 30, 60)},
      {"bottom pushes top", margins(10, 90, 30, 5), kBottomEdge, 0, 1, margins(10, 80, 30, 0)},
      {"top", margins(10, 20, 30, 40), kTopEdge, 9, 5, margins(10, 15, 30, 40)},
      {"top stops at the page", margins(10, 20, 30, 40), kTopEdge, 0, 50, margins(10, 0, 30, 40)},
      {"top keeps 20 percent", margins(10, 20, 30, 40), kTopEdge, 0, -50, margins(10, 40, 30, 40)},
      {"top pushes bottom", margins(10, 5, 30, 90), kTopEdge, 0, -1, margins(10, 0, 30, 80)},
      {"left and bottom", margins(10, 20, 30, 40), kLeftEdge | kBottomEdge, 3, 4,
       margins(13, 20, 30, 44)},
      {"right and top", margins(10, 20, 30, 40), kRightEdge | kTopEdge, 3, 4,
       margins(10, 16, 27, 40)},
      {"left then right", margins(10, 20, 30, 40), kLeftEdge | kRightEdge, 5, 0,
       margins(15, 20, 25, 40)},
      {"bottom then top", margins(10, 20, 30, 40), kBottomEdge | kTopEdge, 0, 5,
       margins(10, 15, 30, 45)},
      {"no step within limits", margins(10, 20, 30, 40), kLeftEdge, 0, 0, margins(10, 20, 30, 40)},
      {"an unknown flag", margins(10, 20, 30, 40), 16, 5, 5, margins(10, 20, 30, 40)},
  }};
  for (const DragRow& row : rows) {
    Position position = row.before;
    drag(position, row.edges, row.dx, row.dy);
    EXPECT_EQ(all(position), all(row.after)) << row.name;
    EXPECT_EQ(position, row.after) << row.name;
  }
}

TEST(PositionDrag, AMoveKeepsTheSizeAndEveryMarginWithinThePage) {
  std::mt19937 random(3);
  std::uniform_real_distribution<float> half(0, 50);
  std::uniform_real_distribution<float> step(-60, 60);
  for (int round = 0; round < rounds(2000); ++round) {
    Position position = margins(half(random), half(random), half(random), half(random));
    const float across = position.left + position.right;
    const float upright = position.top + position.bottom;
    for (int i = 0; i < 20; ++i) {
      drag(position, 0, step(random), step(random));
      EXPECT_NEAR(position.left + position.right, across, 1e-3);
      EXPECT_NEAR(position.top + position.bottom, upright, 1e-3);
      for (const float margin : all(position)) {
        EXPECT_GE(margin, 0);
        EXPECT_LE(margin, 100.001F);
      }
    }
  }
}

TEST(PositionDrag, ResizingKeepsEveryMarginWithinThePageAndTheBoxLargeEnough) {
  std::mt19937 random(4);
  std::uniform_real_distribution<float> start(0, 40);
  std::uniform_real_distribution<float> step(-120, 120);
  constexpr std::array<int32_t, 8> kGrabs = {kLeftEdge,
                                             kRightEdge,
                                             kTopEdge,
                                             kBottomEdge,
                                             kLeftEdge | kTopEdge,
                                             kLeftEdge | kBottomEdge,
                                             kRightEdge | kTopEdge,
                                             kRightEdge | kBottomEdge};
  for (int round = 0; round < rounds(2000); ++round) {
    Position position = margins(start(random), start(random), start(random), start(random));
    for (int i = 0; i < 20; ++i) {
      drag(position, kGrabs.at(random() % kGrabs.size()), step(random), step(random));
      for (const float margin : all(position)) {
        EXPECT_GE(margin, 0);
        EXPECT_LE(margin, 100);
      }
      EXPECT_LE(position.left + position.right, 80.001F);
      EXPECT_LE(position.top + position.bottom, 80.001F);
      EXPECT_EQ(position.transparency, 70);
      EXPECT_EQ(position.layer, 3);
    }
  }
}

TEST(PositionText, SixLinesAreWrittenWithoutALineEndAtTheEnd) {
  EXPECT_EQ(positionText({10, 20, 30, 40, 100, 1}), "10.0\n20.0\n30.0\n40.0\n100.0\n1");
  EXPECT_EQ(positionText({10, 20, 30, 40, 100, 1}).size(), 27U);
  EXPECT_EQ(positionText({}), "0.0\n0.0\n0.0\n0.0\n0.0\n0");
  EXPECT_EQ(positionText({12.34F, -5, 150, 0.05F, 45.55F, -7}), "12.3\n-5.0\n150.0\n0.1\n45.5\n-7");
}

TEST(PositionText, SixLinesAreReadWhateverTheirLineEnds) {
  const Position fives{5, 5, 5, 5, 80, 2};
  const Position zeros{};
  const std::array<TextRow, 26> rows = {{
      {"5\n5\n5\n5\n80\n2", fives},
      {"5\r\n5\r\n5\r\n5\r\n80\r\n2\r\n", fives},
      {"5\n5\r\n5\n5\r\n80\n2", fives},
      {"5\n5\n5\n5\n80\n2\n", fives},
      {"5\n5\n5\n5\n80\n2\n7\n8", fives},
      {"5\n5\n5\n5\n80\n", {5, 5, 5, 5, 80, 0}},
      {"5\n5\n5\n5\n80", zeros},
      {"5\r5\r5\r5\r80\r2", zeros},
      {"5\r1\n5\n5\n5\n80\n2", {51, 5, 5, 5, 80, 2}},
      {"", zeros},
      {"\n\n\n\n\n", zeros},
      {"\n\n\n\n", zeros},
      {"abc\n 12.5xyz\n5\n5\n80\n2.9", {0, 12.5F, 5, 5, 80, 2}},
      {"inf\nnan\n0x10\n1e2\n5.\n99999999999",
       {0, 0, 0, 100, 5, std::numeric_limits<int32_t>::max()}},
      {"1e400\n-1e400\n1e-400\n.5\n-5\n-3",
       {std::numeric_limits<float>::max(), -std::numeric_limits<float>::max(), 0, 0.5F, -5, -3}},
      {"150\n-5\n1000000\n0\n200\n77", {150, -5, 1000000, 0, 200, 77}},
      {"\xEF\xBB\xBF"
       "5\n5\n5\n5\n80\n2",
       fives},
      {"5\n5\n5\n5\n80\n2\n\xFF", zeros},
      {"5\xC3\n5\n5\n5\n80\n2", zeros},
      {"5\xC3\xA4\n5\n5\n5\n80\n2", fives},
      {"\xC2\xA0"
       "5\n5\n5\n5\n80\n2",
       fives},
      {"5,5\n5\n5\n5\n80\n2", fives},
      {std::string_view("5\0\n5\n5\n5\n80\n2", 14), fives},
      {std::string_view("\0\0\0\0\0\0", 6), zeros},
      {"5 5 5 5 80 2", zeros},
      {"\xFE\xFF\0005", zeros},
  }};
  for (const auto& [text, position] : rows)
    EXPECT_EQ(positionOfText(text), position) << testing::PrintToString(text);
}

TEST(PositionText, WritingAndReadingIsStable) {
  std::mt19937 random(5);
  std::uniform_real_distribution<float> value(-1000, 1000);
  for (int round = 0; round < rounds(5000); ++round) {
    const Position any{value(random), value(random), value(random),
                       value(random), value(random), static_cast<int32_t>(random())};
    const std::string text = positionText(any);
    const Position read = positionOfText(text);
    EXPECT_EQ(positionText(read), text);
    EXPECT_EQ(positionOfText(positionText(read)), read);
    EXPECT_NEAR(read.left, any.left, 0.051);
    EXPECT_EQ(read.layer, any.layer);
  }
}

TEST(PositionText, NoBytesAreTooStrangeToRead) {
  std::mt19937 random(6);
  for (int round = 0; round < rounds(20000); ++round) {
    std::string bytes;
    for (size_t length = random() % 64; length > 0; --length)
      bytes += "0123456789.-+e\n\n\n\r \xC3\xA4\xFF"[random() % 21];
    const Position read = positionOfText(bytes);
    for (const float margin : all(read))
      EXPECT_TRUE(std::isfinite(margin));
  }
}

TEST(PositionFile, AFileIsRead) {
  const TemporaryFolder folder;
  EXPECT_EQ(readPositionFile(folder.write("settings.dat", "1\n2\n3\n4\n5\n6")),
            (Position{1, 2, 3, 4, 5, 6}));
}

TEST(PositionFile, WhatIsNoReadableFileReadsAsZeros) {
  const TemporaryFolder folder;
  EXPECT_EQ(readPositionFile(""), Position{});
  EXPECT_EQ(readPositionFile(folder.at("missing")), Position{});
  EXPECT_EQ(readPositionFile(folder.path()), Position{});
  EXPECT_EQ(readPositionFile(std::string(10000, 'x')), Position{});
  EXPECT_EQ(readPositionFile("/dev/zero"), Position{});
  ASSERT_EQ(mkfifo(folder.at("fifo").c_str(), 0600), 0);
  EXPECT_EQ(readPositionFile(folder.at("fifo")), Position{});
  std::filesystem::create_symlink("nowhere", folder.at("dangling"));
  EXPECT_EQ(readPositionFile(folder.at("dangling")), Position{});
  std::filesystem::create_symlink("loop", folder.at("loop"));
  EXPECT_EQ(readPositionFile(folder.at("loop")), Position{});
}

TEST(PositionFile, AFileThatTheUserMayNotReadReadsAsZeros) {
  if (geteuid() == 0 && seteuid(65534) != 0)
    GTEST_FAIL() << "the test needs a user without rights";
  const TemporaryFolder folder;
  const std::string path = folder.write("settings.dat", "1\n2\n3\n4\n5\n6");
  ASSERT_EQ(chmod(path.c_str(), 0), 0);
  EXPECT_EQ(readPositionFile(path), Position{});
  ASSERT_EQ(chmod(path.c_str(), 0600), 0);
  EXPECT_EQ(readPositionFile(path).layer, 6);
  if (getuid() == 0)
    ASSERT_EQ(seteuid(0), 0);
}

TEST(PositionFile, OnlyTheStartOfAHugeFileIsRead) {
  const TemporaryFolder folder;
  const auto begin = std::chrono::steady_clock::now();
  for (const std::string_view start : {"", "1\n2\n3\n4\n5\n6\n"}) {
    const std::string path = folder.write("settings.dat", start);
    std::filesystem::resize_file(path, 1U << 30);
    EXPECT_EQ(readPositionFile(path), start.empty() ? Position{} : (Position{1, 2, 3, 4, 5, 6}));
  }
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(1));
}

TEST(PositionFile, ACharacterAcrossTheEndOfWhatIsReadIsNoError) {
  const TemporaryFolder folder;
  for (size_t shift = 0; shift < 4; ++shift) {
    std::string text = "1\n2\n3\n4\n5\n6\n" + std::string(shift, 'x');
    while (text.size() < (1U << 20) + 16)
      text += "\xF0\x9F\x98\x80";
    EXPECT_EQ(readPositionFile(folder.write("settings.dat", text)), (Position{1, 2, 3, 4, 5, 6}));
  }
}

TEST(PositionFile, AWorkspaceWithoutItsOwnFileUsesTheDefaultOne) {
  const TemporaryFolder folder;
  const std::string own = folder.at("settings.dat");
  const std::string standard = folder.at("defaultsettings.dat");
  EXPECT_EQ(positionFileOf(folder.path()), standard);
  EXPECT_EQ(positionFileOf(folder.at("missing")), folder.at("missing/defaultsettings.dat"));
  folder.write("data/settings.dat", "");
  folder.write("Settings.dat", "");
  folder.write("settings.dat.old", "");
  EXPECT_EQ(positionFileOf(folder.path()), standard);
  EXPECT_EQ(positionFileOf(folder.at("Settings.dat")),
            folder.at("Settings.dat/defaultsettings.dat"));
  std::filesystem::create_symlink("nowhere", own);
  EXPECT_EQ(positionFileOf(folder.path()), own);
  std::filesystem::remove(own);
  std::filesystem::create_directory(own);
  EXPECT_EQ(positionFileOf(folder.path()), own);
}
