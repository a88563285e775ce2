// vireonix-host: a small host application that opens the plug-in's settings window.
#import <AppKit/AppKit.h>

#import "HostApplication.h"
#import "Theme/HostTheme.h"
#import "session.h"

#include <csignal>
#include <cstdio>
#include <filesystem>
#include <system_error>

namespace fs = std::filesystem;
using namespace vireonix::host;

namespace {

enum ExitStatus { Applied = 0, Reverted = 1, WrongUsage = 2, NotOpened = 3 };

int complain(const std::string &line, ExitStatus status) {
  std::fprintf(stderr, "vireonix-host: %s\n", line.c_str());
  return status;
}

// The folder itself, absolute; empty when there is no such folder.
std::string existingFolder(const std::string &path) {
  std::error_code error;
  if (!fs::is_directory(path, error))
    return {};
  const fs::path absolute = fs::absolute(path, error).lexically_normal();
  // "folder/" ends in an empty name, which bundles would take for their own.
  return absolute.has_filename() ? absolute : absolute.parent_path();
}

std::string bundleBeside(const char *program) {
  std::error_code error;
  const fs::path self = fs::canonical("/proc/self/exe", error);
  return (error ? fs::absolute(program) : self).parent_path() / "vireonix.bundle";
}

// False when there is no display to open a window on.
bool startApplication(Theme theme) {
  @try {
    InstallHostTheme(theme == Theme::Dark ? HostThemeDark : HostThemeLight);
    [HostApplication sharedApplication];
    [NSApp finishLaunching];
    // GNUstep's handlers ask the application to end itself, which a modal session does not let it.
    std::signal(SIGTERM, SIG_DFL);
    std::signal(SIGINT, SIG_DFL);
    return true;
  } @catch (NSException *) {
    return false;
  }
}

int report(const Outcome &outcome) {
  std::printf("closeMode %d\nisCloseBundle %s\n", outcome.closeMode,
              outcome.isCloseBundle ? "YES" : "NO");
  if (outcome.stopCode)
    std::printf("stopCode %d\n", *outcome.stopCode);
  std::fflush(stdout);
  return outcome.closeMode == 1 ? Applied : Reverted;
}

int run(Options options, const char *program) {
  if (options.bundle.empty())
    options.bundle = bundleBeside(program);
  const std::string bundle = existingFolder(options.bundle);
  if (bundle.empty())
    return complain("no such bundle: " + options.bundle, NotOpened);
  if (!options.workspace.empty()) {
    const std::string workspace = existingFolder(options.workspace);
    if (workspace.empty())
      return complain("no such folder: " + options.workspace, NotOpened);
    options.workspace = workspace;
  }
  if (!startApplication(options.theme))
    return complain("no display to open a window on", NotOpened);
  const SessionResult result = runSession(options, bundle);
  if (const auto *problem = std::get_if<std::string>(&result))
    return complain(*problem, NotOpened);
  return report(std::get<Outcome>(result));
}

} // namespace

// Only a lack of memory throws here, and ends the program.
// NOLINTNEXTLINE(bugprone-exception-escape)
int main(int argc, char **argv) {
  @autoreleasepool {
    const auto parsed = parseOptions({argv + 1, argv + argc});
    if (const auto *error = std::get_if<UsageError>(&parsed))
      return complain(error->message, WrongUsage);
    const auto &options = std::get<Options>(parsed);
    if (options.help) {
      std::fputs(helpText().data(), stdout);
      return Applied;
    }
    return run(options, argv[0]);
  }
}
