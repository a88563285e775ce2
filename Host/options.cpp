#include "options.h"

#include <array>
#include <optional>

namespace vireonix::host {
namespace {

constexpr std::string_view kHelp =
    R"(usage: vireonix-host [-workspace FOLDER] [-language CODE] [-bundle PATH]
                     [-modal YES|NO] [-theme light|dark] [-help]

Opens the settings window of the vireonix plug-in and tells how the session ended.

  -workspace FOLDER   the folder that holds the slider (default: the user's own)
  -language CODE      the language of the window, such as en, de or ja (default: en)
  -bundle PATH        the plug-in (default: vireonix.bundle beside this program)
  -modal YES|NO       run the window as a modal session (default: YES)
  -theme light|dark   the look of the window where the host draws it (default: light)
  -help               print this text

Exit status: 0 the changes were applied, 1 they were reverted, 2 wrong usage,
3 the window could not be opened.
)";

using Store = bool (*)(Options&, std::string_view);

bool storeWorkspace(Options& options, std::string_view value) {
  options.workspace = value;
  return !value.empty();
}

bool storeLanguage(Options& options, std::string_view value) {
  options.language = value;
  return !value.empty() && value.find('/') == std::string_view::npos;
}

bool storeBundle(Options& options, std::string_view value) {
  options.bundle = value;
  return !value.empty();
}

bool storeModal(Options& options, std::string_view value) {
  options.modal = value == "YES";
  return value == "YES" || value == "NO";
}

bool storeTheme(Options& options, std::string_view value) {
  options.theme = value == "dark" ? Theme::Dark : Theme::Light;
  return value == "light" || value == "dark";
}

struct Option {
  std::string_view name;
  std::string_view expected;
  Store store;
};

constexpr std::array<Option, 5> kOptions = {{
    {"-workspace", "a folder", storeWorkspace},
    {"-language", "a language code", storeLanguage},
    {"-bundle", "the path of a bundle", storeBundle},
    {"-modal", "YES or NO", storeModal},
    {"-theme", "light or dark", storeTheme},
}};

const Option* optionNamed(std::string_view name) {
  for (const Option& option : kOptions) {
    if (option.name == name)
      return &option;
  }
  return nullptr;
}

UsageError error(std::string_view what, std::string_view detail) {
  return {std::string(what) + std::string(detail) + " (-help lists the options)"};
}

} // namespace

std::string_view helpText() {
  return kHelp;
}

std::variant<Options, UsageError> parseOptions(const std::vector<std::string_view>& arguments) {
  Options options;
  for (size_t i = 0; i < arguments.size(); ++i) {
    const std::string_view name = arguments[i];
    if (name == "-help" || name == "--help" || name == "-h") {
      options.help = true;
      return options;
    }
    const Option* option = optionNamed(name);
    if (option == nullptr)
      return error("unknown option: ", name);
    if (i + 1 == arguments.size() || !option->store(options, arguments[++i]))
      return error(std::string(name) + " needs ", option->expected);
  }
  return options;
}

} // namespace vireonix::host
