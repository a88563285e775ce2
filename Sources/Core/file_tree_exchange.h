// What stands beside a folder while it is being exchanged for another.
#pragma once

#include "core_border.h"
#include "status.h"

#include <string>
#include <string_view>

namespace vireonix::core {

/// A folder put aside between two renames.
inline constexpr std::string_view kAsideKind = "aside";

/// The beginning of the paths of temporary siblings of `path`: hidden, in the same folder.
std::string siblingPrefix(std::string_view path, std::string_view kind);

/// Exchanges two entries on file systems that cannot do it in one step. When it is interrupted,
/// what stood at `first` is at a sibling of the kind kAsideKind.
Status exchangeByRenames(const std::string& first, const std::string& second);

} // namespace vireonix::core
