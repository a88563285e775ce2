// Slides and text objects as the mutable dictionaries that the tables show and the editor changes.
// Keys are those of Core/slider_document.h. Main thread only.
#pragma once

#import <Foundation/Foundation.h>

#include "Core/slider_document.h"

namespace vireonix {

/// The key of a slide record's text object records, a mutable array.
extern NSString *const kTextObjectsKey;

/// A key of Core as a string.
NSString *recordKey(std::string_view key);

/// The record's value; the empty text when it has none.
NSString *recordText(NSDictionary *record, std::string_view key);
/// Sets a value; nil as the empty text.
void setRecordText(NSMutableDictionary *record, std::string_view key, NSString *text);

/// Gives a slide record a file, and repeats it in its text objects.
void setSlideFile(NSMutableDictionary *slide, NSString *path);

/// Autoreleased records.
NSMutableDictionary *recordOfTextObject(core::slider::TextObject textObject);
NSMutableDictionary *recordOfSlide(core::slider::Slide slide);

/// The text object of a record.
core::slider::TextObject textObjectOfRecord(NSDictionary *record);

/// Writes the slides of slide records. The writer's template slide is given once more, with its
/// tree; it may be null.
void writeSlides(NSArray *records, core::slider::DocumentWriter &writer,
                 const core::xml::Tree &templateSlide);

} // namespace vireonix
