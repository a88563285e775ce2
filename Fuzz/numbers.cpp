// Numbers and colours as text, beside what the C library says of the same text.
#include "Core/colour_text.h"
#include "Core/number_text.h"
#include "Core/white_space.h"
#include "input.h"
#include "require.h"

#include <array>
#include <cfloat>
#include <cmath>
#include <cstdio>
#include <cstdlib>

using namespace vireonix::core;
using namespace vireonix::fuzz;

namespace {

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

// The part of the text that the C library is to read: nothing for what is no decimal number.
std::string decimalStart(std::string_view text) {
  text = skipWhiteSpace(text);
  std::size_t at = text.starts_with('+') || text.starts_with('-') ? 1 : 0;
  if (at < text.size() && text[at] == '.')
    ++at;
  if (at >= text.size() || !isDigit(text[at]))
    return {};
  return std::string(text.substr(0, text.find_first_not_of("0123456789.eE+-")));
}

double expectedDouble(const std::string& number) {
  const double value = std::strtod(number.c_str(), nullptr);
  return std::isinf(value) ? std::copysign(DBL_MAX, value) : value;
}

void checkReading(std::string_view text) {
  const std::string number = decimalStart(text);
  require(doubleValue(text) == expectedDouble(number), "a number reads as the C library reads it");
  require(std::isfinite(floatValue(text)), "a number is finite");
  const bool isWhole = number.find_first_of(".eE") == std::string::npos;
  if (isWhole && number.size() < 10)
    require(intValue(text) == std::atoi(number.c_str()),
            "a whole number reads as in the C library");
}

void checkWriting(double value) {
  if (!std::isfinite(value))
    return;
  std::array<char, 400> expected = {};
  std::snprintf(expected.data(), expected.size(), "%.1f", value);
  require(oneDecimalText(value) == expected.data(), "a number is written as \"%.1f\" writes it");
}

void checkColour(std::string_view text) {
  const Colour colour = colourOfText(text);
  for (const float part : {colour.red, colour.green, colour.blue})
    require(part >= 0 && part <= 1, "a colour's components are between 0 and 1");
  const std::string written = colourText(colour);
  require(written.size() == 8 && written.starts_with("0x"), "a colour is 0x and six digits");
  require(colourOfText(written) == colour, "a colour that was written reads as itself");
}

void checkFilters(const std::u16string& typed) {
  const auto number = filterFloatText(typed);
  const auto digits = filterIntegerText(typed);
  require(typed.starts_with(number) && typed.starts_with(digits), "a filter only shortens");
  require(typed.size() - number.size() <= 2 && typed.size() - digits.size() <= 2,
          "a filter takes one character, or a pair");
  require(number.size() >= digits.size(), "what stays in a whole number stays in a number");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text = textOf(data, size);
  checkReading(text);
  checkWriting(doubleValue(text));
  checkColour(text);
  checkFilters(wideTextOf(data, size));
  return 0;
}
