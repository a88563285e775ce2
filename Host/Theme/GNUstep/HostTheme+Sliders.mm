// Sliders and progress bars.
#import "Theme/GNUstep/Palette.h"
#import "Theme/GNUstep/Shapes.h"
#import "Theme/GNUstep/ThemeClass.h"

using namespace vireonix::host;

namespace {

constexpr CGFloat kTrackWidth = 4;
constexpr CGFloat kKnobSize = 16;

NSRect trackIn(NSRect rect, bool vertical) {
  return vertical ? centred(NSMakeSize(kTrackWidth, NSHeight(rect) - kKnobSize / 2), rect)
                  : centred(NSMakeSize(NSWidth(rect) - kKnobSize / 2, kTrackWidth), rect);
}

// The part of the track from the smallest value to the knob.
NSRect passedPart(NSRect track, NSRect knob, bool vertical, BOOL flipped) {
  NSRect part = track;
  if (!vertical) {
    part.size.width = NSMidX(knob) - NSMinX(track);
  } else if (flipped) {
    part.origin.y = NSMidY(knob);
    part.size.height = NSMaxY(track) - NSMidY(knob);
  } else {
    part.size.height = NSMidY(knob) - NSMinY(track);
  }
  return part;
}

} // namespace

@interface HostTheme (Sliders)
@end

@implementation HostTheme (Sliders)

- (void)drawSliderBorderAndBackground:(NSBorderType)type
                                frame:(NSRect)frame
                               inCell:(NSCell *)cell
                         isHorizontal:(BOOL)horizontal {
}

- (void)drawBarInside:(NSRect)rect inCell:(NSCell *)cell flipped:(BOOL)flipped {
  NSSliderCell *slider = static_cast<NSSliderCell *>(cell);
  const bool vertical = [slider isVertical] == 1;
  const NSRect track = trackIn(rect, vertical);
  fillRounded(track, kTrackWidth / 2, colour(Ink::track));
  const NSRect knob = [slider knobRectFlipped:flipped];
  fillRounded(passedPart(track, knob, vertical, flipped), kTrackWidth / 2,
              colour([cell isEnabled] ? Ink::accent : Ink::disabledAccent));
}

- (void)drawKnobInCell:(NSCell *)cell {
  NSSliderCell *slider = static_cast<NSSliderCell *>(cell);
  NSView *view = [cell controlView];
  const NSRect knob =
      centred(NSMakeSize(kKnobSize, kKnobSize), [slider knobRectFlipped:[view isFlipped]]);
  const bool enabled = [cell isEnabled];
  drawBox(knob, kKnobSize / 2,
          colour(!enabled       ? Ink::disabledButton
                 : isHeld(view) ? Ink::pressedSliderKnob
                                : Ink::sliderKnob),
          colour(!enabled                ? Ink::border
                 : isHovered(cell, view) ? Ink::accent
                                         : Ink::strongBorder));
  if (hasKeyboardFocus(cell, view))
    drawFocusRing(knob, kKnobSize / 2);
}

- (NSRect)drawProgressIndicatorBezel:(NSRect)bounds withClip:(NSRect)clip {
  fillRounded(bounds, kControlRadius, colour(Ink::track));
  return bounds;
}

- (void)drawProgressIndicatorBarDeterminate:(NSRect)bounds {
  fillRounded(bounds, kControlRadius, colour(Ink::accent));
}

@end
