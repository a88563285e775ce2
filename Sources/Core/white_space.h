// The white space that is skipped before a number. Any thread.
#pragma once

#include "core_border.h"

#include <string_view>

namespace vireonix::core {

/// UTF-8 text without the white space and line ends at its start, those beyond ASCII included.
[[nodiscard]] std::string_view skipWhiteSpace(std::string_view text);

} // namespace vireonix::core
