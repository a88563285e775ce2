#include "Core/number_text.h"

#include "Core/white_space.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

namespace vireonix::core {
namespace {

template <typename Character> constexpr bool isDigit(Character c) {
  return c >= '0' && c <= '9';
}

std::u16string_view withoutLast(std::u16string_view text) {
  const bool isLowHalf = (text.back() & 0xFC00) == 0xDC00;
  text.remove_suffix(1);
  if (isLowHalf && !text.empty() && (text.back() & 0xFC00) == 0xD800)
    text.remove_suffix(1);
  return text;
}

// Takes the sign at the start of the text away and says whether it is a minus.
bool takeSign(std::string_view& text) {
  const bool negative = text.starts_with('-');
  if (negative || text.starts_with('+'))
    text.remove_prefix(1);
  return negative;
}

size_t countDigits(std::string_view text) {
  return static_cast<size_t>(std::ranges::find_if_not(text, isDigit<char>) - text.begin());
}

// The parts of an unsigned decimal number at the start of a text.
struct Decimal {
  std::string_view whole;
  std::string_view fraction;
  std::string_view all;
  int32_t exponent = 0;
};

// The exponent at the start of `text`, which is empty or goes on behind the digits, and its length.
size_t exponentLength(std::string_view text, int32_t& exponent) {
  if (!text.starts_with('e') && !text.starts_with('E'))
    return 0;
  std::string_view rest = text.substr(1);
  takeSign(rest);
  const size_t digits = countDigits(rest);
  if (digits == 0)
    return 0;
  exponent = intValue(text.substr(1));
  return text.size() - rest.size() + digits;
}

Decimal leadingDecimal(std::string_view text) {
  Decimal decimal;
  decimal.whole = text.substr(0, countDigits(text));
  size_t length = decimal.whole.size();
  if (text.substr(length).starts_with('.')) {
    const std::string_view rest = text.substr(length + 1);
    decimal.fraction = rest.substr(0, countDigits(rest));
    length += 1 + decimal.fraction.size();
  }
  if (decimal.whole.empty() && decimal.fraction.empty())
    return {};
  length += exponentLength(text.substr(length), decimal.exponent);
  decimal.all = text.substr(0, length);
  return decimal;
}

// Whether a number that is not representable is too large rather than too small.
bool isLarge(const Decimal& decimal) {
  const size_t leading = decimal.whole.find_first_not_of('0');
  if (leading != std::string_view::npos)
    return static_cast<int64_t>(decimal.whole.size() - leading) + decimal.exponent > 0;
  const size_t zeros = decimal.fraction.find_first_not_of('0');
  return zeros != std::string_view::npos && decimal.exponent > static_cast<int64_t>(zeros);
}

} // namespace

std::u16string_view filterFloatText(std::u16string_view text) {
  if (text.empty() || isDigit(text.back()))
    return text;
  const bool isFirstPoint = text.back() == u'.' && text.find(u'.') == text.size() - 1;
  return isFirstPoint ? text : withoutLast(text);
}

std::u16string_view filterIntegerText(std::u16string_view text) {
  return text.empty() || isDigit(text.back()) ? text : withoutLast(text);
}

double doubleValue(std::string_view text) {
  text = skipWhiteSpace(text);
  const bool negative = takeSign(text);
  const Decimal decimal = leadingDecimal(text);
  double value = 0;
  const auto result =
      std::from_chars(decimal.all.data(), decimal.all.data() + decimal.all.size(), value);
  if (result.ec == std::errc::result_out_of_range)
    value = isLarge(decimal) ? std::numeric_limits<double>::max() : 0;
  return negative ? -value : value;
}

float floatValue(std::string_view text) {
  constexpr double kLargest = std::numeric_limits<float>::max();
  return static_cast<float>(std::clamp(doubleValue(text), -kLargest, kLargest));
}

int32_t intValue(std::string_view text) {
  using Limits = std::numeric_limits<int32_t>;
  text = skipWhiteSpace(text);
  const bool negative = takeSign(text);
  int64_t value = 0;
  for (const char digit : text.substr(0, countDigits(text)))
    value = std::min<int64_t>(value * 10 + (digit - '0'), int64_t{1} << 31);
  return static_cast<int32_t>(
      std::clamp<int64_t>(negative ? -value : value, Limits::min(), Limits::max()));
}

std::string oneDecimalText(double value) {
  // The largest double has 309 digits before its point.
  std::array<char, 320> buffer{};
  const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                    std::chars_format::fixed, 1);
  return {buffer.data(), result.ptr};
}

} // namespace vireonix::core
