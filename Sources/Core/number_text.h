// Numbers as text: what a numeric text field may hold while the user types, and how the text of a
// field or of a settings file is read and written. Nothing here depends on the locale or on the
// platform. Any thread.
#pragma once

#include "core_border.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace vireonix::core {

/// The part of a text field's content that stays when its last 16-bit character has just been
/// typed: a digit stays, and so does a point when there is none before it. Half of a surrogate pair
/// is no text, so a pair goes as one. The result is a view into `text`.
[[nodiscard]] std::u16string_view filterFloatText(std::u16string_view text);

/// As filterFloatText, for digits alone.
[[nodiscard]] std::u16string_view filterIntegerText(std::u16string_view text);

/// The longest decimal number at the start of UTF-8 text, behind white space: sign, digits, "." as
/// the decimal point, exponent. 0 when there is none; "inf", "nan" and hexadecimal digits are none.
/// A number too large for the type reads as the largest finite one, one too small as 0.
[[nodiscard]] double doubleValue(std::string_view text);
[[nodiscard]] float floatValue(std::string_view text);

/// The longest whole number at the start of UTF-8 text, behind white space; 0 when there is none.
/// A number out of range reads as the nearest one in range.
[[nodiscard]] int32_t intValue(std::string_view text);

/// The number with one decimal place and "." as the decimal point, as "%.1f" writes it in the C
/// locale.
[[nodiscard]] std::string oneDecimalText(double value);

} // namespace vireonix::core
