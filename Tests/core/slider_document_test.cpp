#include "Core/slider_document.h"

#include "support/sanitizer.h"

#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <string>

using vireonix::test::rounds;
namespace slider = vireonix::core::slider;
namespace xml = vireonix::core::xml;
using slider::Slide;
using slider::TextObject;

namespace {

const std::string kTemplate =
    "<main>\n <define_animation_Style><s Name='Template'/></define_animation_Style>\n <data>\n"
    "  <slide effect='fade' Background_image='' pause='3'>\n"
    "   <text set_animation_style='Fade' Align='C' In_Time='0' Stay_Time='1' Text_Align='0' "
    "Text_Animation_LetterByLetter='0' Animation_Start_Direction='0' speed='2'>"
    "<text kind='html'><![CDATA[<b><font size=\"12\" color=\"#000000\">New</font></b>]]></text>"
    "</text>\n  </slide>\n <slide second='1'/></data>\n</main>";

xml::Tree parsed(const std::string& markup) {
  xml::Tree root = xml::parse(markup, xml::Mode::Strict);
  EXPECT_TRUE(root) << markup;
  return root ? root : std::make_shared<const xml::Node>();
}

slider::Document readData(const xml::Tree& root) {
  return slider::readDocument(*root);
}

std::vector<Slide> slidesOf(const std::string& data) {
  return slider::readDocument(*parsed("<main><data>" + data + "</data></main>"))
      .slides.value_or(std::vector<Slide>{});
}

// One save of what a document holds, with the template above.
std::string saved(const std::string& document) {
  const xml::Tree root = parsed(document);
  const xml::Tree templates = parsed(kTemplate);
  const slider::Document read = slider::readDocument(*root);
  const slider::DocumentShape shape = {
      .root = root.get(),
      .styles = read.styles != nullptr ? read.styles : slider::templateStyles(*templates),
      .slide = slider::templateSlide(*templates)};
  return slider::writeDocument(read.slides.value_or(std::vector<Slide>{}), shape);
}

std::string written(const std::vector<Slide>& slides, const std::string& templateMarkup) {
  const xml::Tree templates = parsed(templateMarkup);
  return slider::writeDocument(
      slides, {.root = nullptr, .styles = nullptr, .slide = slider::templateSlide(*templates)});
}

const std::string kDeclaration = R"(<?xml version="1.0" encoding="utf-8"?>)";

} // namespace

TEST(SliderRead, ReadsStylesSlidesAndTextObjects) {
  const xml::Tree root = parsed(
      "<other><define_animation_Style><a Name='Fade'/><!--x--> <b/><c Name='Fly'/>"
      "</define_animation_Style><data><slide Background_image='intro_asset/a.jpg'>"
      "<text In_Time='3' extra='e'><text><![CDATA[<b><font size=\"24\" color=\"#FF0000\">Hi"
      "</font></b>]]></text></text></slide><slide Background_image='b.swf'/></data></other>");
  const slider::Document document = readData(root);
  ASSERT_NE(document.styles, nullptr);
  EXPECT_EQ(slider::styleNames(*document.styles), (std::vector<std::string>{"Fade", "Fly"}));
  const std::vector<Slide> expected = {{"intro_asset/a.jpg",
                                        {{{"Background_image", "intro_asset/a.jpg"},
                                          {"In_Time", "3"},
                                          {"extra", "e"},
                                          {"text", "Hi"},
                                          {"size", "24"},
                                          {"color", "#FF0000"}}}},
                                       {"b.swf", {}}};
  EXPECT_EQ(document.slides, expected);
}

TEST(SliderRead, OfSeveralContainersAndStylesTheLastCounts) {
  const xml::Tree root = parsed(
      "<main><data><slide Background_image='1'/></data><define_animation_Style a='1'/>"
      "<data><slide Background_image='2'/></data><define_animation_Style a='2'/><x/></main>");
  const slider::Document document = readData(root);
  EXPECT_EQ(*document.styles->attribute("a"), "2");
  EXPECT_EQ(document.slides, (std::vector<Slide>{{"2", {}}}));
}

TEST(SliderRead, AMissingContainerIsNotAnEmptyOne) {
  const xml::Tree without = parsed("<main/>");
  EXPECT_FALSE(readData(without).slides);
  EXPECT_EQ(readData(without).styles, nullptr);
  const xml::Tree with = parsed("<main><data/></main>");
  EXPECT_EQ(readData(with).slides, std::vector<Slide>{});
}

