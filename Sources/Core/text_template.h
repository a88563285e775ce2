// Text with placeholders of the form "${key}". Any thread.
#pragma once

#include "core_border.h"

#include <functional>
#include <string>
#include <string_view>

namespace vireonix::core {

/// Answers the text that takes the place of a placeholder; empty text leaves nothing behind.
using PlaceholderValue = std::function<std::u16string(std::u16string_view key)>;

/// The text with the value of each placeholder in its place, in 16-bit characters. A key reaches
/// from "${" to the next "}", or to the end of the text when there is none; placeholders do not
/// nest, there is no escape, values are not searched for placeholders, and an empty key stands for
/// nothing.
[[nodiscard]] std::u16string fillTemplate(std::u16string_view text,
                                          const PlaceholderValue& valueOf);

} // namespace vireonix::core
