#include "prepared_fault_server.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <stdexcept>
#include <utility>

PreparedFaultServer::PreparedFaultServer(std::vector<std::string> replies)
    : replies_(std::move(replies)), listener_(::socket(AF_INET, SOCK_STREAM, 0)) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof address;
  auto* place = reinterpret_cast<sockaddr*>(&address);
  if (::bind(listener_.get(), place, size) != 0 || ::listen(listener_.get(), 1) != 0 ||
      ::getsockname(listener_.get(), place, &size) != 0) {
    throw std::runtime_error("the fault server cannot listen");
  }
  port_ = ntohs(address.sin_port);
  thread_ = std::thread(&PreparedFaultServer::run, this);
}

PreparedFaultServer::~PreparedFaultServer() {
  ::shutdown(listener_.get(), SHUT_RDWR);
  thread_.join();
}

void PreparedFaultServer::run() {
  for (;;) {
    const Socket connection(::accept(listener_.get(), nullptr, nullptr));
    if (connection.get() < 0) return;
    try {
      serve(connection.get());
    } catch (const std::runtime_error&) {
      // The client went away: the next one may stay.
    }
  }
}

void PreparedFaultServer::serve(int socket) const {
  std::string body;
  const FrameHead command = receiveFrame(socket, body);
  std::uint32_t number = 0;
  for (const std::string& reply : replies_) {
    if (number > 0 && command.flowControl) receiveFrame(socket, body);
    sendFrame(socket, FrameKind::kReply, ++number, reply, command);
  }
  sendFrame(socket, FrameKind::kEnd, number, "", command);
}
