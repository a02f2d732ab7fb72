#include "loopback_ports.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

sockaddr_in loopbackAddress(int port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  return address;
}

int boundToLoopback(int& port) {
  const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  const int on = 1;
  ::setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
  sockaddr_in address = loopbackAddress(port);
  socklen_t size = sizeof address;
  auto* const generic = reinterpret_cast<sockaddr*>(&address);
  EXPECT_EQ(::bind(socket, generic, size), 0);
  EXPECT_EQ(::getsockname(socket, generic, &size), 0);
  port = ntohs(address.sin_port);
  return socket;
}

ClosedPort::ClosedPort() : socket_(boundToLoopback(port_)) {}

ClosedPort::~ClosedPort() { ::close(socket_); }

DeafPort::DeafPort() : listener_(boundToLoopback(port_)) {
  EXPECT_EQ(::listen(listener_, 0), 0);
  // The first fills the queue of the connections to accept, the others make sure that it is full.
  const sockaddr_in address = loopbackAddress(port_);
  int type = SOCK_STREAM;
  for (int& filler : fillers_) {
    filler = ::socket(AF_INET, type | SOCK_CLOEXEC, 0);
    ::connect(filler, reinterpret_cast<const sockaddr*>(&address), sizeof address);
    type = SOCK_STREAM | SOCK_NONBLOCK;
  }
}

DeafPort::~DeafPort() {
  for (const int filler : fillers_) ::close(filler);
  ::close(listener_);
}
