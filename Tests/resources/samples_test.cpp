#include "sample_files.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <regex>
#include <set>

using namespace vireonix::test;
namespace fs = std::filesystem;

namespace {

const std::string kSamples = VIREONIX_SAMPLES;
const std::string kTemplate = VIREONIX_SOURCE_DIR "/Resources/data/intro_asset/data.xml";

std::string inSample(const char* sample, const std::string& file) {
  return fs::path(kSamples) / sample / file;
}

std::string documentText(const char* sample) {
  return fileBytes(inSample(sample, "intro_asset/data.xml"));
}

struct Caption {
  const xmlNode* object = nullptr; // the element with the attributes
  Document markup;                 // what its CDATA section holds
};

/// The captions of one slide; fails the test where the document's layout is not the writer's.
std::vector<Caption> captionsOf(const xmlNode* slide) {
  std::vector<Caption> captions;
  for (const xmlNode* object : childrenOf(slide)) {
    const auto inner = childrenOf(object);
    EXPECT_EQ(object->type, XML_ELEMENT_NODE) << "white space would become a caption";
    if (object->type != XML_ELEMENT_NODE || inner.size() != 1) {
      ADD_FAILURE() << "a text object needs exactly one caption element";
      continue;
    }
    EXPECT_EQ(nameOf(object) + "/" + nameOf(inner.front()), "text/text");
    const auto content = childrenOf(inner.front());
    if (content.size() != 1 || content.front()->type != XML_CDATA_SECTION_NODE) {
      ADD_FAILURE() << "a caption is one CDATA section";
      continue;
    }
    const auto* markup = reinterpret_cast<const char*>(content.front()->content);
    captions.push_back({object, parseStrictly(markup)});
  }
  return captions;
}

class Journey : public testing::Test {
protected:
  void SetUp() override {
    document = parseStrictly(documentText("journey"));
    ASSERT_NE(document, nullptr);
    top = xmlDocGetRootElement(document.get());
    const xmlNode* data = childNamed(top, "data");
    ASSERT_NE(data, nullptr);
    slides = childrenOf(data);
  }

  [[nodiscard]] static std::string fileOf(const xmlNode* slide) {
    return attributeOf(slide, "Background_image");
  }

  [[nodiscard]] const xmlNode* styles() const { return childNamed(top, "define_animation_Style"); }

  Document document;
  const xmlNode* top = nullptr;
  std::vector<const xmlNode*> slides;
};

void expectRange(const xmlNode* object, const char* name, int low, int high) {
  const std::string value = attributeOf(object, name);
  ASSERT_TRUE(std::regex_match(value, std::regex("[0-9]{1,4}"))) << name << " is " << value;
  EXPECT_GE(std::stoi(value), low) << name;
  EXPECT_LE(std::stoi(value), high) << name;
}

std::string elementText(const xmlNode* node) {
  xmlChar* content = xmlNodeGetContent(node);
  std::string answer = reinterpret_cast<const char*>(content);
  xmlFree(content);
  return answer;
}

} // namespace

TEST_F(Journey, TheDocumentHasStylesAndSlidesAndNothingBetweenThem) {
  EXPECT_EQ(nameOf(top), "main");
  const auto children = childrenOf(top);
  ASSERT_EQ(children.size(), 2U);
  EXPECT_EQ(nameOf(children[0]), "define_animation_Style");
  EXPECT_EQ(nameOf(children[1]), "data");
  EXPECT_GE(slides.size(), 5U);
  for (const xmlNode* slide : slides) {
    ASSERT_EQ(slide->type, XML_ELEMENT_NODE);
    EXPECT_EQ(nameOf(slide), "slide");
    EXPECT_GE(captionsOf(slide).size(), 3U) << fileOf(slide);
  }
}

TEST_F(Journey, ItsStylesAndAttributesAreTheTemplates) {
  const Document original = parseStrictly(fileBytes(kTemplate));
  ASSERT_NE(original, nullptr);
  const xmlNode* root = xmlDocGetRootElement(original.get());
  std::vector<std::string> expected;
  for (const xmlNode* style : childrenOf(childNamed(root, "define_animation_Style"))) {
    expected.push_back(attributeOf(style, "Name"));
  }
  std::vector<std::string> names;
  for (const xmlNode* style : childrenOf(styles())) {
    names.push_back(attributeOf(style, "Name"));
  }
  EXPECT_EQ(names, expected);
  const xmlNode* slide = childrenOf(childNamed(root, "data")).front();
  for (const xmlNode* own : slides) {
    EXPECT_EQ(attributeNames(own), attributeNames(slide));
    for (const Caption& caption : captionsOf(own)) {
      EXPECT_EQ(attributeNames(caption.object), attributeNames(childrenOf(slide).front()));
    }
  }
}

