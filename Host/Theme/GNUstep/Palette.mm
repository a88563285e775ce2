#import "Theme/GNUstep/Palette.h"

#include <array>
#include <cstdint>
#include <utility>

namespace vireonix::host {
namespace {

struct Row {
  Ink ink;
  std::uint32_t light;
  std::uint32_t dark;
};

// Text on its background has a contrast of 4.5 : 1 or more, except what is disabled.
constexpr std::array kTable{
    Row{Ink::window, 0xF3F4F6, 0x23262C},
    Row{Ink::field, 0xFFFFFF, 0x1B1E23},
    Row{Ink::disabledField, 0xECEEF1, 0x292C33},
    Row{Ink::text, 0x1D2129, 0xE9EBEF},
    Row{Ink::secondaryText, 0x565E6B, 0xAAB1BD},
    Row{Ink::disabledText, 0x9AA1AC, 0x6D7480},
    Row{Ink::border, 0xC4C9D1, 0x474D58},
    Row{Ink::strongBorder, 0x8B93A0, 0x7A8290},
    Row{Ink::subtleBorder, 0xDCDFE5, 0x383D46},
    Row{Ink::button, 0xFFFFFF, 0x383D47},
    Row{Ink::pressedButton, 0xDFE4EC, 0x2B2F37},
    Row{Ink::hoveredButton, 0xEDF2FB, 0x444B58},
    Row{Ink::disabledButton, 0xEEF0F3, 0x2A2D34},
    Row{Ink::accent, 0x2F6FDE, 0x2F6FDE},
    Row{Ink::pressedAccent, 0x1F51A9, 0x1F51A9},
    Row{Ink::hoveredAccent, 0x2763CC, 0x2763CC},
    Row{Ink::disabledAccent, 0xB4CAF0, 0x2F4468},
    Row{Ink::accentText, 0xFFFFFF, 0xFFFFFF},
    Row{Ink::focusRing, 0x2F6FDE, 0x6FA0F7},
    Row{Ink::tint, 0xDCE8FC, 0x2C4470},
    Row{Ink::alternateRow, 0xF4F6FA, 0x21252B},
    Row{Ink::header, 0xF8F9FB, 0x2A2E35},
    Row{Ink::gridLine, 0xE4E7EC, 0x30353D},
    Row{Ink::track, 0xD5D9E0, 0x444A55},
    Row{Ink::knob, 0xB1B7C2, 0x5C6470},
    Row{Ink::hoveredKnob, 0x9CA3AF, 0x6E7682},
    Row{Ink::pressedKnob, 0x78808D, 0x8E96A4},
    Row{Ink::sliderKnob, 0xFFFFFF, 0xDDE1E8},
    Row{Ink::pressedSliderKnob, 0xC9DBFA, 0x9DBDF5},
    Row{Ink::toolTip, 0x2B303A, 0x3D434E},
    Row{Ink::toolTipText, 0xFFFFFF, 0xFFFFFF},
    Row{Ink::textSelection, 0xBBD3FA, 0x2C5499},
    Row{Ink::menu, 0xFFFFFF, 0x2C3038},
};

// The toolkit's names for colours; those that it does not know are harmless.
const std::pair<NSString *, Ink> kSystemColours[] = {
    {@"windowBackgroundColor", Ink::window},
    {@"windowFrameColor", Ink::border},
    {@"windowFrameTextColor", Ink::text},
    {@"controlColor", Ink::window},
    {@"controlBackgroundColor", Ink::field},
    {@"controlTextColor", Ink::text},
    {@"labelColor", Ink::text},
    {@"secondaryLabelColor", Ink::secondaryText},
    {@"tertiaryLabelColor", Ink::disabledText},
    {@"quaternaryLabelColor", Ink::disabledText},
    {@"disabledControlTextColor", Ink::disabledText},
    {@"controlHighlightColor", Ink::window},
    {@"controlLightHighlightColor", Ink::window},
    {@"controlShadowColor", Ink::border},
    {@"controlDarkShadowColor", Ink::border},
    {@"textColor", Ink::text},
    {@"textBackgroundColor", Ink::field},
    {@"insertionPointColor", Ink::text},
    {@"selectedTextColor", Ink::text},
    {@"selectedTextBackgroundColor", Ink::textSelection},
    {@"selectedControlColor", Ink::tint},
    {@"selectedControlTextColor", Ink::text},
    {@"secondarySelectedControlColor", Ink::tint},
    {@"alternateSelectedControlColor", Ink::accent},
    {@"alternateSelectedControlTextColor", Ink::accentText},
    {@"selectedMenuItemColor", Ink::accent},
    {@"selectedMenuItemTextColor", Ink::accentText},
    {@"keyboardFocusIndicatorColor", Ink::focusRing},
    {@"gridColor", Ink::gridLine},
    {@"headerColor", Ink::header},
    {@"headerTextColor", Ink::secondaryText},
    {@"rowBackgroundColor", Ink::field},
    {@"alternateRowBackgroundColor", Ink::alternateRow},
    {@"highlightColor", Ink::window},
    {@"shadowColor", Ink::border},
    {@"scrollBarColor", Ink::field},
    {@"knobColor", Ink::knob},
    {@"selectedKnobColor", Ink::pressedKnob},
    {@"toolTipColor", Ink::toolTip},
    {@"toolTipTextColor", Ink::toolTipText},
};

HostThemeVariant chosenVariant = HostThemeLight;

CGFloat component(std::uint32_t rgb, unsigned shift) {
  return ((rgb >> shift) & 0xFFU) / 255.0;
}

constexpr bool tableIsInOrder() {
  for (std::size_t index = 0; index < kTable.size(); ++index)
    if (static_cast<std::size_t>(kTable[index].ink) != index)
      return false;
  return true;
}
static_assert(tableIsInOrder());

} // namespace

void usePalette(HostThemeVariant variant) {
  chosenVariant = variant;
}

HostThemeVariant chosenPalette() {
  return chosenVariant;
}

NSColor *colour(Ink ink) {
  const Row &row = kTable.at(static_cast<std::size_t>(ink));
  const std::uint32_t rgb = chosenVariant == HostThemeDark ? row.dark : row.light;
  return [NSColor colorWithCalibratedRed:component(rgb, 16) green:component(rgb, 8)
                                    blue:component(rgb, 0)
                                   alpha:1];
}

NSColorList *systemColours() {
  NSColorList *list = [[[NSColorList alloc] initWithName:@"System" fromFile:nil] autorelease];
  for (const auto &[name, ink] : kSystemColours)
    [list setColor:colour(ink) forKey:name];
  return list;
}

} // namespace vireonix::host
