#include "movie_reader.h"
#include "movie_writer/scenes.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <map>
#include <set>
#include <string>

namespace movie = vireonix::movie;
using namespace vireonix::test;

namespace {

enum Code : std::uint16_t {
  End = 0,
  ShowFrame = 1,
  SetBackground = 9,
  Place = 26,
  Remove = 28,
  Shape3 = 32,
  Attributes = 69
};

movie::Shape square(double side) {
  movie::Shape shape;
  shape.rectangle(shape.solid({10, 20, 30}), {{}, {side, side}});
  return shape;
}

int countOf(const ReadMovie& read, std::uint16_t code) {
  return static_cast<int>(std::count_if(read.tags.begin(), read.tags.end(),
                                        [code](const Tag& tag) { return tag.code == code; }));
}

struct Expectation {
  std::string name;
  Rect stage;
  int frames;
};

class SceneMovie : public testing::TestWithParam<Expectation> {};

} // namespace

TEST(BitWriter, FillsBytesFromTheHighestBitAndAlignsWholeNumbers) {
  movie::BitWriter out;
  out.bits(0b101, 3);
  out.signedBits(-2, 4);
  out.u16(0x1234);
  EXPECT_EQ(out.bytes(), (std::vector<std::uint8_t>{0b10111100, 0x34, 0x12}));
}

TEST(BitWriter, FindsTheFewestBitsOfSignedNumbers) {
  EXPECT_EQ(movie::signedWidth({0, 0}), 0);
  EXPECT_EQ(movie::signedWidth({1}), 2);
  EXPECT_EQ(movie::signedWidth({-1}), 1);
  EXPECT_EQ(movie::signedWidth({-128, 5}), 8);
  EXPECT_EQ(movie::signedWidth({128}), 9);
  EXPECT_EQ(movie::unsignedWidth(5), 3);
}

TEST(Records, ARectangleKeepsItsEdgesInTwips) {
  movie::BitWriter out;
  movie::writeRect(out, {{-12.5, 3}, {550, 400.05}});
  BitReader in(out.bytes());
  EXPECT_EQ(readRect(in), (Rect{-250, 11000, 60, 8001}));
  EXPECT_EQ(in.left(), 0U);
}

TEST(Shape, ItsOutlinesAreClosedAndInsideItsBounds) {
  movie::Shape shape;
  const auto fill = shape.radial({5, 5}, 5, {{0, {255, 255, 255}}, {1, {0, 0, 0, 0}}});
  shape.circle(fill, {5, 5}, 5);
  shape.roundedRectangle(shape.solid({1, 2, 3}), {{-20, -10}, {0, 4}}, 3);
  movie::BitWriter out;
  shape.write(out, 7);
  const ReadShape read = readShape({Shape3, out.bytes()});
  EXPECT_EQ(read.character, 7);
  EXPECT_EQ(read.fills, 2);
  EXPECT_EQ(read.outlines, 2);
  EXPECT_EQ(read.bounds.left, -400);
  EXPECT_EQ(read.bounds.top, -200);
  EXPECT_NEAR(read.bounds.right, 200, 2);
}

TEST(Movie, ADepthIsFilledMovedReplacedAndEmptied) {
  movie::Movie film({100, 80}, 12.5, {1, 2, 3});
  const std::uint16_t first = film.define(square(10));
  const std::uint16_t second = film.define(square(20));
  film.place(4, first, {});
  film.place(4, first, movie::Matrix::translation({5, 5}));
  film.place(4, second, {});
  film.remove(4);
  film.remove(4);
  film.place(4, second, {});
  film.showFrame();
  const ReadMovie read = readMovie(film.file(movie::Packing::Plain));
  std::vector<std::array<int, 3>> placements;
  for (const Tag& tag : read.tags) {
    if (tag.code == Place) {
      const Placement one = readPlacement(tag);
      placements.push_back({one.moves, one.hasCharacter, one.character});
    }
  }
  EXPECT_EQ(placements,
            (std::vector<std::array<int, 3>>{{0, 1, 1}, {1, 0, 0}, {1, 1, 2}, {0, 1, 2}}));
  EXPECT_EQ(countOf(read, Remove), 1);
  EXPECT_EQ(read.framesPerSecond, 12.5);
}

TEST(Movie, ABodyReadsTheSamePackedAndPlain) {
  const movie::Movie film = movie::bookScene();
  const std::vector<std::uint8_t> plain = film.file(movie::Packing::Plain);
  const std::vector<std::uint8_t> packed = film.file(movie::Packing::Zlib);
  EXPECT_EQ(plain.front(), 'F');
  EXPECT_EQ(packed.front(), 'C');
  EXPECT_LT(packed.size(), plain.size());
  const ReadMovie first = readMovie(plain);
  const ReadMovie second = readMovie(packed);
  ASSERT_EQ(first.tags.size(), second.tags.size());
  for (std::size_t i = 0; i < first.tags.size(); ++i) {
    EXPECT_EQ(first.tags[i].body, second.tags[i].body);
  }
}

TEST(Movie, AnUnknownSceneHasNoMovie) {
  EXPECT_FALSE(movie::scene("nothing").has_value());
}

TEST_P(SceneMovie, TheBuiltFileHasTheStagePaceAndFramesItShould) {
  const Expectation& expected = GetParam();
  const std::string bytes = fileBytes(std::string(VIREONIX_MOVIES) + "/" + expected.name + ".swf");
  const ReadMovie read =
      readMovie({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
  EXPECT_EQ(read.version, 8);
  EXPECT_EQ(read.stage, expected.stage);
  EXPECT_EQ(read.framesPerSecond, 24);
  EXPECT_EQ(read.frames, expected.frames);
  EXPECT_EQ(countOf(read, ShowFrame), expected.frames);
  ASSERT_GE(read.tags.size(), 2U);
  EXPECT_EQ(read.tags[0].code, Attributes);
  EXPECT_EQ(read.tags[0].body, std::vector<std::uint8_t>(4, 0));
  EXPECT_EQ(read.tags[1].code, SetBackground);
  EXPECT_EQ(read.tags.back().code, End);
}

TEST_P(SceneMovie, ItHoldsOnlyShapesAndTheirPlacements) {
  const ReadMovie read = readMovie(movie::scene(GetParam().name)->file(movie::Packing::Zlib));
  const std::set<std::uint16_t> allowed = {End,   ShowFrame, SetBackground,
                                           Place, Shape3,    Attributes};
  std::set<int> defined;
  std::map<int, int> shown;
  int frame = 0;
  for (const Tag& tag : read.tags) {
    EXPECT_TRUE(allowed.contains(tag.code)) << tag.code;
    frame += tag.code == ShowFrame ? 1 : 0;
    if (tag.code == Shape3) {
      EXPECT_TRUE(defined.insert(readShape(tag).character).second);
    } else if (tag.code == Place) {
      const Placement placement = readPlacement(tag);
      EXPECT_EQ(placement.moves, shown.contains(placement.depth));
      EXPECT_TRUE(frame == 0 || placement.moves) << "nothing may appear after the first frame";
      if (placement.hasCharacter) {
        EXPECT_TRUE(defined.contains(placement.character));
        shown[placement.depth] = placement.character;
      }
    }
  }
  EXPECT_GE(shown.size(), 10U);
}

INSTANTIATE_TEST_SUITE_P(All, SceneMovie,
                         testing::Values(Expectation{"vireonix", {0, 11000, 0, 8000}, 72},
                                         Expectation{"stars", {0, 12800, 0, 8000}, 96}),
                         [](const auto& one) { return one.param.name; });
