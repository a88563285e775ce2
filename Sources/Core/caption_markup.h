// The markup in which a caption carries its size and colour:
// <b><font size="24" color="#FF0000">Welcome</font></b>
// The values stand in it unescaped, so a caption may itself hold markup; one with a stray "&" or
// "<" is written and cannot be read back. Any thread.
#pragma once

#include "core_border.h"

#include <optional>
#include <string>
#include <string_view>

namespace vireonix::core::slider {

/// What stands in the markup for a value that there is none of.
inline constexpr std::string_view kNoValue = "(null)";

/// The values of a caption; nothing for each that the markup lacks.
struct Caption {
  std::optional<std::string> text;
  std::optional<std::string> size;
  std::optional<std::string> color;

  bool operator==(const Caption&) const = default;
};

/// The caption in `markup`: string value and attributes of the first node in its one element, white
/// space skipped. Nothing when the markup is no well-formed element.
std::optional<Caption> parseCaption(std::string_view markup);

/// The markup of a caption; a missing value is written as "(null)".
std::string captionMarkup(std::optional<std::string_view> text,
                          std::optional<std::string_view> size,
                          std::optional<std::string_view> color);

} // namespace vireonix::core::slider
