#import "WebKit/WebViewEngine.h"
#import "WebKit/WebViewPrivate.h"

using namespace vireonix::platform;

namespace {

unsigned modifiers(NSEvent *event) {
  const NSUInteger flags = [event modifierFlags];
  return ((flags & NSShiftKeyMask) != 0 ? kShiftKey : 0U) |
         ((flags & NSControlKeyMask) != 0 ? kControlKey : 0U) |
         ((flags & NSAlternateKeyMask) != 0 ? kAlternateKey : 0U) |
         ((flags & NSCommandKeyMask) != 0 ? kCommandKey : 0U);
}

// GNUstep's window tells its new first responder no direction (it sets one only while it selects
// a field's text), so that the key that is being handled has to.
bool isTab(NSEvent *event) {
  if ([event type] != NSKeyDown || [[event characters] length] == 0)
    return false;
  const unichar character = [[event characters] characterAtIndex:0];
  return character == NSTabCharacter || character == NSBackTabCharacter;
}

// With Control, the characters are control codes; the page wants the key.
NSString *typedText(NSEvent *event) {
  const NSUInteger commands = NSControlKeyMask | NSCommandKeyMask;
  return ([event modifierFlags] & commands) != 0 ? [event charactersIgnoringModifiers]
                                                 : [event characters];
}

std::u32string codePoints(NSString *text) {
  NSData *data = [text dataUsingEncoding:NSUTF32LittleEndianStringEncoding];
  std::u32string result([data length] / sizeof(char32_t), U'\0');
  [data getBytes:result.data() length:result.size() * sizeof(char32_t)];
  return result;
}

} // namespace

@interface WebView (Input)
@end

@implementation WebView (Input)

- (NSPoint)pagePoint:(NSEvent *)event {
  const NSPoint point = [self convertPoint:[event locationInWindow] fromView:nil];
  return NSMakePoint(point.x, NSMaxY([self bounds]) - point.y);
}

- (void)press:(MouseButton)button with:(NSEvent *)event {
  const NSPoint point = [self pagePoint:event];
  if (WebPage *page = [self existingPage]) {
    page->movePointer(point.x, point.y, modifiers(event));
    page->pressButton(button, static_cast<int>([event clickCount]), point.x, point.y,
                      modifiers(event));
  }
}

- (void)release:(MouseButton)button with:(NSEvent *)event {
  const NSPoint point = [self pagePoint:event];
  if (WebPage *page = [self existingPage])
    page->releaseButton(button, point.x, point.y, modifiers(event));
}

- (void)move:(NSEvent *)event {
  const NSPoint point = [self pagePoint:event];
  if (WebPage *page = [self existingPage])
    page->movePointer(point.x, point.y, modifiers(event));
}

- (void)mouseDown:(NSEvent *)event {
  [self press:MouseButton::left with:event];
}

- (void)mouseUp:(NSEvent *)event {
  [self release:MouseButton::left with:event];
}

- (void)rightMouseDown:(NSEvent *)event {
  [self press:MouseButton::right with:event];
}

- (void)rightMouseUp:(NSEvent *)event {
  [self release:MouseButton::right with:event];
}

- (void)otherMouseDown:(NSEvent *)event {
  [self press:MouseButton::middle with:event];
}

- (void)otherMouseUp:(NSEvent *)event {
  [self release:MouseButton::middle with:event];
}

- (void)mouseEntered:(NSEvent *)event {
  const NSPoint point = [self pagePoint:event];
  if (WebPage *page = [self existingPage])
    page->pointerEntered(point.x, point.y);
}

- (void)mouseExited:(NSEvent *)event {
  const NSPoint point = [self pagePoint:event];
  if (WebPage *page = [self existingPage])
    page->pointerLeft(point.x, point.y);
}

- (void)mouseMoved:(NSEvent *)event {
  [self move:event];
}

- (void)mouseDragged:(NSEvent *)event {
  [self move:event];
}

- (void)rightMouseDragged:(NSEvent *)event {
  [self move:event];
}

- (void)otherMouseDragged:(NSEvent *)event {
  [self move:event];
}

- (void)scrollWheel:(NSEvent *)event {
  const NSPoint point = [self pagePoint:event];
  if (WebPage *page = [self existingPage])
    page->scroll(point.x, point.y, -[event deltaX], -[event deltaY], modifiers(event));
}

- (BOOL)acceptsFirstResponder {
  return YES;
}

- (BOOL)becomeFirstResponder {
  NSEvent *event = [NSApp currentEvent];
  WebPage *page = [self existingPage];
  if (page != nullptr && isTab(event))
    page->focusEnd(([event modifierFlags] & NSShiftKeyMask) == 0);
  return YES;
}

- (BOOL)resignFirstResponder {
  if (WebPage *page = [self existingPage])
    page->setFocused(false);
  return YES;
}

- (void)sendKey:(NSEvent *)event pressed:(bool)pressed {
  // The page must have the focus before the first key that follows it.
  [engine_ synchronize];
  for (const char32_t character : codePoints(typedText(event)))
    if (WebPage *page = [self existingPage])
      page->sendKey(pressed, character, [event keyCode], modifiers(event));
}

- (void)keyDown:(NSEvent *)event {
  WebPage *page = [self existingPage];
  if (page != nullptr && page->takesKeys())
    [self sendKey:event pressed:true];
  else
    [super keyDown:event];
}

- (void)keyUp:(NSEvent *)event {
  [self sendKey:event pressed:false];
}

- (void)flagsChanged:(NSEvent *)event {
  if (WebPage *page = [self existingPage])
    page->setModifiers(modifiers(event));
}

- (void)edit:(const char *)command {
  if (WebPage *page = [self existingPage])
    page->edit(command);
}

- (void)copy:(id)sender {
  [self edit:"Copy"];
}

- (void)cut:(id)sender {
  [self edit:"Cut"];
}

- (void)paste:(id)sender {
  [self edit:"Paste"];
}

- (void)selectAll:(id)sender {
  [self edit:"SelectAll"];
}

- (void)undo:(id)sender {
  [self edit:"Undo"];
}

- (void)redo:(id)sender {
  [self edit:"Redo"];
}

@end
