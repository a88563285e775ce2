#import "Class/FieldText.h"

namespace vireonix {

NSString *textOfField(NSTextField *field) {
  NSText *editor = [field currentEditor];
  NSString *text = editor != nil ? [editor string] : [field stringValue];
  return text != nil ? [NSString stringWithString:text] : @"";
}

void showTextInField(NSTextField *field, NSString *text) {
  NSString *shown = text != nil ? text : @"";
  if (field == nil || [textOfField(field) isEqualToString:shown])
    return;
  NSText *editor = [field currentEditor];
  if (editor == nil) {
    [field setStringValue:shown];
    return;
  }
  NSRange selection = [editor selectedRange];
  selection.location = MIN(selection.location, [shown length]);
  selection.length = MIN(selection.length, [shown length] - selection.location);
  [editor setString:shown];
  [editor setSelectedRange:selection];
}

} // namespace vireonix
