// A made-up language that shows where a layout has no room and which texts escape translation.
#pragma once

#include <string>

namespace vireonix::nibs {

/// The text with accents on its vowels, 40 percent longer. What stands after a "%" stays as it is.
std::string pseudoTranslation(const std::string& text);

} // namespace vireonix::nibs
