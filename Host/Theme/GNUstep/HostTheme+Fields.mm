// Text fields and the field of a combo box.
#import "Theme/GNUstep/Palette.h"
#import "Theme/GNUstep/Replacement.h"
#import "Theme/GNUstep/Shapes.h"
#import "Theme/GNUstep/ThemeClass.h"

#include <cmath>

using namespace vireonix::host;

namespace {

constexpr CGFloat kTextMargin = 3;

Replacement<void, NSRect, NSView *> drawBorderAndBackground;
Replacement<NSRect, NSRect> titleRect;

bool isField(NSTextFieldCell *cell) {
  return [cell isBezeled] || ([cell isBordered] && [cell isEditable]);
}

// A combo box in which nothing can be typed is a button that opens a list.
Ink fieldFill(NSTextFieldCell *cell, NSView *view) {
  if (![cell isEnabled])
    return Ink::disabledField;
  if (![view isKindOfClass:[NSComboBox class]] || [cell isEditable])
    return Ink::field;
  return isHeld(view)            ? Ink::pressedButton
         : isHovered(cell, view) ? Ink::hoveredButton
                                 : Ink::button;
}

void drawField(NSTextFieldCell *cell, NSRect frame, NSView *view) {
  const bool enabled = [cell isEnabled];
  drawBox(frame, kControlRadius, colour(fieldFill(cell, view)),
          colour(!enabled                ? Ink::subtleBorder
                 : isHovered(cell, view) ? Ink::strongBorder
                                         : Ink::border));
  if (hasKeyboardFocus(cell, view))
    drawFocusRing(frame, kControlRadius);
}

// The line of text in the middle of a field or a table's row.
NSRect centredLine(NSRect rect, NSFont *font) {
  if (font == nil)
    return rect;
  const CGFloat line = std::ceil([font defaultLineHeightForFont]);
  const CGFloat room = NSHeight(rect) - line;
  // What is high enough for two lines is filled from its top.
  if (room <= 0 || room >= line)
    return rect;
  return NSMakeRect(NSMinX(rect), NSMinY(rect) + std::floor(room / 2), NSWidth(rect), line);
}

void drawFieldOrLabel(id receiver, SEL, NSRect frame, NSView *view) {
  NSTextFieldCell *cell = receiver;
  if (isField(cell))
    drawField(cell, frame, view);
  else
    drawBorderAndBackground(cell, frame, view);
}

NSRect paddedTitleRect(id receiver, SEL, NSRect bounds) {
  NSTextFieldCell *cell = receiver;
  const NSRect rect = titleRect(cell, bounds);
  const bool isInTable = [[cell controlView] isKindOfClass:[NSTableView class]];
  // The same rule for a label and the field beside it: their lines stand on one height.
  const CGFloat margin = isInTable || isField(cell) ? kTextMargin : 0;
  return centredLine(NSInsetRect(rect, margin, 0), [cell font]);
}

// What lies behind a field shows at its corners.
Replacement<BOOL> isOpaque;
BOOL isOpaqueWithoutCorners(id receiver, SEL) {
  return isField(receiver) ? NO : isOpaque(receiver);
}

} // namespace

void vireonix::host::replaceFieldMethods() {
  drawBorderAndBackground.install([NSTextFieldCell class],
                                  @selector(_drawBorderAndBackgroundWithFrame:inView:),
                                  &drawFieldOrLabel);
  isOpaque.install([NSTextFieldCell class], @selector(isOpaque), &isOpaqueWithoutCorners);
  titleRect.install([NSTextFieldCell class], @selector(titleRectForBounds:), &paddedTitleRect);
}
