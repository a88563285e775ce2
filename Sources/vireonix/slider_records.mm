#import "vireonix/slider_records.h"

#import "Bridge/text.h"

namespace vireonix {

namespace slider = core::slider;

NSString *const kTextObjectsKey = @"data";

namespace {

std::string valueText(id value) {
  return bridge::utf8([value isKindOfClass:[NSString class]] ? value : [value description]);
}

slider::TextObject textObjectOfRecord(NSDictionary *record) {
  slider::TextObject textObject;
  for (NSString *key in record)
    textObject.set(bridge::utf8(key), valueText([record objectForKey:key]));
  return textObject;
}

slider::Slide slideOfRecord(NSDictionary *record) {
  slider::Slide slide;
  id image = [record objectForKey:recordKey(slider::kBackgroundImage)];
  if (image != nil)
    slide.backgroundImage = valueText(image);
  for (NSDictionary *textObject in [record objectForKey:kTextObjectsKey]) {
    @autoreleasepool {
      slide.textObjects.push_back(textObjectOfRecord(textObject));
    }
  }
  return slide;
}

} // namespace

NSString *recordKey(std::string_view key) {
  return bridge::string(key);
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

NSMutableDictionary *recordOfTextObject(const slider::TextObject &textObject) {
  NSMutableDictionary *record = [NSMutableDictionary dictionary];
  for (const auto &[key, value] : textObject)
    [record setObject:bridge::string(value) forKey:recordKey(key)];
  return record;
}

NSMutableDictionary *recordOfSlide(const slider::Slide &slide) {
  NSMutableArray *textObjects = [NSMutableArray arrayWithCapacity:slide.textObjects.size()];
  for (const slider::TextObject &textObject : slide.textObjects) {
    @autoreleasepool {
      [textObjects addObject:recordOfTextObject(textObject)];
    }
  }
  NSMutableDictionary *record = [NSMutableDictionary dictionaryWithObject:textObjects
                                                                   forKey:kTextObjectsKey];
  if (slide.backgroundImage)
    setRecordText(record, slider::kBackgroundImage, bridge::string(*slide.backgroundImage));
  return record;
}

std::vector<slider::Slide> slidesOfRecords(NSArray *records) {
  std::vector<slider::Slide> slides;
  slides.reserve([records count]);
  for (NSDictionary *record in records)
    slides.push_back(slideOfRecord(record));
  return slides;
}

} // namespace vireonix
