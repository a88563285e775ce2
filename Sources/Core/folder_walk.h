// Walking a tree through open folders: the ground under the operations of file_tree.h.
#pragma once

#include "core_border.h"
#include "descriptor.h"

#include <sys/stat.h>

#include <string>
#include <string_view>
#include <vector>

namespace vireonix::core {

/// Opens a folder for reading, a link to one included; -1 with errno set on failure.
Descriptor openFolder(std::string_view path);

/// Opens a folder that stands in an open folder; fails for a link.
Descriptor openFolderIn(int folder, const std::string& name);

/// Where an entry stands: its folder, opened, and its name there.
struct EntryPlace {
  Descriptor folder;
  std::string name;
  /// Why there is no such place; 0 when there is.
  int error = 0;
};

/// Takes a path apart; slashes at its end are ignored. EINVAL for what names no entry of a folder
/// ("/", ".", "..").
EntryPlace placeOf(std::string_view path);

/// The names in an open folder, in byte order and without "." and "..". Sets `error` to 0 or errno.
std::vector<std::string> namesIn(int folder, int& error);

/// Which folder or file this is, whatever its name.
struct Identity {
  dev_t device = 0;
  ino_t inode = 0;
  bool operator==(const Identity&) const = default;
};

inline Identity identityOf(const struct stat& info) {
  return {info.st_dev, info.st_ino};
}

/// A position in a tree of folders that never leads through a symbolic link and keeps few folders
/// open, however deep it goes.
class FolderCursor {
public:
  explicit FolderCursor(Descriptor root) : current_(std::move(root)) {}

  [[nodiscard]] int fd() const { return current_.get(); }

  /// The folder that holds the current one, which is not the root.
  [[nodiscard]] int parent() const { return parents_.back().folder.get(); }

  /// Goes into a folder of the current one. 0 or errno, and then stays.
  int enter(const std::string& name);

  /// Goes back. 0, or errno when the tree was rearranged meanwhile: the cursor is then of no use.
  int leave();

private:
  struct Parent {
    Descriptor folder;
    Identity identity;
  };

  Descriptor current_;
  std::vector<Parent> parents_;
};

/// An entry met on a walk; valid during the call.
struct WalkEntry {
  int folder;              ///< The folder that holds it.
  const std::string& name; ///< Its name there.
  const std::string& path; ///< Relative to the root of the walk.
  const struct stat& info; ///< About the entry itself, links not followed.
};

class TreeVisitor {
public:
  virtual ~TreeVisitor() = default;

  /// Called for each entry, a folder before its contents. Answers whether to enter the folder.
  virtual bool visit(const WalkEntry& entry) = 0;

  /// Called for each folder entered, after its contents; `opened` is the folder, or -1 when it
  /// could not be opened. False ends the walk.
  virtual bool leave(const WalkEntry& entry, int opened) = 0;

  /// Called when an entry or the contents of a folder could not be read. The root's path is empty.
  virtual void fail(int error, const std::string& path) = 0;
};

/// Walks everything below `root`, siblings in byte order.
void walkTree(Descriptor root, TreeVisitor& visitor);

} // namespace vireonix::core