TEST_F(Journey, EveryValueOfACaptionIsInItsRange) {
  std::set<std::string> styleNames;
  for (const xmlNode* style : childrenOf(styles())) {
    styleNames.insert(attributeOf(style, "Name"));
  }
  const std::set<std::string> places = {"TL", "TC", "TR", "CL", "C", "CR", "BL", "BC", "BR"};
  for (const xmlNode* slide : slides) {
    for (const Caption& caption : captionsOf(slide)) {
      const xmlNode* object = caption.object;
      EXPECT_TRUE(styleNames.contains(attributeOf(object, "set_animation_style")));
      EXPECT_TRUE(places.contains(attributeOf(object, "Align")));
      expectRange(object, "In_Time", 0, 200);
      expectRange(object, "Stay_Time", 1, 200);
      expectRange(object, "Text_Align", 0, 2);
      expectRange(object, "Text_Animation_LetterByLetter", 0, 2);
      expectRange(object, "Animation_Start_Direction", 0, 7);
    }
  }
}

TEST_F(Journey, EveryCaptionIsBoldTextWithASizeAndAColour) {
  for (const xmlNode* slide : slides) {
    for (const Caption& caption : captionsOf(slide)) {
      ASSERT_NE(caption.markup, nullptr);
      const xmlNode* bold = xmlDocGetRootElement(caption.markup.get());
      EXPECT_EQ(nameOf(bold), "b");
      const xmlNode* font = childNamed(bold, "font");
      ASSERT_NE(font, nullptr);
      expectRange(font, "size", 10, 60);
      EXPECT_TRUE(std::regex_match(attributeOf(font, "color"), std::regex("#[0-9A-F]{6}")));
      EXPECT_FALSE(elementText(font).empty());
    }
  }
}

TEST_F(Journey, ItShowsEveryStyleMostPlacesAndSeveralScripts) {
  std::set<std::string> styleNames;
  std::set<std::string> places;
  std::string texts;
  for (const xmlNode* slide : slides) {
    for (const Caption& caption : captionsOf(slide)) {
      styleNames.insert(attributeOf(caption.object, "set_animation_style"));
      places.insert(attributeOf(caption.object, "Align"));
      texts += elementText(xmlDocGetRootElement(caption.markup.get()));
    }
  }
  EXPECT_EQ(styleNames.size(), childrenOf(styles()).size());
  EXPECT_GE(places.size(), 8U);
  for (const char* sample : {"ü", "の", "غروب", "העיר"}) {
    EXPECT_NE(texts.find(sample), std::string::npos) << sample;
  }
}

TEST_F(Journey, EveryFileOfASlideIsThereAndDecodesToItsSize) {
  const std::map<std::string, PictureSize> expected = {
      {"intro_asset/welcome.jpg", {1600, 1000, 1}}, {"lake.jpg", {1600, 1000, 1}},
      {"intro_asset/meadow.jpg", {1600, 1000, 1}},  {"sea.jpg", {1600, 1000, 1}},
      {"intro_asset/city.jpg", {1600, 1000, 1}},    {"dunes.png", {1200, 750, 1}},
      {"intro_asset/winter.gif", {480, 300, 24}},   {"intro_asset/stars.swf", {640, 400, 96}}};
  std::set<std::string> named;
  for (const xmlNode* slide : slides) {
    const std::string file = fileOf(slide);
    named.insert(file);
    ASSERT_TRUE(expected.contains(file)) << file;
    const std::optional<PictureSize> size = decodedSize(inSample("journey", file));
    ASSERT_TRUE(size.has_value()) << file;
    EXPECT_EQ(*size, expected.at(file)) << file;
    EXPECT_LT(fs::file_size(inSample("journey", file)), 700'000U) << file;
  }
  EXPECT_EQ(named.size(), expected.size());
}

TEST_F(Journey, ItHasAMovieForThePageAndAPosition) {
  EXPECT_TRUE(decodedSize(inSample("journey", "book.swf")).has_value());
  for (const char* sample : {"journey", "empty"}) {
    const std::string position = fileBytes(inSample(sample, "settings.dat"));
    EXPECT_TRUE(std::regex_match(position, std::regex("([0-9]+\\.[0-9]\n){5}[01]"))) << position;
  }
}

TEST(EmptySample, ItsDocumentHasStylesAndNoSlide) {
  const Document document = parseStrictly(documentText("empty"));
  ASSERT_NE(document, nullptr);
  const xmlNode* root = xmlDocGetRootElement(document.get());
  EXPECT_EQ(childrenOf(root).size(), 2U);
  ASSERT_NE(childNamed(root, "define_animation_Style"), nullptr);
  ASSERT_NE(childNamed(root, "data"), nullptr);
  EXPECT_TRUE(childrenOf(childNamed(root, "data")).empty());
}

TEST(MalformedSample, ItsDocumentIsNotWellFormed) {
  EXPECT_GT(documentText("malformed").size(), 1000U);
  EXPECT_EQ(parseStrictly(documentText("malformed")), nullptr);
}

TEST(DecodedSize, ADamagedPictureHasNone) {
  const TemporaryFolder folder;
  for (const std::string name : {"lake.jpg", "dunes.png", "intro_asset/winter.gif", "book.swf"}) {
    const std::string whole = fileBytes(inSample("journey", name));
    const std::string half = folder.write(fs::path(name).filename().string(),
                                          std::string_view(whole).substr(0, whole.size() / 2));
    EXPECT_FALSE(decodedSize(half).has_value()) << name;
  }
}
