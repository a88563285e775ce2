// An open file or folder, closed with its owner.
#pragma once

#include "core_border.h"

#include <unistd.h>

#include <cerrno>
#include <utility>

namespace vireonix::core {

/// What the call answers once no signal interrupts it: a number, -1 being a failure told by errno.
template <typename Call> auto uninterrupted(Call call) {
  for (;;)
    if (const auto result = call(); result != -1 || errno != EINTR)
      return result;
}

class Descriptor {
public:
  Descriptor() = default;
  /// Takes over what an open call answered, -1 included.
  explicit Descriptor(int number) : number_(number) {}
  ~Descriptor() { close(); }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }

  [[nodiscard]] int get() const { return number_; }
  [[nodiscard]] bool isOpen() const { return number_ >= 0; }
  void close() {
    if (isOpen())
      ::close(std::exchange(number_, -1));
  }

private:
  int number_ = -1;
};

} // namespace vireonix::core
