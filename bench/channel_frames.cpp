#include "channel_frames.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/uio.h>

#include <array>
#include <cstring>
#include <stdexcept>

namespace {

constexpr std::size_t kHeaderSize = 36;
constexpr std::uint32_t kFaultServer = 56;

using Header = std::array<unsigned char, kHeaderSize>;

void put(Header& header, std::size_t offset, std::uint32_t number) {
  number = htonl(number);
  std::memcpy(header.data() + offset, &number, sizeof number);
}

std::uint32_t numberAt(const Header& header, std::size_t offset) {
  std::uint32_t number = 0;
  std::memcpy(&number, header.data() + offset, sizeof number);
  return ntohl(number);
}

void sendAll(int socket, const void* bytes, std::size_t size) {
  const auto* at = static_cast<const char*>(bytes);
  while (size > 0) {
    const ssize_t sent = ::send(socket, at, size, MSG_NOSIGNAL);
    if (sent <= 0) throw std::runtime_error("a frame cannot be sent");
    at += sent;
    size -= static_cast<std::size_t>(sent);
  }
}

void receiveAll(int socket, void* bytes, std::size_t size) {
  if (size == 0) return;
  if (::recv(socket, bytes, size, MSG_WAITALL) != static_cast<ssize_t>(size)) {
    throw std::runtime_error("a frame was cut");
  }
}

}  // namespace

Socket connectedTo(unsigned short port) {
  Socket socket(::socket(AF_INET, SOCK_STREAM, 0));
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(port);
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  if (::connect(socket.get(), reinterpret_cast<sockaddr*>(&address), sizeof address) != 0) {
    throw std::runtime_error("the fault server cannot be reached");
  }
  return socket;
}

void sendFrame(int socket, FrameKind kind, std::uint32_t number, const std::string& body,
               const FrameHead& exchange) {
  Header header{'O', 'R', 'M', 'C', 1, static_cast<unsigned char>(kind)};
  put(header, 8, kFaultServer);
  put(header, 12, exchange.command);
  put(header, 16, exchange.id);
  put(header, 20, number);
  put(header, 32, static_cast<std::uint32_t>(body.size()));
  sendAll(socket, header.data(), header.size());
  sendAll(socket, body.data(), body.size());
}

FrameHead receiveFrame(int socket, std::string& body) {
  Header header{};
  receiveAll(socket, header.data(), header.size());
  body.resize(numberAt(header, 32));
  receiveAll(socket, body.data(), body.size());
  return {static_cast<FrameKind>(header[5]), header[7] == 1, numberAt(header, 12),
          numberAt(header, 16)};
}
