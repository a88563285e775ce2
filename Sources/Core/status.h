// The outcome of an operation on the file system.
#pragma once

#include "core_border.h"

#include <string>
#include <string_view>
#include <utility>

namespace vireonix::core {

/// Success, or the first failure: its errno value and the path at which it happened.
struct [[nodiscard]] Status {
  int error = 0;
  std::string path;

  [[nodiscard]] bool ok() const { return error == 0; }

  static Status success() { return {}; }
  static Status failure(int errnoValue, std::string where) {
    return {errnoValue, std::move(where)};
  }
  /// A success for 0, else that failure.
  static Status of(int errnoValue, std::string_view where) {
    return errnoValue == 0 ? success() : failure(errnoValue, std::string(where));
  }
};

} // namespace vireonix::core
