// What the theme wants of the toolkit's settings.
#pragma once

namespace vireonix::host {

/// Registers fonts, scroll bar and menu styles. They rank below everything that the user has set.
/// The toolkit reads them when the application object is made.
void registerThemeDefaults();

/// Names the fonts that are tried, in this order, for characters that the theme's font lacks.
void chooseFallbackFonts();

} // namespace vireonix::host
