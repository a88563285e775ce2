// Well-formed UTF-8: The Unicode Standard, table 3-7. Any thread.
#pragma once

#include "core_border.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace vireonix::core {

/// U+FFFD, which stands for what could not be decoded, in UTF-8.
inline constexpr std::string_view kReplacementUtf8 = "\xEF\xBF\xBD";

/// Bytes in the well-formed sequence at the start of `text`; 0 when there is none.
[[nodiscard]] std::size_t utf8SequenceLength(std::string_view text);

[[nodiscard]] bool isWellFormedUtf8(std::string_view text);

/// The text with each byte that is part of no well-formed sequence replaced by U+FFFD.
[[nodiscard]] std::string wellFormedUtf8(std::string_view text);

} // namespace vireonix::core
