// Folder trees and files on disk: list, copy, complete, remove, exchange, and replace durably.
//
// Paths are bytes, not text: a name that is not UTF-8 is kept as it is. Every tree is walked folder
// by folder through open descriptors, so that neither depth nor path length is limited and a tree
// that changes meanwhile cannot lead outside: below the given root no symbolic link is ever
// followed, for reading, writing or changing modes. The root that is read from, or copied into, may
// itself be a link to a folder. Nothing here waits on a FIFO. Any thread; calls on the same tree
// are the caller's to order. On failure the rest is still done, and the first failure is answered.
#pragma once

#include "core_border.h"
#include "status.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vireonix::core {

/// 0 when something is there, links followed, and ENOENT when nothing is; a dangling link is
/// nothing. Any other error when it cannot be told: such a place must not be taken for empty.
[[nodiscard]] int errorAt(std::string_view path);

/// Whether something is seen there: errorAt is 0.
[[nodiscard]] bool exists(std::string_view path);

/// Whether a folder, or a link to one, is there.
[[nodiscard]] bool isFolder(std::string_view path);

/// The paths, relative to `root`, of everything below it: a folder before its contents, siblings in
/// byte order, hidden entries included, links listed and not entered. Empty when there is no
/// folder. Folders that cannot be read are listed as if they were empty.
[[nodiscard]] std::vector<std::string> listTree(std::string_view root);

/// All bytes of a regular file, links followed; nothing when it is missing, unreadable or no
/// regular file.
[[nodiscard]] std::optional<std::string> readFile(std::string_view path);

/// Which file it is, and in which state: differs after any change, however the file's times are
/// set, unless two changes fall in one tick of the file system's clock (see `isSettled`) and leave
/// the size as it was.
struct FileState {
  std::uint64_t device = 0;
  std::uint64_t number = 0;
  std::int64_t size = 0;
  std::int64_t modifiedSeconds = 0;
  std::int64_t modifiedNanoseconds = 0;
  std::int64_t changedSeconds = 0;
  std::int64_t changedNanoseconds = 0;

  bool operator==(const FileState&) const = default;
};

/// The state of what is there, links followed; nothing when nothing is.
[[nodiscard]] std::optional<FileState> fileState(std::string_view path);

/// Whether any change from now on gives the file another state: its last change lies further back
/// than the coarsest clock of file systems ticks, 2 seconds.
[[nodiscard]] bool isSettled(const FileState& state);

/// Makes the folder and those that lead to it. A folder that is there already is a success.
Status createFolders(std::string_view path);

/// Puts what belongs there into the folder whose path it is given.
using FolderFiller = std::function<void(const std::string& folder)>;

/// Makes a folder, with those that lead to it, that appears at `path` with all that `fill` puts in:
/// a process killed meanwhile leaves nothing at `path`, and what it left beside is removed by the
/// next call. Where no folder can be made beside, or when something is at `path` already, `fill`
/// works at `path` itself.
Status makeFolderWhole(std::string_view path, const FolderFiller& fill);

struct MergeOptions {
  /// Without it, entries of the source's top level whose name begins with "." stay behind with all
  /// they hold. Hidden entries deeper down are always copied.
  bool hidden = true;
  /// Copy links that lead nowhere, too.
  bool danglingLinks = false;
};

/// Adds to the existing folder `destination` what it lacks of `source`; what is there stays, even
/// where it is of another kind. Meant for installing: files and folders become readable and
/// writable by their owner whatever the source says, and keep executable bits; files keep their
/// modification time and appear whole or not at all. A link is copied as a link. A folder that the
/// destination has as a link to a folder counts as complete: nothing is written through it.
/// Only files, folders and links are copied. A destination inside the source is not copied into
/// itself.
Status mergeTree(std::string_view source, std::string_view destination,
                 const MergeOptions& options);

/// Copies one file (the one a link leads to) under the rules of mergeTree. Fails with EEXIST when
/// anything is at `destination`.
Status copyFile(std::string_view source, std::string_view destination);

/// What could not be copied: relative paths, each standing for everything below it.
using Omissions = std::vector<std::string>;

/// Copies everything below `source` into `destination`, which is made when missing, and gives
/// `destination` the attributes of `source` itself. Exact: modes, modification times to the
/// nanosecond, extended attributes, owners (as far as the user may set them), links as links,
/// holes, hard links within the tree, empty folders, FIFOs and sockets; devices where the user may
/// make them. File systems that can share blocks do. Existing entries are not overwritten. Each
/// entry that could not be copied is added to `omissions`. Not synced to disk: the machine failing
/// may lose the copy, the process being killed cannot.
Status copyTree(std::string_view source, std::string_view destination,
                Omissions* omissions = nullptr);

/// Makes `destination` equal to `source` in place, each file in one step: equal entries are not
/// touched, others are replaced, missing ones added, and in the end additional ones removed.
/// Entries named in `except`, and what lies below them, stay as they are.
Status equaliseTree(std::string_view source, std::string_view destination,
                    const Omissions& except = {});

/// Removes the file, link or folder with everything in it, folders without permissions included as
/// long as the user owns them. A link is removed, not what it leads to. Nothing there is a success.
Status removeTree(std::string_view path);

/// Exchanges what stands at the two paths, both of which must be there and on one file system, in
/// one step where the file system can, else by three renames.
Status exchangeTrees(std::string_view first, std::string_view second);

/// What a finished write survives: the machine failing, or only this process being killed.
enum class Durability { Machine, Process };

/// Replaces the file's content in one step: temporary file in the same folder, sync, rename, sync
/// of the folder (no sync for Durability::Process). The mode of an existing file is kept. Where a
/// link stands, the link itself is replaced by a file, never what it leads to. On failure the old
/// file is whole, and no temporary file stays. Temporary files that killed processes left in the
/// folder are removed. Where the new file stands, `made` becomes its state, which differs from the
/// state after any write by another program, even in the same tick of the clock: the modification
/// time is set back a nanosecond for that. Where it cannot be set, `made` stays as it is.
Status replaceFile(std::string_view path, std::string_view bytes,
                   Durability durability = Durability::Machine,
                   std::optional<FileState>* made = nullptr);

/// Like replaceFile, surviving the machine failing, with `bytes` added behind the present content,
/// which is not read into memory. A link to a regular file is replaced by a file with that content
/// and `bytes`.
Status appendToFile(std::string_view path, std::string_view bytes);

} // namespace vireonix::core
