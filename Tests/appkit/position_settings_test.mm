#import "Bridge/text.h"
#import "Class/PluginSettingsDelegate.h"
#import "Class/PositionRect.h"
#import "Class/PositionView.h"
#import "support/position_window.h"
#import "support/run_loop.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <array>
#include <chrono>
#include <filesystem>
#include <limits>

namespace fs = std::filesystem;
using namespace vireonix::test;
using vireonix::bridge::pathString;
using vireonix::core::Position;

namespace {

const Position kFives{5, 5, 5, 5, 80, 2};
constexpr std::string_view kFivesText = "5\r\n5\r\n5\r\n5\r\n80\r\n2\r\n";

Position loaded(PositionWindow &test, const std::string &path) {
  [test.controller loadSettingsFromFile:pathString(path)];
  EXPECT_EQ([test.record() position], [[test.canvas() positionRect] position]);
  return test.position();
}

} // namespace

TEST(PositionSettings, TheFirstLoadPutsTheCanvasInItsPlaceholdersPlace) {
  PositionWindow test;
  ASSERT_EQ(test.canvas(), nil);
  [test.placeholder setAutoresizingMask:NSViewWidthSizable];
  const NSRect frame = [test.placeholder frame];
  PositionRect *own = test.record();
  test.load("1\n2\n3\n4\n5\n1");
  PositionView *canvas = test.canvas();
  ASSERT_NE(canvas, nil);
  EXPECT_TRUE(NSEqualRects([canvas frame], frame));
  EXPECT_EQ([canvas autoresizingMask], NSUInteger { NSViewWidthSizable });
  EXPECT_EQ([canvas superview], [test.window contentView]);
  EXPECT_EQ([test.placeholder superview], nil);
  EXPECT_EQ([canvas ower], test.controller);
  EXPECT_NE(test.record(), own);
  EXPECT_EQ(test.record(), [canvas positionRect]) << "one record for fields and canvas";
  test.load("5\n2\n3\n4\n5\n1");
  EXPECT_EQ(test.canvas(), canvas) << "made once";
  EXPECT_EQ(test.texts(), "5.0 2.0 3.0 4.0 5.0");
}

TEST(PositionSettings, WithoutAPlaceholderTheCanvasIsEmpty) {
  PositionWindow test;
  [test.controller setPositionDrawView:nil];
  test.load(kFivesText);
  EXPECT_TRUE(NSEqualRects([test.canvas() frame], NSZeroRect));
  EXPECT_EQ(test.position(), kFives);
}

TEST(PositionSettings, LoadingIsNoChange) {
  PositionWindow test;
  test.load(kFivesText);
  EXPECT_FALSE([test.controller isChange]);
}

TEST(PositionSettings, AnUnknownLayerLeavesTheSelection) {
  PositionWindow test;
  test.load("1\n2\n3\n4\n5\n1");
  test.load("1\n2\n3\n4\n5\n77");
  EXPECT_EQ([test.layers selectedTag], 1);
  EXPECT_EQ(test.position().layer, 77);
}

TEST(PositionSettings, BadFilesReadAsTheRulesSay) {
  constexpr float kLargest = std::numeric_limits<float>::max();
  const std::array<std::pair<std::string_view, Position>, 13> rows = {{
      {kFivesText, kFives},
      {"5\n5\r\n5\n5\r\n80\n2", kFives},
      {"5\n5\n5\n5\n80\n2\nmore\nlines", kFives},
      {"", {}},
      {"5\n5\n5\n5\n80", {}},
      {"5\n5\n5\n5\n80\n", {5, 5, 5, 5, 80, 0}},
      {"5\r5\r5\r5\r80\r2", {}},
      {"abc\n 12.5xyz\n5\n5\n80\n2.9", {0, 12.5F, 5, 5, 80, 2}},
      {"inf\nnan\n1e400\n-1e400\n0x10\n99999999999",
       {0, 0, kLargest, -kLargest, 0, std::numeric_limits<int32_t>::max()}},
      {"150\n-5\n1000\n0\n200\n1", {150, -5, 1000, 0, 200, 1}},
      {"5\xFF\n5\n5\n5\n80\n2", {}},
      {std::string_view("\x7F"
                        "ELF\0\0\n\0\n\xFF\n\n\n\n",
                        15),
       {}},
      {"\xFF\xFE"
       "5\n5\n5\n5\n80\n2",
       {}},
  }};
  PositionWindow test;
  for (const auto &[text, position] : rows) {
    test.load("1\n2\n3\n4\n5\n1");
    test.load(text);
    EXPECT_EQ(test.position(), position) << testing::PrintToString(text);
    [test.window display];
  }
}

TEST(PositionSettings, WhatIsNoReadableFileReadsAsZeros) {
  PositionWindow test;
  const std::string fifo = test.folder.at("fifo");
  ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
  for (const std::string &path :
       {test.folder.at("missing"), test.folder.path().string(), fifo, std::string()}) {
    test.load(kFivesText);
    EXPECT_EQ(loaded(test, path), Position{}) << path;
    EXPECT_EQ(test.texts(), "0.0 0.0 0.0 0.0 0.0");
  }
  [test.controller loadSettingsFromFile:nil];
  EXPECT_EQ(test.position(), Position{});
}

TEST(PositionSettings, AHugeFileIsReadInBoundedTime) {
  PositionWindow test;
  const std::string path = test.folder.write("huge", "");
  fs::resize_file(path, 1U << 30);
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_EQ(loaded(test, path), Position{});
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(1));
}

