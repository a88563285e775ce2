// The slider document: reading it beside libxml2's plain tree parse, which does less (no records,
// no captions); writing it durably beside pugixml and libxml2, which build their trees from the
// same records and write through the same durable replacement.
//
// Between samples the heap is settled, outside the time: the C library puts off joining the small
// pieces that a freed tree leaves, and would do that work in whichever sample comes next.
#include "measure.h"

#include "Core/caption_markup.h"
#include "Core/file_tree.h"
#include "Core/slider_document.h"
#include "Core/xml.h"
#include "support/temporary_folder.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <malloc.h>

#include <libxml/parser.h>
#include <libxml/tree.h>
#include <pugixml.hpp>

namespace slider = vireonix::core::slider;
namespace xml = vireonix::core::xml;
using slider::Slide;
using slider::TextObject;
using vireonix::bench::compare;
using vireonix::bench::Comparison;
using vireonix::bench::secondsOf;

namespace {

constexpr int kCaptionsOfASlide = 10;
constexpr double kReadLimit = 1.0;
constexpr double kWriteLimit = 1.5;

constexpr std::string_view kTemplate =
    "<main><define_animation_Style><style Name='Fade'/><style Name='Fly'/></define_animation_Style>"
    "<data><slide Background_image='' effect='fade'><text set_animation_style='Fade' Align='C' "
    "In_Time='0' Stay_Time='1' Text_Align='0' Text_Animation_LetterByLetter='0' "
    "Animation_Start_Direction='0'><text/></text></slide></data></main>";

// The same content for the references, which want strings that end with a null.
using PlainRecord = std::vector<std::pair<std::string, std::string>>;
struct PlainSlide {
  std::string image;
  std::vector<PlainRecord> captions;
};

PlainRecord captionRecord(int number, const std::string& image) {
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

std::vector<PlainSlide> plainSlidesWith(int captions) {
  std::vector<PlainSlide> slides;
  for (int i = 0; i < captions; ++i) {
    if (i % kCaptionsOfASlide == 0)
      slides.push_back({"intro_asset/picture " + std::to_string(i) + ".jpg", {}});
    slides.back().captions.push_back(captionRecord(i, slides.back().image));
  }
  return slides;
}

std::vector<Slide> slidesOf(const std::vector<PlainSlide>& plain) {
  std::vector<Slide> slides;
  for (const PlainSlide& from : plain) {
    Slide slide{from.image, {}};
    for (const PlainRecord& record : from.captions) {
      TextObject textObject;
      for (const auto& [key, value] : record)
        textObject.set(key, value);
      slide.textObjects.push_back(std::move(textObject));
    }
    slides.push_back(std::move(slide));
  }
  return slides;
}

const std::string& valueOf(const PlainRecord& record, std::string_view key) {
  return std::ranges::find(record, key, &PlainRecord::value_type::first)->second;
}

// The template's attribute names.
std::vector<std::string> namesOf(const xml::Node& shape) {
  std::vector<std::string> names;
  for (const xml::Attribute& attribute : shape.firstElement()->attributes)
    names.emplace_back(attribute.name);
  return names;
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
  const xml::Tree root = xml::parse(bytes, xml::Mode::Strict);
  require(root != nullptr, "ours read nothing");
  return slider::readDocument(*root).slides->size();
}

void readLibxml(const std::string& bytes) {
  const LibxmlDocument document(xmlReadMemory(bytes.data(), static_cast<int>(bytes.size()), nullptr,
                                              nullptr, XML_PARSE_NONET | XML_PARSE_HUGE));
  require(document != nullptr, "libxml2 read nothing");
}

// The caption in its CDATA section, as both references write it.
std::string captionOf(const PlainRecord& record) {
  return slider::captionMarkup(valueOf(record, "text"), valueOf(record, "size"),
                               valueOf(record, "color"));
}

std::string writePugixml(const std::vector<PlainSlide>& slides,
                         const std::vector<std::string>& names) {
  pugi::xml_document document;
  pugi::xml_node main = document.append_child("main");
  pugi::xml_node styles = main.append_child("define_animation_Style");
  for (const char* name : {"Fade", "Fly"})
    styles.append_child("style").append_attribute("Name") = name;
  pugi::xml_node data = main.append_child("data");
  for (const PlainSlide& slide : slides) {
    pugi::xml_node element = data.append_child("slide");
    element.append_attribute("Background_image") = slide.image.c_str();
    element.append_attribute("effect") = "fade";
    for (const PlainRecord& record : slide.captions) {
      pugi::xml_node text = element.append_child("text");
      for (const std::string& name : names)
        text.append_attribute(name.c_str()) = valueOf(record, name).c_str();
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

std::string writeLibxml(const std::vector<PlainSlide>& slides,
                        const std::vector<std::string>& names) {
  const LibxmlDocument document(xmlNewDoc(chars("1.0")));
  xmlNodePtr main = xmlNewNode(nullptr, chars("main"));
  xmlDocSetRootElement(document.get(), main);
  xmlNodePtr styles = xmlNewChild(main, nullptr, chars("define_animation_Style"), nullptr);
  for (const char* name : {"Fade", "Fly"})
    xmlNewProp(xmlNewChild(styles, nullptr, chars("style"), nullptr), chars("Name"), chars(name));
  xmlNodePtr data = xmlNewChild(main, nullptr, chars("data"), nullptr);
  for (const PlainSlide& slide : slides) {
    xmlNodePtr element = xmlNewChild(data, nullptr, chars("slide"), nullptr);
    xmlNewProp(element, chars("Background_image"), chars(slide.image));
    xmlNewProp(element, chars("effect"), chars("fade"));
    for (const PlainRecord& record : slide.captions) {
      xmlNodePtr text = xmlNewChild(element, nullptr, chars("text"), nullptr);
      for (const std::string& name : names)
        xmlNewProp(text, chars(name), chars(valueOf(record, name)));
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

double settledSecondsOf(const std::function<void()>& work) {
  malloc_trim(0);
  return secondsOf(work);
}

void measure(int captions, const std::string& file) {
  const std::vector<PlainSlide> plain = plainSlidesWith(captions);
  const std::vector<Slide> slides = slidesOf(plain);
  const xml::Tree root = xml::parse(kTemplate, xml::Mode::Strict);
  const slider::DocumentShape whole = {.root = root.get(),
                                       .styles = slider::templateStyles(*root),
                                       .slide = slider::templateSlide(*root)};
  const std::vector<std::string> names = namesOf(*whole.slide);
  const std::string bytes = slider::writeDocument(slides, whole);
  require(readOurs(bytes) == slides.size() &&
              readOurs(writePugixml(plain, names)) == slides.size() &&
              readOurs(writeLibxml(plain, names)) == slides.size(),
          "the writers disagree");

  const auto rowOf = [captions](const char* what, const char* reference, double limit) {
    return Comparison{
        .what = what, .reference = reference, .limit = limit, .size = captions, .of = "captions"};
  };
  compare(
      rowOf("read the document", "libxml2 tree parse of the same bytes", kReadLimit),
      [&] { return settledSecondsOf([&] { readOurs(bytes); }); },
      [&] { return settledSecondsOf([&] { readLibxml(bytes); }); });
  const auto ours = [&] {
    return settledSecondsOf([&] { replace(file, slider::writeDocument(slides, whole)); });
  };
  const auto theirs = [&](const auto& write) {
    return settledSecondsOf([&] { replace(file, write(plain, names)); });
  };
  compare(
      rowOf("records to replaced file", "pugixml and the same durable replacement", kWriteLimit),
      ours, [&] { return theirs(writePugixml); });
  compare(rowOf("records to replaced file, beside libxml2",
                "libxml2 and the same durable replacement", 1.0),
          ours, [&] { return theirs(writeLibxml); });
  compare(
      rowOf("records to bytes in memory", "pugixml", kWriteLimit),
      [&] { return settledSecondsOf([&] { slider::writeDocument(slides, whole); }); },
      [&] { return settledSecondsOf([&] { writePugixml(plain, names); }); });
}

} // namespace

int main() {
  try {
    const vireonix::test::TemporaryFolder folder;
    for (const int captions : vireonix::bench::sizesTo(100'000))
      measure(captions, folder.at("data.xml"));
  } catch (const std::exception& error) {
    std::fprintf(stderr, "document_bench: %s\n", error.what());
    return EXIT_FAILURE;
  }
  return EXIT_SUCCESS;
}
