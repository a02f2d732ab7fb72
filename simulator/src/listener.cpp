#include "listener.h"

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <string>

#include "error.h"

namespace ormasim {
namespace {

constexpr int kBacklog = 128;

[[noreturn]] void failToListen(int socket, int port) {
  const int reason = errno;
  if (socket >= 0) ::close(socket);
  throw SimError("cannot listen on 127.0.0.1:" + std::to_string(port) + ": " +
                 std::strerror(reason) + "; give another port, or 0 for a free one");
}

}  // namespace

// The library's own way of listening shares a port that is in use with its user.
int listenOnLoopback(int port) {
  const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  const int on = 1;
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  if (socket < 0 || ::setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on) != 0 ||
      ::bind(socket, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0 ||
      ::listen(socket, kBacklog) != 0) {
    failToListen(socket, port);
  }
  return socket;
}

int portOfListener(int socket) {
  sockaddr_in address{};
  socklen_t length = sizeof address;
  ::getsockname(socket, reinterpret_cast<sockaddr*>(&address), &length);
  return ntohs(address.sin_port);
}

}  // namespace ormasim
