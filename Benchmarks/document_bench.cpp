// The slider document: reading it beside libxml2's plain tree parse, which does less (no records,
// no captions); writing it durably beside pugixml and libxml2, which build their trees from the
// same records and write through the same durable replacement.
#include "measure.h"

#include "Core/caption_markup.h"
#include "Core/file_tree.h"
#include "Core/slider_document.h"
#include "Core/xml.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include <libxml/parser.h>
#include <libxml/tree.h>
#include <pugixml.hpp>

namespace slider = vireonix::core::slider;
namespace xml = vireonix::core::xml;
using slider::Slide;
using slider::TextObject;
using vireonix::bench::compare;
using vireonix::bench::secondsOf;

namespace {

constexpr int kCaptionsOfASlide = 10;

constexpr std::string_view kTemplate =
    "<main><define_animation_Style><style Name='Fade'/><style Name='Fly'/></define_animation_Style>"
    "<data><slide Background_image='' effect='fade'><text set_animation_style='Fade' Align='C' "
    "In_Time='0' Stay_Time='1' Text_Align='0' Text_Animation_LetterByLetter='0' "
    "Animation_Start_Direction='0'><text/></text></slide></data></main>";

TextObject captionRecord(int number, const std::string& image) {
  return {{"Background_image", image},
          {"set_animation_style", "Fade"},
          {"Align", "BR"},
          {"In_Time", std::to_string(number % 200)},
          {"Stay_Time", "3"},
          {"Text_Align", "1"},
          {"Text_Animation_LetterByLetter", "0"},
          {"Animation_Start_Direction", "2"},
          {"text", "Caption \xE2\x84\x96 " + std::to_string(number) + ", of some length"},
          {"size", "24"},
          {"color", "#FF8800"}};
}

std::vector<Slide> slidesWith(int captions) {
  std::vector<Slide> slides;
  for (int i = 0; i < captions; ++i) {
    if (i % kCaptionsOfASlide == 0)
      slides.push_back({"intro_asset/picture " + std::to_string(i) + ".jpg", {}});
    slides.back().textObjects.push_back(captionRecord(i, *slides.back().backgroundImage));
  }
  return slides;
}

void require(bool condition, const char* what) {
  if (!condition)
    throw std::runtime_error(what);
}

struct FreeDocument {
  void operator()(xmlDoc* document) const { xmlFreeDoc(document); }
};
using LibxmlDocument = std::unique_ptr<xmlDoc, FreeDocument>;

std::size_t readOurs(const std::string& bytes) {
  const auto root = xml::parse(bytes, xml::Mode::Strict);
  require(root.has_value(), "ours read nothing");
  return slider::readDocument(*root).slides->size();
}

void readLibxml(const std::string& bytes) {
  const LibxmlDocument document(xmlReadMemory(bytes.data(), static_cast<int>(bytes.size()), nullptr,
                                              nullptr, XML_PARSE_NONET | XML_PARSE_HUGE));
  require(document != nullptr, "libxml2 read nothing");
}

// The caption in its CDATA section, as both references write it.
std::string captionOf(const TextObject& record) {
  return slider::captionMarkup(record.find("text"), record.find("size"), record.find("color"));
}

std::string writePugixml(const std::vector<Slide>& slides, const xml::Node& shape) {
  pugi::xml_document document;
  pugi::xml_node main = document.append_child("main");
  pugi::xml_node styles = main.append_child("define_animation_Style");
  for (const char* name : {"Fade", "Fly"})
    styles.append_child("style").append_attribute("Name") = name;
  pugi::xml_node data = main.append_child("data");
  const xml::Node& textShape = *shape.firstElement();
  for (const Slide& slide : slides) {
    pugi::xml_node element = data.append_child("slide");
    element.append_attribute("Background_image") = slide.backgroundImage->c_str();
    element.append_attribute("effect") = "fade";
    for (const TextObject& record : slide.textObjects) {
      pugi::xml_node text = element.append_child("text");
      for (const xml::Attribute& attribute : textShape.attributes)
        text.append_attribute(attribute.name.c_str()) = record.find(attribute.name)->c_str();
      text.append_child("text").append_child(pugi::node_cdata).set_value(captionOf(record).c_str());
    }
  }
  struct Writer : pugi::xml_writer {
    std::string out;
    void write(const void* bytes, std::size_t size) override {
      out.append(static_cast<const char*>(bytes), size);
    }
  } writer;
  document.save(writer, "", pugi::format_raw, pugi::encoding_utf8);
  return std::move(writer.out);
}

const xmlChar* chars(const std::string& text) {
  return reinterpret_cast<const xmlChar*>(text.c_str());
}

const xmlChar* chars(const char* text) {
  return reinterpret_cast<const xmlChar*>(text);
}

std::string writeLibxml(const std::vector<Slide>& slides, const xml::Node& shape) {
  const LibxmlDocument document(xmlNewDoc(chars("1.0")));
  xmlNodePtr main = xmlNewNode(nullptr, chars("main"));
  xmlDocSetRootElement(document.get(), main);
  xmlNodePtr styles = xmlNewChild(main, nullptr, chars("define_animation_Style"), nullptr);
  for (const char* name : {"Fade", "Fly"})
    xmlNewProp(xmlNewChild(styles, nullptr, chars("style"), nullptr), chars("Name"), chars(name));
  xmlNodePtr data = xmlNewChild(main, nullptr, chars("data"), nullptr);
  const xml::Node& textShape = *shape.firstElement();
  for (const Slide& slide : slides) {
    xmlNodePtr element = xmlNewChild(data, nullptr, chars("slide"), nullptr);
    xmlNewProp(element, chars("Background_image"), chars(*slide.backgroundImage));
    xmlNewProp(element, chars("effect"), chars("fade"));
    for (const TextObject& record : slide.textObjects) {
      xmlNodePtr text = xmlNewChild(element, nullptr, chars("text"), nullptr);
      for (const xml::Attribute& attribute : textShape.attributes)
        xmlNewProp(text, chars(attribute.name), chars(*record.find(attribute.name)));
      const std::string caption = captionOf(record);
      xmlAddChild(
          xmlNewChild(text, nullptr, chars("text"), nullptr),
          xmlNewCDataBlock(document.get(), chars(caption), static_cast<int>(caption.size())));
    }
  }
  xmlChar* bytes = nullptr;
  int size = 0;
  xmlDocDumpMemoryEnc(document.get(), &bytes, &size, "utf-8");
  std::string out(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(size));
  xmlFree(bytes);
  return out;
}

void replace(const std::string& path, const std::string& bytes) {
  require(vireonix::core::replaceFile(path, bytes).ok(), "the file could not be replaced");
}

void measure(int captions, const std::string& file) {
  const std::vector<Slide> slides = slidesWith(captions);
  const xml::Node root = *xml::parse(kTemplate, xml::Mode::Strict);
  const xml::Node& shape = *slider::templateSlide(root);
  const slider::DocumentShape whole = {
      .root = &root, .styles = slider::templateStyles(root), .slide = &shape};
  const std::string bytes = slider::writeDocument(slides, whole);
  require(readOurs(bytes) == slides.size() &&
              readOurs(writePugixml(slides, shape)) == slides.size() &&
              readOurs(writeLibxml(slides, shape)) == slides.size(),
          "the writers disagree");

  const std::string count = std::to_string(captions) + " captions";
  compare(
      {.what = "read " + count, .reference = "libxml2 tree parse alone", .target = 2.0},
      [&] { return secondsOf([&] { readOurs(bytes); }); },
      [&] { return secondsOf([&] { readLibxml(bytes); }); });
  const auto ours = [&] {
    return secondsOf([&] { replace(file, slider::writeDocument(slides, whole)); });
  };
  compare({.what = "write durably " + count, .reference = "pugixml"}, ours,
          [&] { return secondsOf([&] { replace(file, writePugixml(slides, shape)); }); });
  compare({.what = "write durably " + count, .reference = "libxml2"}, ours,
          [&] { return secondsOf([&] { replace(file, writeLibxml(slides, shape)); }); });
  compare(
      {.what = "write to memory " + count, .reference = "pugixml"},
      [&] { return secondsOf([&] { slider::writeDocument(slides, whole); }); },
      [&] { return secondsOf([&] { writePugixml(slides, shape); }); });
}

} // namespace

int main() {
  std::string folder = std::filesystem::temp_directory_path() / "vireonix-bench-XXXXXX";
  if (mkdtemp(folder.data()) == nullptr)
    return EXIT_FAILURE;
  int outcome = EXIT_SUCCESS;
  try {
    for (const int captions : {10, 100, 1'000, 10'000, 100'000})
      measure(captions, folder + "/data.xml");
  } catch (const std::exception& error) {
    std::fprintf(stderr, "document_bench: %s\n", error.what());
    outcome = EXIT_FAILURE;
  }
  std::error_code ignored;
  std::filesystem::remove_all(folder, ignored);
  return outcome;
}
