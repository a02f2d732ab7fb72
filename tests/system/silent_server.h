// A TCP server that takes connections, listens to what it is told and never says a word.
//
//   SilentServer server;
//   configure(… server.port() …);
//   const std::string request = server.readRequest();
//
// Thread-safety: thread-compatible. Failure shows in the test.
#pragma once

#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <string>

namespace systemtest {

class SilentServer {
 public:
  SilentServer() : socket_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    EXPECT_EQ(::bind(socket_, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    // The system takes connections that nobody accepts.
    EXPECT_EQ(::listen(socket_, 16), 0);
    socklen_t size = sizeof address;
    ::getsockname(socket_, reinterpret_cast<sockaddr*>(&address), &size);
    port_ = ntohs(address.sin_port);
  }
  SilentServer(const SilentServer&) = delete;
  SilentServer& operator=(const SilentServer&) = delete;
  ~SilentServer() {
    if (connection_ >= 0) ::close(connection_);
    ::close(socket_);
  }

  int port() const { return port_; }
  std::string url() const { return "http://127.0.0.1:" + std::to_string(port_); }

  // The head of the next connection's HTTP request. The connection stays open.
  std::string readRequest() {
    connection_ = ::accept4(socket_, nullptr, nullptr, SOCK_CLOEXEC);
    std::string head;
    char block[4096];
    while (head.find("\r\n\r\n") == std::string::npos) {
      const ssize_t count = ::recv(connection_, block, sizeof block, 0);
      if (count <= 0) break;
      head.append(block, static_cast<std::size_t>(count));
    }
    return head;
  }

 private:
  const int socket_;
  int port_ = 0;
  int connection_ = -1;
};

}  // namespace systemtest
