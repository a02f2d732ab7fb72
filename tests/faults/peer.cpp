#include "peer.h"

#include <gtest/gtest.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>

#include "loopback_ports.h"

namespace emf::faults {
namespace {

void sendAtOnce(int socket) {
  const int on = 1;
  ::setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
}

}  // namespace

std::string Wire::read(std::size_t size) const {
  std::string bytes(size, '\0');
  const ssize_t count = size > 0 ? ::recv(socket_, bytes.data(), size, MSG_WAITALL) : 0;
  bytes.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
  return bytes;
}

// Looks at what has come before it takes it, so that nothing behind `end` is taken.
std::string Wire::readTo(std::string_view end) const {
  std::string text;
  char block[4096];
  while (text.size() < end.size() || text.compare(text.size() - end.size(), end.size(), end) != 0) {
    const ssize_t seen = ::recv(socket_, block, sizeof block, MSG_PEEK);
    if (seen <= 0) break;
    const std::string joined = text + std::string(block, static_cast<std::size_t>(seen));
    const std::size_t found = joined.find(end);
    const std::size_t wanted = found == std::string::npos ? joined.size() : found + end.size();
    text += read(wanted - text.size());
  }
  return text;
}

bool Wire::send(std::string_view bytes) const {
  while (!bytes.empty()) {
    const ssize_t sent = ::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (sent <= 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(sent));
  }
  return true;
}

void Wire::dribble(std::string_view bytes, int pauseMs) const {
  for (const char byte : bytes) {
    if (!send({&byte, 1})) return;
    if (pauseMs > 0 && closedWithin(pauseMs)) return;
  }
}

void Wire::reset() const {
  const linger abrupt{1, 0};
  ::setsockopt(socket_, SOL_SOCKET, SO_LINGER, &abrupt, sizeof abrupt);
}

bool Wire::closedWithin(int milliseconds) const {
  pollfd waiting{socket_, POLLIN, 0};
  char scrap[4096];
  while (::poll(&waiting, 1, milliseconds) > 0) {
    if (::recv(socket_, scrap, sizeof scrap, 0) <= 0) return true;
  }
  return false;
}

Peer::Peer() : reservation_(boundToLoopback(port_)) {}

Peer::~Peer() {
  go();
  ::close(reservation_);
}

void Peer::come(Script script) {
  go();
  script_ = std::move(script);
  listener_ = boundToLoopback(port_);
  EXPECT_EQ(::listen(listener_, 64), 0);
  accepting_ = std::thread([this] { accept(); });
}

void Peer::refuse() { ::shutdown(listener_, SHUT_RDWR); }

void Peer::go() {
  if (!accepting_.joinable()) return;
  refuse();
  accepting_.join();
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    for (const int socket : sockets_) ::shutdown(socket, SHUT_RDWR);
  }
  for (std::thread& server : servers_) server.join();
  servers_.clear();
  ::close(listener_);
  listener_ = -1;
}

void Peer::accept() {
  for (std::size_t number = 0;; ++number) {
    const int socket = ::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
    if (socket < 0) return;
    sendAtOnce(socket);
    {
      const std::lock_guard<std::mutex> lock(mutex_);
      sockets_.push_back(socket);
    }
    servers_.emplace_back([this, socket, number] { serve(socket, number); });
  }
}

void Peer::serve(int socket, std::size_t number) {
  Wire wire(socket);
  script_(wire, number);
  const std::lock_guard<std::mutex> lock(mutex_);
  sockets_.remove(socket);
  ::close(socket);
}

}  // namespace emf::faults
