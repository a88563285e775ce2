// A settings session on a workspace of its own, as a host runs one.
#pragma once

#import "Class/PluginSettingsDelegate.h"
#import "support/temporary_folder.h"

#include <string>

namespace vireonix::test {

/// The controller on the real bundle and a fresh workspace with a document of two slides, a
/// settings file, a hidden file, a link and an executable. The controller is released at the end;
/// the folder goes with it.
class SettingsSession {
public:
  explicit SettingsSession(bool modal = false);
  ~SettingsSession();
  SettingsSession(const SettingsSession &) = delete;
  SettingsSession &operator=(const SettingsSession &) = delete;

  [[nodiscard]] PluginSettingsDelegate *controller() const { return controller_; }
  /// Loads the window at the first call.
  [[nodiscard]] NSWindow *window() const { return [controller_ window]; }
  /// The value of a field by its name.
  [[nodiscard]] id field(NSString *name) const { return [controller_ valueForKey:name]; }

  [[nodiscard]] std::string workspace() const { return folder_.at("workspace"); }
  [[nodiscard]] std::string inWorkspace(const std::string &relative) const;
  [[nodiscard]] std::string backupFolder() const;
  [[nodiscard]] const TemporaryFolder &folder() const { return folder_; }

  /// Everything about the workspace that a revert must bring back: paths, kinds, modes, times, link
  /// targets and bytes.
  [[nodiscard]] std::string fingerprint() const;

  /// Lets go of the controller before the end.
  void releaseController();

private:
  TemporaryFolder folder_;
  PluginSettingsDelegate *controller_ = nil;
};

} // namespace vireonix::test
