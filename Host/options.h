// The command line of vireonix-host.
#pragma once

#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace vireonix::host {

enum class Theme { Light, Dark };

/// What the user asked for; an empty text stands for "not given".
struct Options {
  std::string workspace;
  std::string language = "en";
  std::string bundle;
  Theme theme = Theme::Light;
  bool modal = true;
  bool help = false;
};

/// One clear line for the user about what is wrong with the command line.
struct UsageError {
  std::string message;
};

/// Reads the arguments that follow the program's name.
std::variant<Options, UsageError> parseOptions(const std::vector<std::string_view>& arguments);

/// The text of -help.
std::string_view helpText();

} // namespace vireonix::host
