#include "connection.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

namespace ormasim {
namespace {

constexpr auto kTransferTimeout = std::chrono::milliseconds(30000);
// How long a wait may be deaf to `giveUp`.
constexpr auto kWaitSlice = std::chrono::milliseconds(200);

thread_local Connection* t_current = nullptr;

// The events that came; 0 when the time was over.
short pollFor(int socket, short events, int timeoutMs) {
  pollfd entry{socket, events, 0};
  int count;
  do {
    count = ::poll(&entry, 1, timeoutMs);
  } while (count < 0 && errno == EINTR);
  return count > 0 ? entry.revents : static_cast<short>(0);
}

FramingProblem headTooLong() {
  return {431, "the request's head has more than " + std::to_string(kHeadLimitBytes) + " bytes"};
}

bool closedByPeer(short events) {
  return (events & (POLLRDHUP | POLLHUP | POLLERR | POLLNVAL)) != 0;
}

void addressOf(const sockaddr_in& address, std::string& ip, int& port) {
  char text[INET_ADDRSTRLEN] = "";
  ::inet_ntop(AF_INET, &address.sin_addr, text, sizeof text);
  ip = text;
  port = ntohs(address.sin_port);
}

}  // namespace

bool ConnectionSet::add(int socket) {
  const std::lock_guard<std::mutex> lock(mutex_);
  if (!closed_) sockets_.insert(socket);
  return !closed_;
}

void ConnectionSet::remove(int socket) {
  const std::lock_guard<std::mutex> lock(mutex_);
  sockets_.erase(socket);
}

void ConnectionSet::shutDownAll() {
  const std::lock_guard<std::mutex> lock(mutex_);
  closed_ = true;
  for (const int socket : sockets_) ::shutdown(socket, SHUT_RDWR);
}

Connection::Connection(int socket, ConnectionSet& connections, ExchangeTimes times)
    : socket_(socket),
      connections_(connections),
      times_(times),
      admitted_(connections.add(socket)) {
  const int on = 1;
  ::setsockopt(socket_, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
  aborted_ = !admitted_;
}

Connection::~Connection() {
  // Forgotten before it is closed: the number may be another connection's at once.
  connections_.remove(socket_);
  ::shutdown(socket_, SHUT_RDWR);
  ::close(socket_);
}

Connection* Connection::current() { return t_current; }

Connection::Serving::Serving(Connection& connection) { t_current = &connection; }
Connection::Serving::~Serving() { t_current = nullptr; }

bool Connection::waitForRequest(std::chrono::milliseconds timeout,
                                const std::function<bool()>& giveUp) {
  if (bufferBegin_ < bufferEnd_) return true;
  const auto deadline = std::chrono::steady_clock::now() + timeout;
  do {
    const short events = pollFor(socket_, POLLIN, static_cast<int>(kWaitSlice.count()));
    if (events != 0) return (events & POLLIN) != 0;
  } while (!giveUp() && std::chrono::steady_clock::now() < deadline);
  return false;
}

void Connection::beginRequest() {
  until_ = Clock::now() + times_.request;
  mayTake_ = kHeadLimitBytes;
  inBody_ = false;
  answering_ = false;
}

void Connection::expectBody() {
  inBody_ = true;
  mayTake_ = kBodyLimitBytes;
}

void Connection::discardRest() {
  finishSending();
  until_ = Clock::now() + times_.request;
  std::array<char, 8192> scrap;
  while ((await(POLLIN) & POLLIN) != 0 && ::recv(socket_, scrap.data(), scrap.size(), 0) > 0) {
  }
}

ssize_t Connection::refuseMore(FramingProblem problem) {
  refusal_ = std::move(problem);
  return -1;
}

short Connection::await(short events) const {
  const int time = patience();
  return time > 0 ? pollFor(socket_, events, time) : static_cast<short>(0);
}

int Connection::patience() const {
  if (!until_) return static_cast<int>(kTransferTimeout.count());
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(*until_ - Clock::now());
  return static_cast<int>(std::max(left.count(), std::chrono::milliseconds::rep{0}));
}

bool Connection::stayIdle(std::chrono::milliseconds time) const {
  // Requests that the client sends meanwhile stay where they are; only an end is looked for.
  return !closedByPeer(pollFor(socket_, POLLRDHUP, static_cast<int>(time.count())));
}

void Connection::stayIdleUntilClosed() const { pollFor(socket_, POLLRDHUP, -1); }

void Connection::finishSending() const { ::shutdown(socket_, SHUT_WR); }

bool Connection::is_readable() const {
  return bufferBegin_ < bufferEnd_ || (await(POLLIN) & POLLIN) != 0;
}

bool Connection::is_writable() const {
  if (aborted_) return false;
  const short events = await(POLLOUT);
  return (events & POLLOUT) != 0 && (events & (POLLERR | POLLHUP | POLLNVAL)) == 0;
}

ssize_t Connection::read(char* bytes, size_t size) {
  if (mayTake_ == 0) return refuseMore(inBody_ ? bodyTooLong() : headTooLong());
  if (bufferBegin_ == bufferEnd_) {
    if (!is_readable()) return refuseMore({408, "the request was not whole in time"});
    const ssize_t received = ::recv(socket_, buffer_.data(), buffer_.size(), 0);
    if (received <= 0) return received;
    bufferBegin_ = 0;
    bufferEnd_ = static_cast<std::size_t>(received);
  }
  const std::size_t taken = std::min({size, bufferEnd_ - bufferBegin_, mayTake_});
  std::memcpy(bytes, buffer_.data() + bufferBegin_, taken);
  bufferBegin_ += taken;
  mayTake_ -= taken;
  return static_cast<ssize_t>(taken);
}

ssize_t Connection::write(const char* bytes, size_t size) {
  if (until_ && !answering_) until_ = Clock::now() + times_.answer;
  answering_ = true;
  ssize_t sent;
  do {
    if (!is_writable()) return -1;
    // Waiting is for is_writable, which knows the deadline.
    sent = ::send(socket_, bytes, size, MSG_NOSIGNAL | MSG_DONTWAIT);
  } while (sent < 0 && (errno == EINTR || errno == EAGAIN));
  return sent;
}

void Connection::get_remote_ip_and_port(std::string& ip, int& port) const {
  sockaddr_in address{};
  socklen_t length = sizeof address;
  ::getpeername(socket_, reinterpret_cast<sockaddr*>(&address), &length);
  addressOf(address, ip, port);
}

void Connection::get_local_ip_and_port(std::string& ip, int& port) const {
  sockaddr_in address{};
  socklen_t length = sizeof address;
  ::getsockname(socket_, reinterpret_cast<sockaddr*>(&address), &length);
  addressOf(address, ip, port);
}

}  // namespace ormasim
