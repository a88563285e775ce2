// The whole job of the tool: one XIB and one strings table in, the language's copy out.
#pragma once

#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <variant>

namespace vireonix::nibs {

enum class Platform { MacOS, Gnustep };

struct Job {
  std::filesystem::path xib;
  /// None for the pseudo-locale.
  std::optional<std::filesystem::path> strings;
  Platform platform = Platform::MacOS;
  /// Texts that are the same in every language and need no key.
  std::set<std::string> untranslatable;
};

struct Failure {
  /// One line to a problem, each with the file's name.
  std::string message;
};

/// The XML of the localised copy.
std::variant<std::string, Failure> localize(const Job& job);

} // namespace vireonix::nibs
