#include "picture_painter/encode.h"
#include "picture_painter/noise.h"
#include "picture_painter/palette.h"
#include "support/temporary_folder.h"

#include <gif_lib.h>
#include <gtest/gtest.h>

#include <memory>

using namespace vireonix::painting;
using vireonix::test::TemporaryFolder;

namespace {

Canvas plain(int width, int height, Rgb colour) {
  Canvas picture(width, height);
  picture.shade([colour](float, float, Rgb) { return colour; });
  return picture;
}

struct CloseGif {
  void operator()(GifFileType* gif) const { DGifCloseFile(gif, nullptr); }
};

/// What shows at a place once frame `last` is laid over those before it.
std::uint8_t indexShown(const GifFileType& gif, int last, int x, int y) {
  std::uint8_t shown = Palette::kTransparent;
  for (int i = 0; i <= last; ++i) {
    const std::uint8_t index = gif.SavedImages[i].RasterBits[y * gif.SWidth + x];
    shown = index == Palette::kTransparent ? shown : index;
  }
  return shown;
}

} // namespace

TEST(Noise, ItIsContinuousBoundedAndRepeatable) {
  const Noise noise(5);
  const Noise same(5);
  const Noise other(6);
  int differences = 0;
  for (int i = 0; i < 4000; ++i) {
    const float x = -20 + 0.0137F * static_cast<float>(i);
    const float value = noise.at(x, 3.3F);
    EXPECT_LT(std::abs(value), 1.0F);
    EXPECT_LT(std::abs(value - noise.at(x + 0.001F, 3.3F)), 0.01F);
    EXPECT_EQ(value, same.at(x, 3.3F));
    differences += value != other.at(x, 3.3F) ? 1 : 0;
  }
  EXPECT_GT(differences, 3900);
}

TEST(Dice, TheirNumbersFillTheRangeEvenly) {
  Dice dice(3);
  int low = 0;
  for (int i = 0; i < 10000; ++i) {
    const float value = dice.between(2, 4);
    ASSERT_GE(value, 2);
    ASSERT_LT(value, 4);
    low += value < 3 ? 1 : 0;
  }
  EXPECT_NEAR(low, 5000, 300);
}

TEST(Gradient, ItAnswersItsStopsAndMixesBetweenThem) {
  const Gradient gradient = {{0.2F, hex(0x000000)}, {0.6F, hex(0xFF8000)}};
  EXPECT_EQ(gradient.at(0).red, 0);
  EXPECT_EQ(gradient.at(1).red, 1);
  EXPECT_NEAR(gradient.at(0.4F).red, 0.5F, 1e-5F);
  EXPECT_NEAR(gradient.at(0.4F).green, 64 / 255.0F, 1e-5F);
}

TEST(Layer, BlurringSpreadsAndKeepsTheAmount) {
  Layer sheet(41, 41);
  sheet.use(hex(0xFFFFFF));
  cairo_rectangle(sheet.pen(), 15, 15, 11, 11);
  cairo_fill(sheet.pen());
  sheet.blur(6);
  float sum = 0;
  for (int y = 0; y < 41; ++y) {
    for (int x = 0; x < 41; ++x) {
      sum += sheet.opacityAt(x, y);
    }
  }
  EXPECT_NEAR(sum, 121, 6);
  EXPECT_LT(sheet.opacityAt(15, 20), 0.9F);
  EXPECT_GT(sheet.opacityAt(13, 20), 0.05F);
}

TEST(Canvas, AHalfCoveredRowMixesBothColours) {
  Canvas picture = plain(3, 4, hex(0x000000));
  picture.shadeBelow([](float) { return 1.5F; },
                     [](float, float, float, Rgb) { return hex(0xFFFFFF); });
  EXPECT_EQ(picture.at(1, 0).red, 0);
  EXPECT_NEAR(picture.at(1, 1).red, 0.5F, 1e-5F);
  EXPECT_EQ(picture.at(1, 2).red, 1);
}

TEST(Gif, FramesKeepTheirColoursAndStoreOnlyWhatChanges) {
  const TemporaryFolder folder;
  Canvas first = plain(8, 6, hex(0x204060));
  first.at(2, 2) = hex(0xFF0000);
  Canvas second = plain(8, 6, hex(0x204060));
  second.at(5, 3) = hex(0xFF0000);
  // The palette takes every third pixel: put the red one where it looks.
  first.at(0, 0) = second.at(0, 0) = hex(0xFF0000);
  ASSERT_TRUE(writeGif({first, second}, 7, folder.at("two.gif")));

  const std::unique_ptr<GifFileType, CloseGif> gif(
      DGifOpenFileName(folder.at("two.gif").c_str(), nullptr));
  ASSERT_NE(gif, nullptr);
  ASSERT_EQ(DGifSlurp(gif.get()), GIF_OK);
  ASSERT_EQ(gif->ImageCount, 2);
  EXPECT_EQ(gif->SWidth, 8);
  EXPECT_EQ(gif->SHeight, 6);
  GraphicsControlBlock control{};
  ASSERT_EQ(DGifSavedExtensionToGCB(gif.get(), 1, &control), GIF_OK);
  EXPECT_EQ(control.DelayTime, 7);
  const std::uint8_t red = indexShown(*gif, 0, 2, 2);
  EXPECT_EQ(gif->SColorMap->Colors[red].Red, 255);
  EXPECT_EQ(gif->SColorMap->Colors[red].Blue, 0);
  EXPECT_NE(indexShown(*gif, 1, 2, 2), red);
  EXPECT_EQ(indexShown(*gif, 1, 5, 3), red);
  EXPECT_EQ(gif->SavedImages[1].RasterBits[40], Palette::kTransparent);
}

TEST(Encode, AFileThatCannotBeWrittenIsToldToTheCaller) {
  const Canvas picture = plain(4, 4, hex(0x102030));
  EXPECT_FALSE(writeJpeg(picture, 80, "/nowhere/at/all.jpg"));
  EXPECT_FALSE(writePng(picture, "/nowhere/at/all.png"));
  EXPECT_FALSE(writeGif({picture}, 5, "/nowhere/at/all.gif"));
}
