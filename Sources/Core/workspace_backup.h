// The copy of a workspace from which a settings session is reverted.
//
// The backup folder is one per user, so a backup says whose it is: a mark beside the folder (its
// path + "-owner") names the session that made it. A session never uses or deletes the backup of
// another session. Sessions take turns: an operation waits while another session is at work on the
// backup, and answers EBUSY, with nothing done, when that takes half a minute. One object is one
// session; use it from one thread at a time, and write to the workspace from nowhere else
// meanwhile. What is answered may be ignored: whatever fails, the workspace keeps either what was
// edited or what was backed up.
#pragma once

#include "core_border.h"
#include "file_tree.h"
#include "status.h"

#include <optional>
#include <string>
#include <string_view>

namespace vireonix::core {

class WorkspaceBackup {
public:
  WorkspaceBackup();

  /// Opens the session: whatever is at `backup` is deleted, another session's backup too, and an
  /// empty folder is made there.
  Status prepare(std::string_view backup);

  /// Copies the workspace into the backup folder; a missing workspace gives an empty backup. Does
  /// nothing when nothing is at `backup`.
  Status take(std::string_view workspace, std::string_view backup);

  /// Makes the workspace what it was when the backup was taken: content, modes, modification times
  /// and links, those of the workspace folder itself included. Then removes the backup; when that
  /// failed, the backup stays until the next session begins.
  ///
  /// Nothing changes when nothing is at `backup`, when the mark says that it is another session's
  /// or another workspace's, or when `take` could not begin. Otherwise the restored tree is made
  /// beside the workspace and exchanged with it in one step, so that a process killed at any
  /// instant leaves the workspace whole, as edited or as restored. Where that is impossible (the
  /// parent folder cannot be written, the disk is full, the backup is incomplete) the workspace is
  /// made equal in place, file by file; entries that `take` could not copy stay as edited.
  ///
  /// A workspace that is a link to a folder stays one. One that vanished is made again, and a file
  /// or dangling link in its place gives way.
  Status restore(std::string_view workspace, std::string_view backup);

  /// Deletes the backup folder and its mark, unless they are another session's.
  Status remove(std::string_view backup);

private:
  enum class State { NotTaken, Taken, Failed };
  enum class Owner { ThisSession, Another, Unknown };

  // The caller has locked the folder that holds the backup.
  [[nodiscard]] Owner ownerOf(std::string_view backup) const;
  static Status statusFor(Owner owner, std::string_view backup);
  Status makeEmpty(std::string_view backup);
  Status discard(std::string_view backup);
  Status copyIn(std::string_view workspace, std::string_view backup);
  /// The folder that is to become what the backup holds; nothing when it is another workspace's.
  [[nodiscard]] std::optional<std::string> restoreTarget(std::string_view workspace) const;

  std::string session_;
  State state_ = State::NotTaken;
  std::string canonical_; // of the workspace backed up: where its folder is,
  std::string place_;     // and where its path's last entry is, which may be a link to it
  Omissions omissions_;
};

/// Puts in order what a killed process left beside the workspace: its unfinished or outdated trees
/// are deleted, a half installed one too, and a workspace caught between two renames is put back.
/// To be called before a session first looks at its workspace.
void clearLeftovers(std::string_view workspace);

} // namespace vireonix::core
