#import "Class/TextTemplate.h"

#import "Bridge/text.h"

#include "Core/text_template.h"

using namespace vireonix;

@implementation TextTemplate

- (id)initFromStr:(NSString *)text {
  self = [super init];
  if (self == nil)
    return nil;
  fromStr = [text copy];
  keyAndValues = [[NSMutableDictionary alloc] initWithCapacity:1];
  outStr = [[NSMutableString alloc] init];
  return self;
}

- (void)dealloc {
  [outStr release];
  [fromStr release];
  [keyAndValues release];
  [super dealloc];
}

- (void)setItem:(NSString *)key value:(id)value {
  if (key == nil)
    return;
  if (value != nil)
    [keyAndValues setObject:value forKey:key];
  else
    [keyAndValues removeObjectForKey:key];
}

- (NSString *)parse {
  // A key that begins with "@" is a key like any other, which key-value lookup would not make it.
  const std::u16string filled =
      core::fillTemplate(bridge::utf16(fromStr), [self](std::u16string_view key) {
        return bridge::utf16([[keyAndValues objectForKey:bridge::string(key)] description]);
      });
  [outStr release];
  outStr = [bridge::string(filled) mutableCopy];
  return outStr;
}

@end
