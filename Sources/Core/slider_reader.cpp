#include "caption_markup.h"
#include "slider_document.h"
#include "slider_names.h"

#include <algorithm>

namespace vireonix::core::slider {
namespace {

void setIfGiven(TextObject& record, std::string_view key, const std::optional<std::string>& value) {
  if (value)
    record.set(key, *value);
}

std::optional<Caption> captionIn(const xml::Node& element) {
  if (element.children.size() == 1 && element.children.front().kind == xml::NodeKind::CData)
    return parseCaption(element.children.front().content);
  return parseCaption(element.stringValue());
}

void addCaption(const xml::Node& captionElement, TextObject& record) {
  const std::optional<Caption> caption = captionIn(captionElement);
  if (!caption)
    return;
  setIfGiven(record, kText, caption->text);
  setIfGiven(record, kSize, caption->size);
  setIfGiven(record, kColor, caption->color);
}

void addTextElement(const xml::Node& element, TextObject& record) {
  for (const xml::Attribute& attribute : element.attributes)
    record.set(attribute.name, attribute.value);
  for (const xml::Node& child : element.children) {
    if (child.isElement(kTextElement))
      addCaption(child, record);
  }
}

// Empty but for the image; with room for what such an element gives.
TextObject startingWith(const std::string_view* backgroundImage, const xml::Node& element) {
  constexpr std::size_t kCaptionKeys = 3;
  std::size_t characters = kBackgroundImage.size() + kText.size() + kSize.size() + kColor.size();
  if (backgroundImage != nullptr)
    characters += backgroundImage->size();
  for (const xml::Attribute& attribute : element.attributes)
    characters += attribute.name.size() + attribute.value.size();
  for (const xml::Node& child : element.children)
    characters += child.children.size() == 1 ? child.children.front().content.size() : 0;
  TextObject record;
  record.reserve(1 + element.attributes.size() + kCaptionKeys, characters);
  if (backgroundImage != nullptr)
    record.set(kBackgroundImage, *backgroundImage);
  return record;
}

Slide readSlide(const xml::Node& element) {
  Slide slide;
  const std::string_view* image = element.attribute(kBackgroundImage);
  if (image != nullptr)
    slide.backgroundImage = *image;
  slide.textObjects.reserve(element.children.size());
  for (const xml::Node& child : element.children) {
    TextObject record = startingWith(image, child);
    if (child.isElement(kTextElement))
      addTextElement(child, record);
    slide.textObjects.push_back(std::move(record));
  }
  return slide;
}

std::vector<Slide> readSlides(const xml::Node& container) {
  std::vector<Slide> slides;
  slides.reserve(container.children.size());
  for (const xml::Node& child : container.children) {
    if (child.isElement(kSlideElement))
      slides.push_back(readSlide(child));
  }
  return slides;
}

} // namespace

Document readDocument(const xml::Node& root) {
  Document document;
  const xml::Node* container = nullptr;
  for (const xml::Node& child : root.children) {
    if (child.isElement(kStylesElement))
      document.styles = &child;
    else if (child.isElement(kContainerElement))
      container = &child;
  }
  if (container != nullptr)
    document.slides = readSlides(*container);
  return document;
}

const xml::Node* templateStyles(const xml::Node& root) {
  return root.firstElement(kStylesElement);
}

const xml::Node* templateSlide(const xml::Node& root) {
  const xml::Node* container = root.firstElement(kContainerElement);
  return container != nullptr ? container->firstElement(kSlideElement) : nullptr;
}

std::vector<std::string> styleNames(const xml::Node& styles) {
  std::vector<std::string> names;
  for (const xml::Node& child : styles.children) {
    if (const std::string_view* name = child.attribute(kStyleNameAttribute))
      names.emplace_back(*name);
  }
  return names;
}

TextObject textObjectDefaults(const xml::Node* templateSlide) {
  if (templateSlide == nullptr)
    return {};
  const xml::Node* first = templateSlide->firstElement();
  TextObject record = startingWith(templateSlide->attribute(kBackgroundImage),
                                   first != nullptr ? *first : *templateSlide);
  if (first != nullptr && first->isElement(kTextElement))
    addTextElement(*first, record);
  return record;
}

} // namespace vireonix::core::slider
