// A text object's record: a mutable dictionary that also remembers its markup, so that a save
// writes anew only what has changed. What was read from a document becomes strings when somebody
// first asks for it: most captions of a long document are never looked at. Main thread only.
#import <Foundation/Foundation.h>

#include "Core/slider_document.h"

#include <string>
#include <string_view>

@interface TextObjectRecord : NSMutableDictionary {
  // What was read, while `values` is nil.
  vireonix::core::slider::TextObject unread;
  NSMutableDictionary *values;
  std::string markup;
  // The template slide that the markup was made for.
  vireonix::core::xml::Tree markupShape;
}

- (instancetype)init;
- (instancetype)initWithTextObject:(vireonix::core::slider::TextObject)textObject;
/// The markup in the shape of a template slide, which may be null; valid until the record changes
/// or is asked for another shape.
- (std::string_view)markupInShape:(const vireonix::core::xml::Tree &)templateSlide;

@end