TEST(SliderRead, OnlySlidesOfTheContainerAreRead) {
  EXPECT_EQ(slidesOf("<!--c--> <other Background_image='x'/>text<slide Background_image='a'/>"
                     "<?p i?><slides/>"),
            (std::vector<Slide>{{"a", {}}}));
}

TEST(SliderRead, EveryNodeOfASlideIsATextObject) {
  const TextObject empty = {{"Background_image", "a"}};
  EXPECT_EQ(
      slidesOf("<slide Background_image='a'> <!--c--><?p i?><![CDATA[t]]><other x='1'/><text/>"
               "</slide>"),
      (std::vector<Slide>{{"a", {empty, empty, empty, empty, empty, empty}}}));
}

TEST(SliderRead, LaterValuesOverwriteEarlierOnes) {
  const auto slides = slidesOf(
      "<slide Background_image='a'><text Background_image='own' size='1' text='t'>"
      "<text>&lt;b&gt;&lt;font size='2' color='c'&gt;one&lt;/font&gt;&lt;/b&gt;</text><other/>"
      "<text><![CDATA[<b><font color='d'>two</font></b>]]></text><text>broken &amp;</text>"
      "</text></slide>");
  EXPECT_EQ(
      slides.at(0).textObjects.at(0),
      (TextObject{{"Background_image", "own"}, {"size", "2"}, {"text", "two"}, {"color", "d"}}));
}

TEST(SliderRead, AnUnreadableCaptionLeavesItsKeysOut) {
  const auto slides = slidesOf(
      "<slide Background_image='a'><text In_Time='1'>"
      "<text><![CDATA[<b><font size=\"1\" color=\"c\">a & b</font></b>]]></text></text></slide>");
  EXPECT_EQ(slides.at(0).textObjects.at(0),
            (TextObject{{"Background_image", "a"}, {"In_Time", "1"}}));
}

TEST(SliderRead, ASlideWithoutAFileIsRead) {
  const auto slides = slidesOf("<slide><text In_Time='1'/></slide>");
  EXPECT_EQ(slides, (std::vector<Slide>{{std::nullopt, {{{"In_Time", "1"}}}}}));
}

TEST(SliderRead, AnEndMarkDividedBetweenSectionsIsReadAsOneText) {
  const auto slides = slidesOf("<slide><text><text><![CDATA[<b><font>a]]]]><![CDATA[&gt;b</font>"
                               "</b>]]></text></text></slide>");
  EXPECT_EQ(*slides.at(0).textObjects.at(0).find("text"), "a]]>b");
}

TEST(SliderTemplate, IsTheFirstSlideOfTheFirstContainer) {
  const xml::Tree root = parsed("<main><data> <x/><slide n='1'/><slide n='2'/></data>"
                                "<data><slide n='3'/></data></main>");
  EXPECT_EQ(*slider::templateSlide(*root)->attribute("n"), "1");
  EXPECT_EQ(slider::templateStyles(*root), nullptr);
  EXPECT_EQ(slider::templateSlide(*parsed("<main><data/><data><slide/></data></main>")), nullptr);
  EXPECT_EQ(slider::templateSlide(*parsed("<main/>")), nullptr);
}

TEST(SliderTemplate, GivesTheDefaultsOfANewTextObject) {
  const xml::Tree templates = parsed(kTemplate);
  const TextObject defaults = slider::textObjectDefaults(slider::templateSlide(*templates));
  EXPECT_EQ(*defaults.find("Background_image"), "");
  EXPECT_EQ(*defaults.find("speed"), "2");
  EXPECT_EQ(*defaults.find("text"), "New");
  EXPECT_EQ(*defaults.find("size"), "12");
  EXPECT_EQ(*defaults.find("color"), "#000000");
  EXPECT_EQ(defaults.size(), 12U);
}

TEST(SliderTemplate, WithoutATextObjectThereIsLittleToStartFrom) {
  EXPECT_EQ(slider::textObjectDefaults(nullptr), TextObject{});
  const xml::Tree slide = parsed("<slide Background_image='a'/>");
  EXPECT_EQ(slider::textObjectDefaults(slide.get()), (TextObject{{"Background_image", "a"}}));
  const xml::Tree other = parsed("<slide><title a='1'/><text b='2'/></slide>");
  EXPECT_EQ(slider::textObjectDefaults(other.get()), TextObject{});
}

