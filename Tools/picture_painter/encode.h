// Writes finished pictures as JPEG, PNG and GIF files.
#pragma once

#include "canvas.h"

#include <string>
#include <vector>

namespace vireonix::painting {

// Each replaces the file; false when it cannot be written.

/// `quality` from 1 to 100.
bool writeJpeg(const Canvas& picture, int quality, const std::string& path);

bool writePng(const Canvas& picture, const std::string& path);

/// Frames of equal size that repeat for ever, each shown for `hundredths` of a second; 255 colours
/// are chosen for all of them together, and only what changes is stored again.
bool writeGif(const std::vector<Canvas>& frames, int hundredths, const std::string& path);

} // namespace vireonix::painting
