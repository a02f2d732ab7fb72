// What serve tells the service manager that started it.
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>

#include "world.h"

namespace systemtest {
namespace {

class Notify : public World {
 protected:
  Notify() {
    serve();
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, path_.c_str(), sizeof address.sun_path - 1);
    socket_ = ::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    const timeval deadline{kDeadline.count(), 0};
    ::setsockopt(socket_, SOL_SOCKET, SO_RCVTIMEO, &deadline, sizeof deadline);
    EXPECT_EQ(::bind(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  }
  ~Notify() override { ::close(socket_); }

  std::unique_ptr<Process> watchedAgent() {
    ProcessSetup setup;
    setup.environment = {"ORMAAGENT_CONFIG=" + configuration_.string(), "NOTIFY_SOCKET=" + path_,
                         "WATCHDOG_USEC=100000"};
    return startAgent({"serve"}, setup);
  }

  // The next message; empty when none came before the deadline.
  std::string next() const {
    std::array<char, 256> bytes{};
    ssize_t size = 0;
    do {
      size = ::recv(socket_, bytes.data(), bytes.size(), 0);
    } while (size < 0 && errno == EINTR);
    return size < 0 ? "" : std::string(bytes.data(), static_cast<std::size_t>(size));
  }

  // Passes over messages up to one that is another.
  std::string nextBut(const std::string& message) const {
    std::string found = next();
    while (found == message) found = next();
    return found;
  }

  const std::string path_ = file("notify").string();
  int socket_ = -1;
};

TEST_F(Notify, ReadyThenAliveThenStopping) {
  const auto agent = watchedAgent();
  EXPECT_EQ(nextBut("WATCHDOG=1"), "READY=1");
  EXPECT_EQ(next(), "WATCHDOG=1");
  EXPECT_EQ(next(), "WATCHDOG=1");
  agent->send(SIGTERM);
  EXPECT_EQ(nextBut("WATCHDOG=1"), "STOPPING=1");
  EXPECT_EQ(agent->finish().status, 0);
}

TEST_F(Notify, WhatCannotServeIsNeverReady) {
  configure([](Json::Value& document) { document["bundles"] = Json::arrayValue; });
  EXPECT_EQ(watchedAgent()->finish().status, 2);
  std::array<char, 256> bytes{};
  EXPECT_EQ(::recv(socket_, bytes.data(), bytes.size(), MSG_DONTWAIT), -1);
}

}  // namespace
}  // namespace systemtest