TEST(SliderWrite, WritesSlidesInTheShapeOfTheTemplate) {
  const std::vector<Slide> slides = {{"intro_asset/a.jpg",
                                      {{{"text", "Welcome"},
                                        {"size", "24"},
                                        {"color", "#FF0000"},
                                        {"Stay_Time", "9"},
                                        {"unknown", "u"}}}}};
  EXPECT_EQ(written(slides, kTemplate),
            kDeclaration +
                "<main><data><slide effect=\"fade\" Background_image=\"intro_asset/a.jpg\" "
                "pause=\"3\"><text set_animation_style=\"Fade\" Align=\"C\" In_Time=\"0\" "
                "Stay_Time=\"9\" Text_Align=\"0\" Text_Animation_LetterByLetter=\"0\" "
                "Animation_Start_Direction=\"0\" speed=\"2\"><text kind=\"html\"><![CDATA[<b><font "
                "size=\"24\" color=\"#FF0000\">Welcome</font></b>]]></text></text></slide></data>"
                "</main>");
}

TEST(SliderWrite, NoSlidesGiveAnEmptyContainer) {
  EXPECT_EQ(slider::writeDocument({}, {}), kDeclaration + "<main><data/></main>");
}

TEST(SliderWrite, ATemplateWithoutAFileLosesTheSlidesFile) {
  EXPECT_EQ(written({{"a.jpg", {}}}, "<main><data><slide e='1'/></data></main>"),
            kDeclaration + "<main><data><slide e=\"1\"/></data></main>");
}

TEST(SliderWrite, ASlideWithoutAFileIsWrittenWithoutOne) {
  EXPECT_EQ(written({{std::nullopt, {}}},
                    "<main><data><slide Background_image='t' e='1'/></data></main>"),
            kDeclaration + "<main><data><slide e=\"1\"/></data></main>");
}

TEST(SliderWrite, NamesAndAttributesOfBothElementsComeFromTheTemplate) {
  EXPECT_EQ(written({{"a", {{{"size", "5"}, {"k", "v"}}}}},
                    "<main><data><slide><t size='1' m='2'><c k='0' size='3' n='4'/></t></slide>"
                    "</data></main>"),
            kDeclaration +
                "<main><data><slide><t size=\"5\" m=\"2\"><c k=\"v\" size=\"5\" n=\"4\"><![CDATA["
                "<b><font size=\"5\" color=\"(null)\">(null)</font></b>]]></c></t></slide></data>"
                "</main>");
}

TEST(SliderWrite, WithoutATemplateNothingThatWasReadIsLost) {
  const std::string data = "<slide Background_image=\"a\"><text In_Time=\"1\" own=\"o\"><text>"
                           "<![CDATA[<b><font size=\"2\" color=\"c\">t</font></b>]]></text></text>"
                           "</slide>";
  EXPECT_EQ(slider::writeDocument(slidesOf(data), {}),
            kDeclaration + "<main><data>" + data + "</data></main>");
  EXPECT_EQ(slidesOf(data), slidesOf("<slide Background_image='a'><text In_Time='1' own='o'><text>"
                                     "<![CDATA[<b><font size=\"2\" color=\"c\">t</font></b>]]>"
                                     "</text></text></slide>"));
}

TEST(SliderWrite, AWhollyMissingCaptionIsWrittenAsNull) {
  const std::string once =
      saved("<main><data><slide Background_image='a'><!--c--></slide></data></main>");
  EXPECT_NE(once.find("<![CDATA[<b><font size=\"(null)\" color=\"(null)\">(null)</font></b>]]>"),
            std::string::npos);
  const xml::Tree root = parsed(once);
  EXPECT_EQ(*readData(root).slides->at(0).textObjects.at(0).find("text"), "(null)");
}

