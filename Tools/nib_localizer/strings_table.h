// Reads strings tables: lines of `"key" = "translation";` with C comments, in UTF-8.
#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace vireonix::nibs {

/// Translations by key. A key stands for itself in English.
using StringsTable = std::map<std::string, std::string, std::less<>>;

/// Where and why a text is not a strings table; lines count from 1.
struct StringsError {
  int line = 1;
  std::string reason;
};

/// Reads a whole table. Understands `/* */` and `//` comments and the escapes \" \\ \n \r \t and \U
/// with four hexadecimal digits. A key that occurs twice is an error.
std::variant<StringsTable, StringsError> parseStrings(std::string_view text);

} // namespace vireonix::nibs
