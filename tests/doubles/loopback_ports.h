// Addresses of loopback at which tests let clients meet a peer, or none.
#pragma once

#include <netinet/in.h>

#include <array>
#include <string>

sockaddr_in loopbackAddress(int port);
// A socket at that port of loopback, which becomes the port's number where it was 0.
int boundToLoopback(int& port);

// An address that refuses connections.
class ClosedPort {
 public:
  ClosedPort();
  ClosedPort(const ClosedPort&) = delete;
  ClosedPort& operator=(const ClosedPort&) = delete;
  ~ClosedPort();
  int port() const { return port_; }
  std::string url() const { return "http://127.0.0.1:" + std::to_string(port_); }

 private:
  int port_ = 0;
  int socket_ = -1;
};

// An address where the making of a connection never ends.
class DeafPort {
 public:
  DeafPort();
  DeafPort(const DeafPort&) = delete;
  DeafPort& operator=(const DeafPort&) = delete;
  ~DeafPort();
  int port() const { return port_; }
  std::string url() const { return "http://127.0.0.1:" + std::to_string(port_); }

 private:
  int port_ = 0;
  int listener_ = -1;
  std::array<int, 4> fillers_{};
};
