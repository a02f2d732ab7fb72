#include "raw_client.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdlib>
#include <stdexcept>
#include <utility>

namespace ormasim::testing {
namespace {

constexpr int kPatienceMs = 30000;

std::size_t contentLength(const std::string& head) {
  const std::size_t at = head.find("Content-Length: ");
  return at == std::string::npos ? 0 : std::strtoul(head.c_str() + at + 16, nullptr, 10);
}

}  // namespace

RawClient::RawClient(int port) : socket_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  if (::connect(socket_, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0) {
    throw std::runtime_error("cannot connect to the simulator");
  }
}

RawClient::~RawClient() { ::close(socket_); }

void RawClient::send(const std::string& bytes) {
  if (::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL) !=
      static_cast<ssize_t>(bytes.size())) {
    throw std::runtime_error("cannot send to the simulator");
  }
}

bool RawClient::readMore() {
  pollfd entry{socket_, POLLIN, 0};
  if (::poll(&entry, 1, kPatienceMs) != 1) return false;
  char buffer[65536];
  const ssize_t count = ::recv(socket_, buffer, sizeof buffer, 0);
  if (count <= 0) {
    ended_ = true;
    return false;
  }
  received_.append(buffer, static_cast<std::size_t>(count));
  return true;
}

bool RawClient::readable() const {
  pollfd entry{socket_, POLLIN, 0};
  return ::poll(&entry, 1, 0) == 1;
}

std::string RawClient::readToEnd() {
  while (readMore()) {
  }
  return std::exchange(received_, "");
}

std::string RawClient::read(std::size_t size) {
  while (received_.size() < size && readMore()) {
  }
  const std::string bytes = received_.substr(0, size);
  received_.erase(0, bytes.size());
  return bytes;
}

std::string RawClient::readAnswer() {
  while (received_.find("\r\n\r\n") == std::string::npos) {
    if (!readMore()) return std::exchange(received_, "");
  }
  const std::string head = headOf(received_);
  const std::size_t size = head.size() + contentLength(head);
  while (received_.size() < size && readMore()) {
  }
  const std::string answer = received_.substr(0, size);
  received_.erase(0, size);
  return answer;
}

int firstReadable(const std::vector<RawClient*>& clients) {
  std::vector<pollfd> entries;
  for (const RawClient* client : clients) entries.push_back({client->socket(), POLLIN, 0});
  if (::poll(entries.data(), entries.size(), kPatienceMs) < 1) return -1;
  for (std::size_t i = 0; i < entries.size(); ++i) {
    if (entries[i].revents != 0) return static_cast<int>(i);
  }
  return -1;
}

std::string headOf(const std::string& answer) {
  const std::size_t end = answer.find("\r\n\r\n");
  return end == std::string::npos ? answer : answer.substr(0, end + 4);
}

std::string bodyOf(const std::string& answer) { return answer.substr(headOf(answer).size()); }

}  // namespace ormasim::testing
