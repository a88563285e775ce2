// The pictures of this project. Each call paints the same picture again, pixel for pixel.
#pragma once

#include "canvas.h"

#include <vector>

namespace vireonix::painting {

// 1600 by 1000 pixels.
Canvas paintWelcome(); // balloons over misty hills in the morning
Canvas paintLake();    // a mountain lake at dawn
Canvas paintMeadow();  // a path through a flowering meadow
Canvas paintSea();     // the sea at sunset
Canvas paintCity();    // a city on a river at night

/// Dunes under the Milky Way: 1200 by 750 pixels.
Canvas paintDunes();

/// Snow that falls on a cabin, as 24 frames of 480 by 300 pixels that repeat without a seam.
std::vector<Canvas> paintWinter();

} // namespace vireonix::painting
