#include "caption_markup.h"
#include "slider_document.h"
#include "slider_names.h"

#include <utility>

namespace vireonix::core::slider {
namespace {

// The shapes of a text object's two elements; null where the template has none.
struct TextShape {
  const xml::Node* textObject = nullptr;
  const xml::Node* caption = nullptr;
};

TextShape textShape(const xml::Node* slide) {
  TextShape shape;
  if (slide != nullptr)
    shape.textObject = slide->firstElement();
  if (shape.textObject != nullptr)
    shape.caption = shape.textObject->firstElement();
  return shape;
}

std::string_view nameOf(const xml::Node* shape) {
  return shape != nullptr ? std::string_view(shape->content) : kTextElement;
}

void writeShapedAttributes(xml::Writer& out, const xml::Node& shape, const TextObject& record) {
  for (const xml::Attribute& attribute : shape.attributes)
    out.attribute(attribute.name, record.find(attribute.name).value_or(attribute.value));
}

// Without a template nothing that was read may be lost.
void writeOwnAttributes(xml::Writer& out, const TextObject& record) {
  for (std::size_t i = 0; i < record.size(); ++i) {
    const auto [key, value] = record.at(i);
    const bool elsewhere = key == kText || key == kSize || key == kColor || key == kBackgroundImage;
    if (!elsewhere)
      out.attribute(key, value);
  }
}

void writeTextObject(xml::Writer& out, const TextObject& record, const TextShape& shape) {
  const std::string_view name = nameOf(shape.textObject);
  const std::string_view captionName = nameOf(shape.caption);
  out.startElement(name);
  if (shape.textObject != nullptr)
    writeShapedAttributes(out, *shape.textObject, record);
  else
    writeOwnAttributes(out, record);
  out.startElement(captionName);
  if (shape.caption != nullptr)
    writeShapedAttributes(out, *shape.caption, record);
  out.cdata(captionMarkup(record.find(kText), record.find(kSize), record.find(kColor)));
  out.endElement(captionName);
  out.endElement(name);
}

void writeSlideAttributes(xml::Writer& out, std::optional<std::string_view> backgroundImage,
                          const xml::Node& shape) {
  for (const xml::Attribute& attribute : shape.attributes) {
    if (attribute.name != kBackgroundImage)
      out.attribute(attribute.name, attribute.value);
    else if (backgroundImage)
      out.attribute(kBackgroundImage, *backgroundImage);
  }
}

} // namespace

DocumentWriter::DocumentWriter(const DocumentShape& shape, std::string buffer)
    : out_(std::move(buffer)), slide_(shape.slide) {
  out_.declaration();
  out_.startElement(kRootElement);
  if (shape.root != nullptr) {
    for (const xml::Attribute& attribute : shape.root->attributes)
      out_.attribute(attribute.name, attribute.value);
  }
  if (shape.styles != nullptr)
    out_.node(*shape.styles);
  out_.startElement(kContainerElement);
}

void DocumentWriter::startSlide(std::optional<std::string_view> backgroundImage) {
  out_.startElement(kSlideElement);
  if (slide_ != nullptr)
    writeSlideAttributes(out_, backgroundImage, *slide_);
  else if (backgroundImage)
    out_.attribute(kBackgroundImage, *backgroundImage);
}

void DocumentWriter::textObject(const TextObject& record) {
  writeTextObject(out_, record, textShape(slide_));
}

void DocumentWriter::endSlide() {
  out_.endElement(kSlideElement);
}

std::string DocumentWriter::finish() {
  out_.endElement(kContainerElement);
  out_.endElement(kRootElement);
  return out_.take();
}

std::string textObjectMarkup(const TextObject& record, const xml::Node* templateSlide) {
  constexpr std::size_t kMoreThanUsual = 512;
  xml::Writer out;
  out.reserve(kMoreThanUsual);
  writeTextObject(out, record, textShape(templateSlide));
  std::string markup = out.take();
  markup.shrink_to_fit();
  return markup;
}

std::string writeDocument(const std::vector<Slide>& slides, const DocumentShape& shape) {
  DocumentWriter out(shape);
  for (const Slide& slide : slides) {
    out.startSlide(slide.backgroundImage);
    for (const TextObject& record : slide.textObjects)
      out.textObject(record);
    out.endSlide();
  }
  return out.finish();
}

} // namespace vireonix::core::slider
