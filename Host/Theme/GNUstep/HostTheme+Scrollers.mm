// Scroll bars: a slim knob without arrows.
#import "Theme/GNUstep/Palette.h"
#import "Theme/GNUstep/Replacement.h"
#import "Theme/GNUstep/Shapes.h"
#import "Theme/GNUstep/ThemeClass.h"

#include <algorithm>

using namespace vireonix::host;

namespace {

constexpr CGFloat kMargin = 3;
constexpr CGFloat kShortestKnob = 28;

bool isHorizontal(NSScroller *scroller) {
  return NSWidth([scroller bounds]) > NSHeight([scroller bounds]);
}

// A part of the scroller from `start` to `end` along it, over its whole width.
NSRect slice(NSScroller *scroller, CGFloat start, CGFloat end) {
  const NSRect bounds = [scroller bounds];
  return isHorizontal(scroller)
             ? NSMakeRect(NSMinX(bounds) + start, NSMinY(bounds), end - start, NSHeight(bounds))
             : NSMakeRect(NSMinX(bounds), NSMinY(bounds) + start, NSWidth(bounds), end - start);
}

struct Span {
  CGFloat start;
  CGFloat end;
};

CGFloat lengthOf(NSScroller *scroller) {
  return std::max(NSWidth([scroller bounds]), NSHeight([scroller bounds]));
}

Span knobSpan(NSScroller *scroller) {
  const CGFloat length = lengthOf(scroller);
  const CGFloat proportion = std::clamp<CGFloat>([scroller knobProportion], 0, 1);
  const CGFloat knob = std::min(length, std::max(kShortestKnob, length * proportion));
  const CGFloat start = (length - knob) * std::clamp([scroller doubleValue], 0.0, 1.0);
  return {start, start + knob};
}

bool hasKnob(NSScroller *scroller) {
  return
      [scroller isEnabled] && [scroller knobProportion] < 1 && lengthOf(scroller) > kShortestKnob;
}

NSRect rectForPart(id receiver, SEL, NSScrollerPart part) {
  NSScroller *scroller = receiver;
  if (part == NSScrollerKnobSlot)
    return [scroller bounds];
  if (!hasKnob(scroller))
    return NSZeroRect;
  const Span knob = knobSpan(scroller);
  switch (part) {
  case NSScrollerKnob:
    return slice(scroller, knob.start, knob.end);
  case NSScrollerDecrementPage:
    return slice(scroller, 0, knob.start);
  case NSScrollerIncrementPage:
    return slice(scroller, knob.end, lengthOf(scroller));
  default:
    return NSZeroRect;
  }
}

void drawSlotIn(id, SEL, NSRect rect, BOOL) {
  [colour(Ink::field) set];
  NSRectFill(rect);
}

void drawSlot(id receiver, SEL) {
  drawSlotIn(receiver, nullptr, [static_cast<NSScroller *>(receiver) bounds], NO);
}

void drawKnob(id receiver, SEL) {
  NSScroller *scroller = receiver;
  const NSRect knob = NSInsetRect([scroller rectForPart:NSScrollerKnob], kMargin, kMargin);
  fillRounded(knob, kControlRadius,
              colour(isHeld(scroller)           ? Ink::pressedKnob
                     : isHovered(nil, scroller) ? Ink::hoveredKnob
                                                : Ink::knob));
}

void drawNoArrow(id, SEL, NSScrollerArrow, BOOL) {}

} // namespace

void vireonix::host::replaceScrollerMethods() {
  static Replacement<NSRect, NSScrollerPart> part;
  static Replacement<void, NSRect, BOOL> slotIn;
  static Replacement<void> slot;
  static Replacement<void> knob;
  static Replacement<void, NSScrollerArrow, BOOL> arrow;
  Class owner = [NSScroller class];
  part.install(owner, @selector(rectForPart:), &rectForPart);
  slotIn.install(owner, @selector(drawKnobSlotInRect:highlight:), &drawSlotIn);
  slot.install(owner, @selector(drawKnobSlot), &drawSlot);
  knob.install(owner, @selector(drawKnob), &drawKnob);
  arrow.install(owner, @selector(drawArrow:highlight:), &drawNoArrow);
}
