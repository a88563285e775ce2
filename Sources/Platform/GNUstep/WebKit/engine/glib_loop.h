// GLib's main loop as one file descriptor, so that another run loop can wait for it.
//
// Main thread only. Open while at least one page lives.
#pragma once

#include <functional>
#include <map>
#include <vector>

namespace vireonix::platform {

class GlibLoop {
public:
  static GlibLoop& shared();

  /// Opened once for every close().
  void open();
  void close();

  /// Readable when GLib has something to do, as of the last prepare(); -1 while closed.
  [[nodiscard]] int descriptor() const { return epoll_; }

  /// To be called before each wait. True: something is ready now, dispatch() instead of waiting.
  bool prepare();

  /// Handles what is ready, for about `milliseconds` at the most. May be called again from within.
  void dispatch(int milliseconds);

  /// Handles events until `done` or until `seconds` have passed; answers whether it was done.
  bool runUntil(const std::function<bool()>& done, double seconds);

  /// Runs `action` as soon as no event is being handled, at once if none is: what a call-back must
  /// not destroy under itself is destroyed here.
  void whenAtRest(std::function<void()> action);

private:
  GlibLoop() = default;
  void watch(const std::map<int, unsigned>& wanted);
  void setTimer(int milliseconds) const;
  void iterate(bool wait);
  void rest();

  int users_ = 0;
  int depth_ = 0;
  int epoll_ = -1;
  int timer_ = -1;
  std::map<int, unsigned> watched_;
  std::vector<std::function<void()>> waiting_;
};

} // namespace vireonix::platform
