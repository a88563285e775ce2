// Paths as texts, and where they lead. Any thread.
#pragma once

#include "core_border.h"

#include <string>
#include <string_view>

namespace vireonix::core {

/// The path without slashes at its end; "/" stays.
[[nodiscard]] std::string_view withoutEndSlashes(std::string_view path);

/// The path of the folder that holds the entry; "." when the path names none, and the path itself
/// for "/". There are no slashes at the end of `path`.
[[nodiscard]] std::string_view folderOf(std::string_view path);

/// The path of an entry of a folder.
[[nodiscard]] std::string joined(std::string_view folder, std::string_view name);

/// Whether `inner` is `outer` or lies below it; both are canonical.
[[nodiscard]] bool isWithin(const std::string& inner, const std::string& outer);

/// Whether any entry is there; a link is one wherever it leads.
[[nodiscard]] bool isAnythingAt(const std::string& path);

/// The absolute path without links, also of what does not exist (yet). Empty when links lead in a
/// circle.
[[nodiscard]] std::string canonicalPath(std::string_view path);

/// The entry's own place: links in the path to it are resolved, the entry itself is not. Empty when
/// those lead in a circle.
[[nodiscard]] std::string canonicalPlace(std::string_view path);

} // namespace vireonix::core
