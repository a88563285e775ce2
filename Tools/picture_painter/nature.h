// What more than one picture shows: trees, birds, mist, stars.
#pragma once

#include "canvas.h"
#include "noise.h"

namespace vireonix::painting {

/// Calls act(place) from `from` to before `to`; step(place) answers how far the next place is.
template <class Step, class Act> void walk(float from, float to, Step step, Act act) {
  float place = from;
  while (place < to) {
    act(place);
    place += step(place);
  }
}

/// Adds the outline of a fir that stands on `foot` to a sheet, in the sheet's colour.
void drawFir(Layer& sheet, Dice& dice, Place foot, float height);

/// A round-crowned tree in the sheet's colour.
void drawLeafTree(Layer& sheet, Dice& dice, Place foot, float height);

/// A bird in the distance, `span` from wing tip to wing tip.
void drawBird(Layer& sheet, Place centre, float span, float tilt);

/// Banks of mist that are thickest at `level` and reach `reach` above and below it.
void driftMist(Canvas& picture, const Noise& noise, float level, float reach, Rgb colour,
               float strength);

/// Scatters stars over the rows above `horizon`, fewer and fainter towards it.
void scatterStars(Canvas& picture, Dice& dice, int count, float horizon);

} // namespace vireonix::painting
