#import "vireonix/TextObjectRecord.h"

#import "Bridge/text.h"
#import "vireonix/slider_records.h"

#include <utility>

using namespace vireonix;

namespace slider = vireonix::core::slider;
namespace xml = vireonix::core::xml;

namespace {

NSMutableDictionary *dictionaryOf(const slider::TextObject &textObject) {
  auto *values = [[NSMutableDictionary alloc] initWithCapacity:textObject.size()];
  @autoreleasepool {
    for (std::size_t i = 0; i < textObject.size(); ++i) {
      const auto [key, value] = textObject.at(i);
      [values setObject:bridge::string(value) forKey:recordKey(key)];
    }
  }
  return values;
}

} // namespace

@implementation TextObjectRecord

- (instancetype)init {
  return [self initWithCapacity:0];
}

- (instancetype)initWithCapacity:(NSUInteger)capacity {
  self = [super init];
  if (self != nil)
    values = [[NSMutableDictionary alloc] initWithCapacity:capacity];
  return self;
}

- (instancetype)initWithTextObject:(slider::TextObject)textObject {
  self = [super init];
  if (self != nil)
    unread = std::move(textObject);
  return self;
}

- (instancetype)initWithObjects:(const id[])objects
                        forKeys:(const id<NSCopying>[])keys
                          count:(NSUInteger)count {
  self = [self initWithCapacity:count];
  for (NSUInteger i = 0; self != nil && i < count; ++i)
    [values setObject:objects[i] forKey:keys[i]];
  return self;
}

- (void)dealloc {
  [values release];
  [super dealloc];
}

- (NSMutableDictionary *)values {
  if (values == nil)
    values = dictionaryOf(std::exchange(unread, {}));
  return values;
}

- (NSUInteger)count {
  return [[self values] count];
}

- (id)objectForKey:(id)key {
  return [[self values] objectForKey:key];
}

- (NSEnumerator *)keyEnumerator {
  return [[self values] keyEnumerator];
}

- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState *)state
                                  objects:(id *)buffer
                                    count:(NSUInteger)length {
  return [[self values] countByEnumeratingWithState:state objects:buffer count:length];
}

// A text that could change by itself is kept as it is now.
- (void)setObject:(id)object forKey:(id)key {
  markup.clear();
  if ([object isKindOfClass:[NSString class]])
    object = [[object copy] autorelease];
  [[self values] setObject:object forKey:key];
}

- (void)removeObjectForKey:(id)key {
  markup.clear();
  [[self values] removeObjectForKey:key];
}

// No markup is empty, so that an empty one is none.
- (std::string_view)markupInShape:(const xml::Tree &)templateSlide {
  if (markup.empty() || markupShape != templateSlide) {
    const xml::Node *const slide = templateSlide.get();
    markup = values != nil ? slider::textObjectMarkup(textObjectOfRecord(values), slide)
                           : slider::textObjectMarkup(unread, slide);
    markupShape = templateSlide;
  }
  return markup;
}

@end
