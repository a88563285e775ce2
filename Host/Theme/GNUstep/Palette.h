// The theme's colours. Every colour that it draws with is declared in this one table.
#pragma once

#import <AppKit/AppKit.h>

#import "Theme/HostTheme.h"

namespace vireonix::host {

enum class Ink {
  window,
  field,
  disabledField,
  text,
  secondaryText,
  disabledText,
  border,
  strongBorder,
  subtleBorder,
  button,
  pressedButton,
  hoveredButton,
  disabledButton,
  accent,
  pressedAccent,
  hoveredAccent,
  disabledAccent,
  accentText,
  focusRing,
  tint,
  alternateRow,
  header,
  gridLine,
  track,
  knob,
  hoveredKnob,
  pressedKnob,
  sliderKnob,
  pressedSliderKnob,
  toolTip,
  toolTipText,
  textSelection,
  menu,
};

/// Chooses the column of the table that `colour` reads.
void usePalette(HostThemeVariant variant);
HostThemeVariant chosenPalette();

/// The colour of the chosen variant; opaque, in the calibrated RGB space.
NSColor* colour(Ink ink);

/// AppKit's named colours in terms of the table, as the toolkit asks a theme for them.
NSColorList* systemColours();

} // namespace vireonix::host
