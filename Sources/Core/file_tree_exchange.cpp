#include "file_tree_exchange.h"
#include "file_system_calls.h"
#include "file_tree.h"
#include "temporary_entry.h"

#include <cerrno>
#include <cstdio>

namespace vireonix::core {

namespace {

int move(const std::string& from, const std::string& to) {
  return std::rename(from.c_str(), to.c_str()) == 0 ? 0 : errno;
}

} // namespace

std::string siblingPrefix(std::string_view path, std::string_view kind) {
  const size_t name = path.rfind('/') + 1; // 0 when there is no slash
  return std::string(path.substr(0, name)) + "." + std::string(path.substr(name)) + ".vireonix-" +
         std::string(kind) + "-";
}

Status exchangeByRenames(const std::string& first, const std::string& second) {
  const std::string aside = temporaryName(siblingPrefix(first, kAsideKind));
  if (const int error = move(first, aside))
    return Status::failure(error, first);
  if (const int error = move(second, first)) {
    move(aside, first);
    return Status::failure(error, second);
  }
  return Status::of(move(aside, second), aside);
}

Status exchangeTrees(std::string_view first, std::string_view second) {
  const std::string one(first);
  const std::string other(second);
  const int error = calls::exchange(one.c_str(), other.c_str());
  if (error == 0)
    return Status::success();
  // On some systems two of the names are one number. NOLINTNEXTLINE(misc-redundant-expression)
  if (error == EINVAL || error == ENOSYS || error == EOPNOTSUPP || error == ENOTSUP)
    return exchangeByRenames(one, other);
  return Status::failure(error, one);
}

} // namespace vireonix::core
