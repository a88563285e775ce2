// Push buttons, check boxes, radio buttons and the arrows on pop-up and combo buttons.
#import "Theme/GNUstep/Palette.h"
#import "Theme/GNUstep/Replacement.h"
#import "Theme/GNUstep/Shapes.h"
#import "Theme/GNUstep/ThemeClass.h"

#include <array>

using namespace vireonix::host;

namespace {

// A push button of a nib reserves room for a shadow around it; so its shape is smaller.
constexpr CGFloat kRoomyHeight = 30;
constexpr CGFloat kPushHeight = 26;
constexpr CGFloat kPushMargin = 5;

constexpr CGFloat kMarkSize = 16;
// The room that the mark takes in its button, with a gap to the title.
constexpr CGFloat kMarkWidth = 21;

Replacement<void, NSImage *, NSRect, NSView *> drawImage;
Replacement<NSColor *> textColour;

enum class Picture { other, check, radio, comboArrow };

Picture pictureOf(NSImage *image) {
  NSString *name = [image name];
  if ([name hasPrefix:@"GSSwitch"])
    return Picture::check;
  if ([name hasPrefix:@"GSRadio"])
    return Picture::radio;
  if ([name isEqualToString:@"GSComboArrow"])
    return Picture::comboArrow;
  return Picture::other;
}

bool isDefault(NSButtonCell *cell) {
  NSString *key = [cell keyEquivalent];
  return [key isEqualToString:@"\r"] || [key isEqualToString:@"\n"];
}

bool drawsItself(NSButtonCell *cell) {
  SEL drawing = @selector(drawWithFrame:inView:);
  return [cell methodForSelector:drawing] != [NSButtonCell instanceMethodForSelector:drawing];
}

// Whether the theme fills the shape of this button.
bool drawsAccent(NSButtonCell *cell) {
  return isDefault(cell) && [cell isBordered] && ![cell isTransparent] && !drawsItself(cell);
}

NSRect shapeOf(NSRect frame, int style) {
  if (style != NSRoundedBezelStyle || NSHeight(frame) < kRoomyHeight)
    return frame;
  return centred(NSMakeSize(NSWidth(frame) - 2 * kPushMargin, kPushHeight), frame);
}

bool isPressed(GSThemeControlState state) {
  return state == GSThemeHighlightedState || state == GSThemeHighlightedFirstResponderState ||
         state == GSThemeSelectedState || state == GSThemeSelectedFirstResponderState;
}

struct ButtonState {
  bool accent;
  bool enabled;
  bool pressed;
  bool hovered;
};

Ink accentFill(ButtonState state) {
  if (!state.enabled)
    return Ink::disabledAccent;
  return state.pressed ? Ink::pressedAccent : state.hovered ? Ink::hoveredAccent : Ink::accent;
}

Ink plainFill(ButtonState state) {
  if (!state.enabled)
    return Ink::disabledButton;
  return state.pressed ? Ink::pressedButton : state.hovered ? Ink::hoveredButton : Ink::button;
}

void drawPushButton(NSRect shape, ButtonState state) {
  if (state.accent) {
    fillRounded(shape, kControlRadius, colour(accentFill(state)));
    return;
  }
  drawBox(shape, kControlRadius, colour(plainFill(state)),
          colour(state.enabled ? Ink::border : Ink::subtleBorder));
}

struct MarkState {
  bool on;
  bool mixed;
  bool enabled;
  bool pressed;
  bool hovered;
};

NSColor *markFill(MarkState state) {
  if (state.on)
    return colour(!state.enabled  ? Ink::disabledAccent
                  : state.pressed ? Ink::pressedAccent
                  : state.hovered ? Ink::hoveredAccent
                                  : Ink::accent);
  return colour(!state.enabled  ? Ink::disabledField
                : state.pressed ? Ink::pressedButton
                : state.hovered ? Ink::hoveredButton
                                : Ink::field);
}

// The box of a check mark or the circle of a radio button.
void drawMarkGround(NSRect box, CGFloat radius, MarkState state) {
  fillRounded(box, radius, markFill(state));
  if (!state.on)
    strokeRounded(box, radius,
                  colour(!state.enabled  ? Ink::border
                         : state.hovered ? Ink::accent
                                         : Ink::strongBorder));
}

void drawCheckMark(NSRect box, MarkState state, BOOL flipped) {
  drawMarkGround(box, 4, state);
  if (!state.on)
    return;
  const CGFloat down = flipped ? 1 : -1;
  const NSPoint centre = NSMakePoint(NSMidX(box), NSMidY(box));
  NSBezierPath *path = [NSBezierPath bezierPath];
  if (state.mixed) {
    [path moveToPoint:NSMakePoint(centre.x - 3.5, centre.y)];
    [path lineToPoint:NSMakePoint(centre.x + 3.5, centre.y)];
  } else {
    [path moveToPoint:NSMakePoint(centre.x - 3.7, centre.y + 0.2 * down)];
    [path lineToPoint:NSMakePoint(centre.x - 1.1, centre.y + 2.9 * down)];
    [path lineToPoint:NSMakePoint(centre.x + 3.9, centre.y - 2.7 * down)];
  }
  [path setLineWidth:1.9];
  [path setLineCapStyle:NSRoundLineCapStyle];
  [path setLineJoinStyle:NSRoundLineJoinStyle];
  [colour(Ink::accentText) set];
  [path stroke];
}

void drawRadioMark(NSRect box, MarkState state) {
  drawMarkGround(box, kMarkSize / 2, state);
  if (state.on)
    fillRounded(NSInsetRect(box, 5, 5), kMarkSize / 2, colour(Ink::accentText));
}

void drawMark(NSButtonCell *cell, Picture picture, NSRect frame, NSView *view) {
  NSRect box = centred(NSMakeSize(kMarkSize, kMarkSize), frame);
  box.origin.x = [cell imagePosition] == NSImageRight ? NSMaxX(frame) - kMarkSize : NSMinX(frame);
  const MarkState state{.on = [cell state] != NSOffState,
                        .mixed = [cell state] == NSMixedState,
                        .enabled = bool([cell isEnabled]),
                        .pressed = bool([cell isHighlighted]),
                        .hovered = isHovered(cell, view)};
  if (picture == Picture::check)
    drawCheckMark(box, state, [view isFlipped]);
  else
    drawRadioMark(box, state);
  if ([cell showsFirstResponder] && hasKeyboardFocus(cell, view))
    drawFocusRing(NSInsetRect(box, -1, -1), picture == Picture::check ? 5 : kMarkSize);
}

// The toolkit compares this picture by identity; so there is one for each variant.
NSImage *popUpArrow(id, SEL) {
  static std::array<NSImage *, 2> pictures{};
  NSImage *&picture = pictures.at(chosenPalette());
  if (picture == nil)
    picture = [chevronPicture(Direction::down, colour(Ink::secondaryText)) retain];
  return picture;
}

// The accent colour marks the default button; it needs no picture of the return key.
bool isReturnKey(NSImage *image) {
  return [[image name] hasPrefix:@"common_ret"];
}

Replacement<void, NSImage *> setImage;
void setImageButReturnKey(id receiver, SEL, NSImage *image) {
  setImage(receiver, isReturnKey(image) ? nil : image);
}

Replacement<void, NSImage *> setAlternateImage;
void setAlternateImageButReturnKey(id receiver, SEL, NSImage *image) {
  setAlternateImage(receiver, isReturnKey(image) ? nil : image);
}

void makeRoomForMarks() {
  for (NSString *name in
       @[ @"NSSwitch", @"NSHighlightedSwitch", @"NSRadioButton", @"NSHighlightedRadioButton" ])
    [[NSImage imageNamed:name] setSize:NSMakeSize(kMarkWidth, kMarkSize)];
}

NSColor *titleColour(id receiver, SEL) {
  NSButtonCell *cell = receiver;
  return [cell isEnabled] && drawsAccent(cell) ? colour(Ink::accentText) : textColour(cell);
}

void drawPicture(id receiver, SEL, NSImage *image, NSRect frame, NSView *view) {
  NSButtonCell *cell = receiver;
  const Picture picture = pictureOf(image);
  if (picture == Picture::other)
    drawImage(cell, image, frame, view);
  else if (picture == Picture::comboArrow)
    drawChevron(frame, Direction::down, [view isFlipped],
                colour([cell isEnabled] ? Ink::secondaryText : Ink::disabledText));
  else
    drawMark(cell, picture, frame, view);
}

// A cell that draws itself leaves its ground as it is: here it is that of the theme's own buttons.
void drawGroundOf(NSButton *button) {
  [NSGraphicsContext saveGraphicsState];
  fillRounded([button bounds], kControlRadius - 1,
              colour([button isEnabled] ? Ink::button : Ink::disabledButton));
  [NSGraphicsContext restoreGraphicsState];
}

// Nor does such a cell know of the ring. The line inside it sets it off from whatever colour the
// cell has.
Replacement<void, NSRect> drawButton;
void drawButtonOnGroundWithRing(id receiver, SEL, NSRect dirty) {
  NSButton *button = receiver;
  NSButtonCell *cell = [button cell];
  const bool isBare = drawsItself(cell) && ![cell isTransparent];
  if (isBare)
    drawGroundOf(button);
  drawButton(button, dirty);
  if (!isBare || !hasKeyboardFocus(cell, button))
    return;
  drawFocusRing([button bounds], kControlRadius);
  strokeRounded(NSInsetRect([button bounds], 2, 2), kControlRadius - 2, colour(Ink::window));
}

} // namespace

