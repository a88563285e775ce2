// Texts too long for their cells end in an ellipsis, where the cell asks for one; empty fields show
// what they are for.
#import "Theme/GNUstep/Palette.h"
#import "Theme/GNUstep/Replacement.h"

#import <AppKit/AppKit.h>

using namespace vireonix::host;

namespace {

NSString *const kEllipsis = @"…";

bool fits(NSAttributedString *text, CGFloat width) {
  return [text size].width <= width;
}

NSAttributedString *shortened(NSAttributedString *text, NSUInteger length) {
  // Not through a character of two units or its accents.
  const NSRange whole = [[text string] rangeOfComposedCharacterSequenceAtIndex:length];
  NSMutableAttributedString *start =
      [[[text attributedSubstringFromRange:NSMakeRange(0, whole.location)] mutableCopy]
          autorelease];
  NSDictionary *look = [text attributesAtIndex:0 effectiveRange:nullptr];
  [start appendAttributedString:[[[NSAttributedString alloc] initWithString:kEllipsis
                                                                 attributes:look] autorelease]];
  return start;
}

// The longest start of the text that leaves room for the ellipsis.
NSAttributedString *fitted(NSAttributedString *text, CGFloat width) {
  NSUInteger fitting = 0;
  NSUInteger tooLong = [text length];
  while (tooLong - fitting > 1) {
    const NSUInteger middle = (fitting + tooLong) / 2;
    (fits(shortened(text, middle), width) ? fitting : tooLong) = middle;
  }
  return shortened(text, fitting);
}

// The room of the text that is being drawn; 0 between drawings.
CGFloat room = 0;

Replacement<void, NSRect, NSView *> drawInterior;
void drawInteriorInItsRoom(id receiver, SEL, NSRect frame, NSView *view) {
  NSTextFieldCell *cell = receiver;
  const bool endsInEllipsis = [cell lineBreakMode] == NSLineBreakByTruncatingTail;
  room = endsInEllipsis ? NSWidth([cell titleRectForBounds:frame]) : 0;
  drawInterior(cell, frame, view);
  room = 0;
}

NSAttributedString *hintOf(NSTextFieldCell *cell) {
  NSString *hint = [cell placeholderString] != nil ? [cell placeholderString] : @"";
  NSDictionary *look = @{
    NSFontAttributeName : [cell font],
    NSForegroundColorAttributeName : colour(Ink::secondaryText)
  };
  return [[[NSAttributedString alloc] initWithString:hint attributes:look] autorelease];
}

Replacement<NSAttributedString *> drawnText;
NSAttributedString *drawnTextOrItsStart(id receiver, SEL) {
  NSAttributedString *text = drawnText(receiver);
  if ([text length] == 0)
    text = hintOf(receiver);
  return room <= 0 || [text length] == 0 || fits(text, room) ? text : fitted(text, room);
}

} // namespace

void vireonix::host::replaceTitleMethods() {
  drawInterior.install([NSTextFieldCell class], @selector(drawInteriorWithFrame:inView:),
                       &drawInteriorInItsRoom);
  drawnText.install([NSTextFieldCell class], NSSelectorFromString(@"_drawAttributedString"),
                    &drawnTextOrItsStart);
}