TEST(SliderSave, UnknownAttributesAndStylesComeThroughUnchanged) {
  const std::string once =
      saved("<?xml version='1.0' encoding='utf-8'?><root z='1' xmlns:p='urn:p' p:a='&amp;&#10;'>"
            "<define_animation_Style v='&quot;'> <s Name='&lt;'>x&amp;<![CDATA[<]]></s><!--c-->"
            "<?p i?></define_animation_Style><data/><other/></root>");
  EXPECT_EQ(once, kDeclaration +
                      "<main z=\"1\" xmlns:p=\"urn:p\" p:a=\"&amp;&#10;\">"
                      "<define_animation_Style v=\"&quot;\"> <s Name=\"&lt;\">x&amp;<![CDATA[<]]>"
                      "</s><!--c--><?p i?></define_animation_Style><data/></main>");
  EXPECT_EQ(saved(once), once);
}

TEST(SliderSave, StylesComeFromTheTemplateWhenTheDocumentHasNone) {
  EXPECT_NE(saved("<main><data/></main>").find("<s Name=\"Template\"/>"), std::string::npos);
}

TEST(SliderSave, ForeignElementsBesideSlidesAreLost) {
  EXPECT_EQ(saved("<main><data><video/></data></main>").find("video"), std::string::npos);
}

namespace {

// What a person may type, apart from markup.
std::string typed(std::mt19937& random) {
  static const std::string kPieces[] = {"a",
                                        "Z",
                                        "0",
                                        " ",
                                        "\"",
                                        "'",
                                        ">",
                                        "]",
                                        "\xC3\xA4",
                                        "\n",
                                        "\xE6\x97\xA5",
                                        "\xF0\x9F\x98\x80",
                                        "\xE2\x80\x8F",
                                        "#",
                                        "\xCC\x81",
                                        "\xC2\xA0",
                                        "\t",
                                        "%@",
                                        "\\",
                                        "(null)"};
  std::string out;
  for (auto i = random() % 12; i > 0; --i)
    out += kPieces[random() % std::size(kPieces)];
  return out.find("]]>") == std::string::npos ? out : "]";
}

std::vector<Slide> anySlides(std::mt19937& random) {
  static const char* kKeys[] = {"set_animation_style",
                                "Align",
                                "In_Time",
                                "Stay_Time",
                                "Text_Align",
                                "Text_Animation_LetterByLetter",
                                "Animation_Start_Direction",
                                "speed"};
  std::vector<Slide> slides;
  for (auto i = random() % 5; i > 0; --i) {
    Slide slide = {typed(random), {}};
    for (auto j = random() % 4; j > 0; --j) {
      TextObject record = {{"Background_image", *slide.backgroundImage}};
      for (const char* key : kKeys)
        record.set(key, typed(random));
      record.set("text", typed(random));
      record.set("size", std::to_string(random() % 100));
      record.set("color", "#00FF00");
      slide.textObjects.push_back(record);
    }
    slides.push_back(slide);
  }
  return slides;
}

} // namespace

TEST(SliderSave, WhatWasWrittenIsReadBackAndSavedAgainByteForByte) {
  std::mt19937 random(3);
  for (int round = 0; round < rounds(1000); ++round) {
    const std::vector<Slide> slides = anySlides(random);
    const std::string once = written(slides, kTemplate);
    const xml::Tree root = parsed(once);
    ASSERT_EQ(readData(root).slides, slides) << once;
    ASSERT_EQ(written(*readData(root).slides, kTemplate), once);
  }
}

TEST(SliderSave, NoCaptionMakesTheDocumentUnreadable) {
  std::mt19937 random(5);
  for (int round = 0; round < rounds(2000); ++round) {
    std::string text;
    for (auto i = random() % 30; i > 0; --i)
      text += random() % 4 == 0 ? "]]>"[random() % 3] : static_cast<char>(random());
    TextObject record = {{"text", text}, {"size", "1"}, {"color", "c"}, {"Align", text}};
    const std::string once = written({{text, {record}}, {"next", {}}}, kTemplate);
    const xml::Tree root = parsed(once);
    ASSERT_EQ(readData(root).slides->size(), 2U) << once;
  }
}

TEST(SliderSave, ACaptionOfOneMegabyteComesBack) {
  std::string text;
  while (text.size() < 1'000'000)
    text += "\xF0\x9F\x98\x80 caption ";
  const std::string once =
      written({{"a", {{{"text", text}, {"size", "1"}, {"color", "c"}}}}}, kTemplate);
  const xml::Tree root = parsed(once);
  EXPECT_EQ(*readData(root).slides->at(0).textObjects.at(0).find("text"), text);
}
