#include "database_proxy.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>

namespace emf::faults {
namespace {

constexpr char kSocketName[] = "/.s.PGSQL.5432";

sockaddr_un addressOf(const std::string& path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  path.copy(address.sun_path, sizeof address.sun_path - 1);
  return address;
}

int makeSocket() { return ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0); }

bool sendAll(int socket, const char* bytes, std::size_t size) {
  while (size > 0) {
    const ssize_t sent = ::send(socket, bytes, size, MSG_NOSIGNAL);
    if (sent <= 0) return false;
    bytes += sent;
    size -= static_cast<std::size_t>(sent);
  }
  return true;
}

// Sends `size` bytes of the server's, of which `before` have gone; false when that is the end.
bool passOn(int client, char* bytes, std::size_t size, std::size_t before,
            const DatabaseProxy::Treatment& treatment) {
  for (std::size_t i = 0; i < size; ++i) {
    if (before + i >= treatment.garbageBehind) bytes[i] = static_cast<char>(bytes[i] ^ 0x5a);
  }
  const std::size_t end = std::min(treatment.cutBehind, treatment.stallBehind);
  const std::size_t allowed = end > before ? std::min(size, end - before) : 0;
  const std::size_t step = treatment.isSlow ? 1 : std::max<std::size_t>(1, allowed);
  for (std::size_t at = 0; at < allowed; at += step) {
    if (!sendAll(client, bytes + at, std::min(step, allowed - at))) return false;
  }
  return treatment.cutBehind > before + size;
}

}  // namespace

DatabaseProxy::DatabaseProxy(std::string serverDirectory, std::string ownDirectory)
    : server_(std::move(serverDirectory) + kSocketName),
      own_(std::move(ownDirectory) + kSocketName) {}

DatabaseProxy::~DatabaseProxy() { go(); }

void DatabaseProxy::come(std::vector<Treatment> treatments) {
  go();
  treatments_ = std::move(treatments);
  listener_ = makeSocket();
  const sockaddr_un address = addressOf(own_);
  EXPECT_EQ(::bind(listener_, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  EXPECT_EQ(::listen(listener_, 16), 0);
  accepting_ = std::thread([this] { accept(); });
}

void DatabaseProxy::go() {
  if (!accepting_.joinable()) return;
  ::unlink(own_.c_str());
  ::shutdown(listener_, SHUT_RDWR);
  accepting_.join();
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    for (const int socket : sockets_) ::shutdown(socket, SHUT_RDWR);
  }
  for (std::thread& server : servers_) server.join();
  servers_.clear();
  ::close(listener_);
}

std::size_t DatabaseProxy::bytes() const {
  const std::lock_guard<std::mutex> lock(mutex_);
  return bytes_;
}

void DatabaseProxy::accept() {
  for (std::size_t number = 0;; ++number) {
    const int client = ::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
    if (client < 0) return;
    {
      const std::lock_guard<std::mutex> lock(mutex_);
      sockets_.push_back(client);
    }
    const Treatment treatment = treatments_[std::min(number, treatments_.size() - 1)];
    servers_.emplace_back([this, client, treatment] { serve(client, treatment); });
  }
}

void DatabaseProxy::serve(int client, Treatment treatment) {
  const int server = makeSocket();
  const sockaddr_un address = addressOf(server_);
  ::connect(server, reinterpret_cast<const sockaddr*>(&address), sizeof address);
  std::size_t sent = 0;
  pollfd waiting[2] = {{client, POLLIN, 0}, {server, POLLIN, 0}};
  char block[8192];
  for (bool goesOn = treatment.cutBehind > 0; goesOn && ::poll(waiting, 2, -1) > 0;) {
    for (const pollfd& ready : waiting) {
      if (ready.revents == 0) continue;
      const ssize_t count = ::recv(ready.fd, block, sizeof block, 0);
      if (count <= 0) {
        goesOn = false;
      } else if (ready.fd == client) {
        goesOn = goesOn && sendAll(server, block, static_cast<std::size_t>(count));
      } else {
        const auto size = static_cast<std::size_t>(count);
        goesOn = goesOn && passOn(client, block, size, sent, treatment);
        sent += size;
        const std::lock_guard<std::mutex> lock(mutex_);
        bytes_ = sent;
      }
    }
  }
  ::close(server);
  const std::lock_guard<std::mutex> lock(mutex_);
  sockets_.remove(client);
  ::close(client);
}

}  // namespace emf::faults
