// Water that fills the picture below a shore and mirrors what stands above it.
#pragma once

#include "canvas.h"
#include "noise.h"

namespace vireonix::painting {

struct Water {
  float shore = 0;    // the row where it begins
  float swell = 1;    // how far ripples displace what they mirror
  float smear = 0;    // how far lights are drawn out downwards, in pixels at the viewer
  float clarity = 1;  // brightness of the mirrored picture
  Rgb deep;           // its own colour
  float depth = 0.6F; // how much of that shows at the viewer
  Rgb glint;          // far ripples that catch the light
  float glints = 0.4F;
};

void paintWater(Canvas& picture, const Noise& ripples, const Water& water);

} // namespace vireonix::painting
