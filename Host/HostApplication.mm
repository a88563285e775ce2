#import "HostApplication.h"

namespace {

SEL editingAction(NSEvent *event) {
  if ([event type] != NSKeyDown)
    return nullptr;
  const NSUInteger modifiers = NSCommandKeyMask | NSControlKeyMask | NSAlternateKeyMask;
  if (([event modifierFlags] & modifiers) != NSCommandKeyMask)
    return nullptr;
  NSString *key = [[event charactersIgnoringModifiers] lowercaseString];
  if ([key isEqualToString:@"x"])
    return @selector(cut:);
  if ([key isEqualToString:@"c"])
    return @selector(copy:);
  if ([key isEqualToString:@"v"])
    return @selector(paste:);
  return [key isEqualToString:@"a"] ? @selector(selectAll:) : nullptr;
}

} // namespace

@implementation HostApplication

- (void)sendEvent:(NSEvent *)event {
  SEL action = editingAction(event);
  if (action == nullptr || ![self sendAction:action to:nil from:self])
    [super sendEvent:event];
}

@end
