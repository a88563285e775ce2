// The element and attribute names of the slider document that only its reader and writer use.
#pragma once

#include "core_border.h"

#include <string_view>

namespace vireonix::core::slider {

inline constexpr std::string_view kRootElement = "main";
inline constexpr std::string_view kStylesElement = "define_animation_Style";
inline constexpr std::string_view kStyleNameAttribute = "Name";
inline constexpr std::string_view kContainerElement = "data";
inline constexpr std::string_view kSlideElement = "slide";
/// Both the text object and the caption in it.
inline constexpr std::string_view kTextElement = "text";

} // namespace vireonix::core::slider
