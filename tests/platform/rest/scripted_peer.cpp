#include "scripted_peer.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

std::string PeerConnection::readHeaders() {
  std::string text;
  char byte = 0;
  while (text.find("\r\n\r\n") == std::string::npos && ::recv(socket_, &byte, 1, 0) == 1) {
    text += byte;
  }
  return text;
}

std::string PeerConnection::read(std::size_t size) {
  std::string bytes(size, '\0');
  const ssize_t received = size > 0 ? ::recv(socket_, bytes.data(), size, MSG_WAITALL) : 0;
  bytes.resize(received > 0 ? static_cast<std::size_t>(received) : 0);
  return bytes;
}

bool PeerConnection::send(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t sent = ::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (sent <= 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(sent));
  }
  return true;
}

bool PeerConnection::closedWithin(int milliseconds) {
  pollfd waiting[2] = {{socket_, POLLIN, 0}, {wakeUp_, POLLIN, 0}};
  char scrap[4096];
  while (::poll(waiting, 2, milliseconds) > 0) {
    if (waiting[1].revents != 0 || ::recv(socket_, scrap, sizeof scrap, 0) <= 0) return true;
  }
  return false;
}

void PeerConnection::stayDeaf() {
  pollfd waiting = {wakeUp_, POLLIN, 0};
  ::poll(&waiting, 1, -1);
}

ScriptedPeer::ScriptedPeer(Script script) : listener_(boundToLoopback(port_)) {
  EXPECT_EQ(::listen(listener_, 64), 0);
  EXPECT_EQ(::pipe(wakeUp_), 0);
  thread_ = std::thread([this, script = std::move(script)] { serve(script); });
}

ScriptedPeer::~ScriptedPeer() {
  ::close(wakeUp_[1]);
  thread_.join();
  ::close(wakeUp_[0]);
  ::close(listener_);
}

void ScriptedPeer::serve(const Script& script) {
  pollfd waiting[2] = {{listener_, POLLIN, 0}, {wakeUp_[0], POLLIN, 0}};
  while (::poll(waiting, 2, -1) > 0 && waiting[1].revents == 0) {
    const int socket = ::accept(listener_, nullptr, nullptr);
    if (socket < 0) continue;
    PeerConnection connection(socket, wakeUp_[0]);
    script(connection);
    ::close(socket);
  }
}

ScriptedPeer::Script answers(std::string bytes) {
  return [bytes = std::move(bytes)](PeerConnection& connection) {
    connection.readHeaders();
    connection.send(bytes);
  };
}
