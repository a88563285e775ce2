#import "vireonix/slider_records.h"

#import "Bridge/text.h"
#import "vireonix/TextObjectRecord.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace vireonix {

namespace slider = core::slider;

NSString *const kTextObjectsKey = @"data";

namespace {

// Values that are no texts may be anything that a host puts in.
std::string valueText(id value) {
  return bridge::utf8([value isKindOfClass:[NSString class]] ? value : [value description]);
}

void writeTextObject(NSDictionary *record, slider::DocumentWriter &writer,
                     const core::xml::Tree &templateSlide) {
  // Looking a class up takes longer than copying a record's markup.
  static Class const kRecordClass = [TextObjectRecord class];
  if ([record isKindOfClass:kRecordClass])
    writer.textObjectMarkup([static_cast<TextObjectRecord *>(record) markupInShape:templateSlide]);
  else
    writer.textObject(textObjectOfRecord(record));
}

// The keys that every record has, made once.
NSString *knownKey(std::string_view key) {
  static constexpr std::array kKnown = {
      slider::kText,          slider::kSize,           slider::kColor,          slider::kStyle,
      slider::kAlign,         slider::kInTime,         slider::kStayTime,       slider::kTextAlign,
      slider::kTextAnimation, slider::kStartDirection, slider::kBackgroundImage};
  static const std::array kStrings = [] {
    std::array<NSString *, kKnown.size()> strings{};
    for (std::size_t i = 0; i < kKnown.size(); ++i)
      strings.at(i) = [bridge::string(kKnown.at(i)) retain];
    return strings;
  }();
  const auto *const found = std::ranges::find(kKnown, key);
  return found != kKnown.end() ? kStrings.at(static_cast<std::size_t>(found - kKnown.begin()))
                               : nil;
}

} // namespace

NSString *recordKey(std::string_view key) {
  NSString *known = knownKey(key);
  return known != nil ? known : bridge::string(key);
}

NSString *recordText(NSDictionary *record, std::string_view key) {
  NSString *text = [record objectForKey:recordKey(key)];
  return text != nil ? text : @"";
}

void setRecordText(NSMutableDictionary *record, std::string_view key, NSString *text) {
  [record setObject:text != nil ? text : @"" forKey:recordKey(key)];
}

void setSlideFile(NSMutableDictionary *slide, NSString *path) {
  setRecordText(slide, slider::kBackgroundImage, path);
  for (NSMutableDictionary *textObject in [slide objectForKey:kTextObjectsKey])
    setRecordText(textObject, slider::kBackgroundImage, path);
}

NSMutableDictionary *recordOfTextObject(slider::TextObject textObject) {
  return [[[TextObjectRecord alloc] initWithTextObject:std::move(textObject)] autorelease];
}

NSMutableDictionary *recordOfSlide(slider::Slide slide) {
  NSMutableArray *textObjects = [NSMutableArray arrayWithCapacity:slide.textObjects.size()];
  for (slider::TextObject &textObject : slide.textObjects) {
    @autoreleasepool {
      [textObjects addObject:recordOfTextObject(std::move(textObject))];
    }
  }
  NSMutableDictionary *record = [NSMutableDictionary dictionaryWithObject:textObjects
                                                                   forKey:kTextObjectsKey];
  if (slide.backgroundImage)
    setRecordText(record, slider::kBackgroundImage, bridge::string(*slide.backgroundImage));
  return record;
}

slider::TextObject textObjectOfRecord(NSDictionary *record) {
  slider::TextObject textObject;
  @autoreleasepool {
    for (NSString *key in record)
      textObject.set(bridge::utf8(key), valueText([record objectForKey:key]));
  }
  return textObject;
}

void writeSlides(NSArray *records, slider::DocumentWriter &writer,
                 const core::xml::Tree &templateSlide) {
  for (NSDictionary *slide in records) {
    @autoreleasepool {
      id image = [slide objectForKey:recordKey(slider::kBackgroundImage)];
      if (image != nil)
        writer.startSlide(valueText(image));
      else
        writer.startSlide(std::nullopt);
      for (NSDictionary *textObject in [slide objectForKey:kTextObjectsKey])
        writeTextObject(textObject, writer, templateSlide);
      writer.endSlide();
    }
  }
}

} // namespace vireonix
