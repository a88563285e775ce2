// How well the text in a picture can be read, by what the picture shows.
#pragma once

#import "support/pixels.h"

namespace vireonix::test {

/// The least contrast at which text is called readable (WCAG 2.1, level AA).
constexpr double kReadable = 4.5;

/// The contrast ratio of two colours after WCAG 2.1, from 1 to 21.
double contrast(Pixel a, Pixel b);

/// The colour that most pixels of a rectangle (from the top left) have.
Pixel commonest(const Picture &picture, NSRect rect);

/// The contrast of the boldest pixel in a rectangle with its commonest colour, the background.
double textContrast(const Picture &picture, NSRect rect);

} // namespace vireonix::test
