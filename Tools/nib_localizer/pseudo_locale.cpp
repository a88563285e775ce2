#include "nib_localizer/pseudo_locale.h"

#include <array>
#include <cmath>
#include <string_view>
#include <utility>

namespace vireonix::nibs {
namespace {

constexpr double kGrowth = 0.4;
constexpr std::string_view kFiller = "·lorem ipsum dolor sit amet consectetur adipisci elit sed";

constexpr std::array<std::pair<char, std::string_view>, 10> kAccents = {{
    {'a', "á"},
    {'e', "é"},
    {'i', "í"},
    {'o', "ö"},
    {'u', "ü"},
    {'A', "Å"},
    {'E', "É"},
    {'I', "Î"},
    {'O', "Ø"},
    {'U', "Û"},
}};

std::string accented(char c) {
  for (const auto& [plain, accent] : kAccents) {
    if (plain == c)
      return std::string(accent);
  }
  return std::string(1, c);
}

} // namespace

std::string pseudoTranslation(const std::string& text) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool placeholder = i > 0 && text[i - 1] == '%';
    result += placeholder ? std::string(1, text[i]) : accented(text[i]);
  }
  const auto extra =
      static_cast<std::size_t>(std::ceil(static_cast<double>(text.size()) * kGrowth));
  // The filler begins with a character of two bytes.
  result += kFiller.substr(0, extra + 1);
  return result;
}

} // namespace vireonix::nibs