void vireonix::host::replaceButtonMethods() {
  drawButton.install([NSButton class], @selector(drawRect:), &drawButtonOnGroundWithRing);
  drawImage.install([NSButtonCell class], @selector(drawImage:withFrame:inView:), &drawPicture);
  textColour.install([NSButtonCell class], @selector(textColor), &titleColour);
  setImage.install([NSButtonCell class], @selector(setImage:), &setImageButReturnKey);
  setAlternateImage.install([NSButtonCell class], @selector(setAlternateImage:),
                            &setAlternateImageButReturnKey);
  makeRoomForMarks();
  static Replacement<NSImage *> arrow;
  arrow.install([NSPopUpButtonCell class], @selector(_currentArrowImage), &popUpArrow);
}

@interface HostTheme (Buttons)
@end

@implementation HostTheme (Buttons)

- (void)drawButton:(NSRect)frame
                in:(NSCell *)cell
              view:(NSView *)view
             style:(int)style
             state:(GSThemeControlState)state {
  const bool isButton = [cell isKindOfClass:[NSButtonCell class]];
  NSButtonCell *button = isButton ? static_cast<NSButtonCell *>(cell) : nil;
  if (pictureOf([button image]) == Picture::comboArrow)
    return;
  drawPushButton(shapeOf(frame, style), {.accent = isButton && drawsAccent(button),
                                         .enabled = bool([cell isEnabled]),
                                         .pressed = isPressed(state),
                                         .hovered = isHovered(cell, view)});
}