TEST(PositionSettings, TheWorkspacesOwnFileIsLoadedElseItsDefault) {
  PositionWindow test;
  test.useWorkspace();
  test.folder.write("workspace/data/settings.dat", "9\n9\n9\n9\n9\n1");
  test.folder.write("workspace/defaultsettings.dat", "1\n2\n3\n4\n5\n1");
  [test.controller loadWorkSpaceSettings];
  EXPECT_EQ(test.position(), (Position{1, 2, 3, 4, 5, 1}));
  test.folder.write("workspace/settings.dat", kFivesText);
  [test.controller loadWorkSpaceSettings];
  EXPECT_EQ(test.position(), kFives);
}

TEST(PositionSettings, WithoutAnyFileTheRecordIsZeros) {
  PositionWindow test;
  [test.controller setWorkSpace:pathString(test.folder.at("missing"))];
  [test.controller loadWorkSpaceSettings];
  EXPECT_NE(test.canvas(), nil);
  EXPECT_EQ(test.position(), Position{});
}

TEST(PositionSettings, WithoutAWorkspaceNothingIsLoaded) {
  PositionWindow test;
  [test.controller loadWorkSpaceSettings];
  EXPECT_EQ(test.canvas(), nil);
}

TEST(PositionSettings, SavingWritesWhatTheCanvasShowsAndTheSelectedLayer) {
  PositionWindow test(kFives);
  test.useWorkspace();
  test.edit(test.left);
  test.type(@"12.34");
  test.drag(NSMakePoint(80, 60), NSMakePoint(80, 65));
  [test.layers selectCellWithTag:1];
  EXPECT_EQ(test.position().layer, 2) << "the choice waits for the save";
  [test.controller saveGlobalSettings];
  EXPECT_EQ(test.settings(), "12.3\n0.0\n5.0\n10.0\n80.0\n1");
  EXPECT_TRUE([test.controller isChange]);
}

TEST(PositionSettings, AThreadSavesWhileTheMainThreadRunsItsLoopAndWhileItDoesNot) {
  PositionWindow test(kFives);
  test.useWorkspace();
  [test.layers selectCellWithTag:1];
  [NSThread detachNewThreadSelector:@selector(saveGlobalSettings) toTarget:test.controller
                         withObject:nil];
  EXPECT_TRUE(pumpUntil([&] { return bool([test.controller isChange]); }));
  EXPECT_EQ(test.settings(), "5.0\n5.0\n5.0\n5.0\n80.0\n1");

  [test.layers selectCellWithTag:0];
  [test.controller setIsChange:NO];
  [NSThread detachNewThreadSelector:@selector(saveGlobalSettings) toTarget:test.controller
                         withObject:nil];
  const NSTimeInterval end = [NSDate timeIntervalSinceReferenceDate] + 10;
  while (![test.controller isChange] && [NSDate timeIntervalSinceReferenceDate] < end)
    [NSThread sleepForTimeInterval:0.01];
  EXPECT_EQ(test.settings(), "5.0\n5.0\n5.0\n5.0\n80.0\n0");
  pumpFor(0.1);
}

TEST(PositionSettings, ASaveThatAskedEarlierDoesNotReplaceALaterOne) {
  PositionWindow test(kFives);
  test.useWorkspace();
  for (int round = 0; round < 20; ++round) {
    [NSThread detachNewThreadSelector:@selector(saveGlobalSettings) toTarget:test.controller
                           withObject:nil];
    pumpFor(0.002);
    [test.record() setLeft:static_cast<float>(round)];
    [test.controller saveGlobalSettings];
    pumpFor(0.002);
    EXPECT_EQ(test.settings(), std::to_string(round) + ".0\n5.0\n5.0\n5.0\n80.0\n2");
  }
}

TEST(PositionSettings, AMissingWorkspaceIsAChangeWithoutAFile) {
  PositionWindow test(kFives);
  [test.controller setWorkSpace:pathString(test.folder.at("missing"))];
  [test.controller saveGlobalSettings];
  EXPECT_TRUE([test.controller isChange]);
  EXPECT_FALSE(fs::exists(test.folder.at("missing")));
}

TEST(PositionSettings, TheDefaultButtonLoadsTheBundlesFile) {
  PositionWindow test(kFives);
  test.useWorkspace();
  test.folder.write("bundle/Contents/Resources/data/defaultsettings.dat", "1\n2\n3\n4\n5\n1");
  test.folder.write("workspace/defaultsettings.dat", "6\n7\n8\n9\n10\n0");
  [test.controller setBundlePath:pathString(test.folder.at("bundle"))];
  [test.controller onDefault:nil];
  EXPECT_EQ(test.position(), (Position{1, 2, 3, 4, 5, 1}));
  EXPECT_EQ(test.texts(), "1.0 2.0 3.0 4.0 5.0");
  EXPECT_EQ([test.layers selectedTag], 1);
  EXPECT_TRUE([test.controller isChange]);
  EXPECT_EQ(test.settings(), "") << "the file waits for the next save";
}

TEST(PositionSettings, TheDefaultButtonFallsBackToTheWorkspacesFile) {
  PositionWindow test(kFives);
  test.useWorkspace();
  test.folder.write("workspace/defaultsettings.dat", "6\n7\n8\n9\n10\n0");
  [test.controller onDefault:nil];
  EXPECT_EQ(test.position(), (Position{6, 7, 8, 9, 10, 0}));
  EXPECT_TRUE([test.controller isChange]);
}

TEST(PositionSettings, WithoutADefaultFileTheButtonOnlySaysSo) {
  PositionWindow test(kFives);
  test.useWorkspace();
  testing::internal::CaptureStdout();
  [test.controller onDefault:nil];
  [test.controller setWorkSpace:nil];
  [test.controller onDefault:nil];
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "defaultsettings.dat not found!\ndefaultsettings.dat not found!\n");
  EXPECT_EQ(test.position(), kFives);
  EXPECT_FALSE([test.controller isChange]);
}
