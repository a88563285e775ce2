// A text with placeholders of the form "${key}" that are filled with values set by key. A key
// reaches to the next "}" or, without one, to the end of the text; there is no escape, and values
// are not searched for placeholders. Any one thread at a time.
#import <Foundation/Foundation.h>

@interface TextTemplate : NSObject {
  NSString *fromStr;
  NSMutableDictionary *keyAndValues;
  NSMutableString *outStr;
}

/// Copies the template text.
- (id)initFromStr:(NSString *)text;

/// Sets the value whose description takes the place of the key's placeholders; nil removes it.
- (void)setItem:(NSString *)key value:(id)value;

/// The filled text. It belongs to the template and stays valid until the next `parse` or the
/// template's release. A key without a value leaves nothing behind.
- (NSString *)parse;

@end