- (GSThemeMargins)buttonMarginsForCell:(NSCell *)cell
                                 style:(int)style
                                 state:(GSThemeControlState)state {
  const CGFloat side = style == NSRoundedBezelStyle ? kPushMargin + 3 : 4;
  return {.left = side, .right = side, .top = 3, .bottom = 3};
}

// No picture of the return key here either.
- (void)setKeyEquivalent:(NSString *)key forButtonCell:(NSButtonCell *)cell {
}

// The toolkit calls this for the cell that the keyboard acts on.
- (void)drawFocusFrame:(NSRect)frame view:(NSView *)view {
  if (![view isKindOfClass:[NSButton class]])
    return;
  NSButtonCell *cell = [static_cast<NSButton *>(view) cell];
  if (![cell isBordered])
    return;
  const NSRect shape = shapeOf([view bounds], static_cast<int>([cell bezelStyle]));
  drawFocusRing(shape, kControlRadius);
  if (drawsAccent(cell))
    strokeRounded(NSInsetRect(shape, 2, 2), kControlRadius - 2, colour(Ink::accentText));
}

- (NSRect)drawButton:(NSRect)border withClip:(NSRect)clip {
  drawBox(border, kControlRadius, colour(Ink::button), colour(Ink::border));
  return NSInsetRect(border, 2, 2);
}

- (NSRect)drawDarkButton:(NSRect)border withClip:(NSRect)clip {
  return [self drawButton:border withClip:clip];
}

@end
