// nib_localizer: writes one language's copy of a XIB.
#include "nib_localizer/localize.h"

#include <fstream>
#include <iostream>
#include <span>
#include <string_view>
#include <vector>

namespace {

using vireonix::nibs::Failure;
using vireonix::nibs::Job;
using vireonix::nibs::Platform;

constexpr std::string_view kUsage =
    "usage: nib_localizer (--strings TABLE | --pseudo) --platform (macos | gnustep)\n"
    "                     [--untranslatable TEXT]... INPUT.xib OUTPUT\n";

struct Arguments {
  Job job;
  std::filesystem::path output;
};

std::optional<Platform> platformNamed(std::string_view name) {
  if (name == "macos")
    return Platform::MacOS;
  if (name == "gnustep")
    return Platform::Gnustep;
  return std::nullopt;
}

std::optional<Arguments> parse(std::span<char*> words) {
  Arguments arguments;
  std::vector<std::string_view> files;
  std::optional<Platform> platform;
  bool pseudo = false;
  for (std::size_t i = 1; i < words.size(); ++i) {
    const std::string_view word = words[i];
    const bool hasValue = i + 1 < words.size();
    if (word == "--pseudo")
      pseudo = true;
    else if (word == "--strings" && hasValue)
      arguments.job.strings = words[++i];
    else if (word == "--platform" && hasValue)
      platform = platformNamed(words[++i]);
    else if (word == "--untranslatable" && hasValue)
      arguments.job.untranslatable.insert(words[++i]);
    else if (!word.starts_with("--"))
      files.push_back(word);
    else
      return std::nullopt;
  }
  if (files.size() != 2 || !platform || pseudo == arguments.job.strings.has_value())
    return std::nullopt;
  arguments.job.platform = *platform;
  arguments.job.xib = files[0];
  arguments.output = files[1];
  return arguments;
}

} // namespace

int main(int argc, char** argv) {
  const auto arguments = parse({argv, static_cast<std::size_t>(argc)});
  if (!arguments) {
    std::cerr << kUsage;
    return 2;
  }
  const auto result = vireonix::nibs::localize(arguments->job);
  if (const auto* failure = std::get_if<Failure>(&result)) {
    std::cerr << failure->message << '\n';
    return 1;
  }
  std::ofstream out(arguments->output, std::ios::binary);
  out << std::get<std::string>(result);
  out.close();
  if (!out) {
    std::cerr << arguments->output.string() << ": cannot be written\n";
    return 1;
  }
  return 0;
}
