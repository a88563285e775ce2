// A port of this machine that counts who connects to it.
#pragma once

namespace vireonix::test {

class WatchedPort {
public:
  WatchedPort();
  ~WatchedPort();
  WatchedPort(const WatchedPort&) = delete;
  WatchedPort& operator=(const WatchedPort&) = delete;

  [[nodiscard]] int number() const { return number_; }
  /// How many connections there were since the start.
  [[nodiscard]] int connections();
  /// Connects to it, to see that it counts.
  void connectOnce() const;

private:
  int socket_ = -1;
  int number_ = 0;
  int connections_ = 0;
};

} // namespace vireonix::test
