#include "caption_markup.h"
#include "slider_document.h"
#include "slider_names.h"

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
  for (const xml::Attribute& attribute : shape.attributes) {
    const std::string* own = record.find(attribute.name);
    out.attribute(attribute.name, own != nullptr ? *own : attribute.value);
  }
}

// Without a template nothing that was read may be lost.
void writeOwnAttributes(xml::Writer& out, const TextObject& record) {
  for (const auto& [key, value] : record) {
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

void writeSlideAttributes(xml::Writer& out, const Slide& slide, const xml::Node& shape) {
  for (const xml::Attribute& attribute : shape.attributes) {
    if (attribute.name != kBackgroundImage)
      out.attribute(attribute.name, attribute.value);
    else if (slide.backgroundImage)
      out.attribute(kBackgroundImage, *slide.backgroundImage);
  }
}

void writeSlide(xml::Writer& out, const Slide& slide, const xml::Node* shape) {
  out.startElement(kSlideElement);
  if (shape != nullptr)
    writeSlideAttributes(out, slide, *shape);
  else if (slide.backgroundImage)
    out.attribute(kBackgroundImage, *slide.backgroundImage);
  const TextShape texts = textShape(shape);
  for (const TextObject& record : slide.textObjects)
    writeTextObject(out, record, texts);
  out.endElement(kSlideElement);
}

} // namespace

std::string writeDocument(const std::vector<Slide>& slides, const DocumentShape& shape) {
  xml::Writer out;
  out.declaration();
  out.startElement(kRootElement);
  if (shape.root != nullptr) {
    for (const xml::Attribute& attribute : shape.root->attributes)
      out.attribute(attribute.name, attribute.value);
  }
  if (shape.styles != nullptr)
    out.node(*shape.styles);
  out.startElement(kContainerElement);
  for (const Slide& slide : slides)
    writeSlide(out, slide, shape.slide);
  out.endElement(kContainerElement);
  out.endElement(kRootElement);
  return out.take();
}

} // namespace vireonix::core::slider
