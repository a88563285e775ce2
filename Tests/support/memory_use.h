// What this process and the processes below it hold in memory.
#pragma once

#include <string_view>

namespace vireonix::test {

/// KiB that this process has allocated and not freed, by the C library's books.
double heapInUse();

/// KiB that only the processes below this one whose command name begins with `name` hold, as the
/// kernel counts them; the name is as long as the kernel keeps it, 15 characters.
double privateMemoryOfChildren(std::string_view name);

/// KiB that this process and all below it hold; what several processes share counts once.
double memoryOfTree();

} // namespace vireonix::test
