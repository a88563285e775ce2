#include "player/watched_port.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace vireonix::test {
namespace {

sockaddr_in loopback(int port) {
  sockaddr_in address = {};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  address.sin_port = htons(static_cast<in_port_t>(port));
  return address;
}

} // namespace

WatchedPort::WatchedPort()
    : socket_(socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0)) {
  sockaddr_in address = loopback(0);
  auto* plain = reinterpret_cast<sockaddr*>(&address);
  socklen_t length = sizeof address;
  const bool listens = bind(socket_, plain, length) == 0 && listen(socket_, 16) == 0 &&
                       getsockname(socket_, plain, &length) == 0;
  EXPECT_TRUE(listens);
  number_ = ntohs(address.sin_port);
}

WatchedPort::~WatchedPort() {
  close(socket_);
}

int WatchedPort::connections() {
  for (int peer = accept(socket_, nullptr, nullptr); peer >= 0;
       peer = accept(socket_, nullptr, nullptr)) {
    ++connections_;
    close(peer);
  }
  return connections_;
}

void WatchedPort::connectOnce() const {
  const int client = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  const sockaddr_in address = loopback(number_);
  EXPECT_EQ(connect(client, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  close(client);
}

} // namespace vireonix::test
