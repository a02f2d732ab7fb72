#include "health_endpoint.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>
#include <utility>

#include "bounded_stream.h"
#include "exit_status.h"
#include "host_failure.h"

namespace ormaagent {

namespace {

constexpr int kBacklog = 16;
constexpr std::size_t kThreads = 4;
constexpr char kPlainText[] = "text/plain; charset=utf-8";

[[noreturn]] void fail(const std::string& what) {
  throw HostFailure(kExitUsage, what + ": " + std::generic_category().message(errno) +
                                    "; check serve.address and serve.port");
}

// An address with its port, of either family.
class SocketAddress {
 public:
  SocketAddress(const std::string& address, int port) {
    const auto networkPort = htons(static_cast<std::uint16_t>(port));
    auto& four = reinterpret_cast<sockaddr_in&>(storage_);
    auto& six = reinterpret_cast<sockaddr_in6&>(storage_);
    if (::inet_pton(AF_INET, address.c_str(), &four.sin_addr) == 1) {
      four.sin_family = AF_INET;
      four.sin_port = networkPort;
      size_ = sizeof four;
    } else if (::inet_pton(AF_INET6, address.c_str(), &six.sin6_addr) == 1) {
      six.sin6_family = AF_INET6;
      six.sin6_port = networkPort;
      size_ = sizeof six;
    }
  }

  int family() const { return storage_.ss_family; }
  const sockaddr* get() const { return reinterpret_cast<const sockaddr*>(&storage_); }
  socklen_t size() const { return size_; }

 private:
  sockaddr_storage storage_{};
  socklen_t size_ = 0;
};

int portOf(int socket) {
  sockaddr_storage storage{};
  socklen_t size = sizeof storage;
  ::getsockname(socket, reinterpret_cast<sockaddr*>(&storage), &size);
  // The port lies at the same place in both families.
  return ntohs(reinterpret_cast<const sockaddr_in&>(storage).sin_port);
}

// The library's own way of listening shares a port that is in use with its user.
int listenOn(const std::string& text, int port) {
  const SocketAddress address(text, port);
  const int socket = ::socket(address.family(), SOCK_STREAM | SOCK_CLOEXEC, 0);
  const int on = 1;
  if (socket < 0 || ::setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on) != 0 ||
      ::bind(socket, address.get(), address.size()) != 0 || ::listen(socket, kBacklog) != 0) {
    const int reason = errno;
    if (socket >= 0) ::close(socket);
    errno = reason;
    fail("cannot listen on " + text + " port " + std::to_string(port));
  }
  return socket;
}

}  // namespace

HealthEndpoint::HealthEndpoint(Pages pages, std::chrono::milliseconds longestExchange)
    : pages_(std::move(pages)), longestExchange_(longestExchange) {
  new_task_queue = [] { return new httplib::ThreadPool(kThreads); };
  set_payload_max_length(0);
  set_pre_routing_handler([this](const httplib::Request& request, httplib::Response& response) {
    answer(request, response);
    return HandlerResponse::Handled;
  });
}

HealthEndpoint::~HealthEndpoint() { stop(); }

std::string HealthEndpoint::start(const std::string& address, int port) {
  stopEvent_ = ::eventfd(0, EFD_CLOEXEC);
  if (stopEvent_ < 0) fail("cannot make an event");
  listener_ = listenOn(address, port);
  svr_sock_ = listener_;
  acceptor_ = std::thread([this] { listen_after_bind(); });
  const bool six = address.find(':') != std::string::npos;
  return "http://" + (six ? "[" + address + "]" : address) + ":" +
         std::to_string(portOf(listener_));
}

void HealthEndpoint::stop() {
  if (acceptor_.joinable()) {
    svr_sock_ = INVALID_SOCKET;
    ::eventfd_write(stopEvent_, 1);
    ::shutdown(listener_, SHUT_RDWR);
    acceptor_.join();
  }
  // Closed last: until then their numbers cannot become others' under the threads.
  if (listener_ >= 0) ::close(std::exchange(listener_, -1));
  if (stopEvent_ >= 0) ::close(std::exchange(stopEvent_, -1));
}

bool HealthEndpoint::process_and_close_socket(socket_t socket) {
  BoundedStream stream(socket, stopEvent_, longestExchange_);
  bool closed = false;
  return process_request(stream, true, closed, nullptr);
}

void HealthEndpoint::answer(const httplib::Request& request, httplib::Response& response) const {
  const auto page = pages_.find(request.path);
  if (request.method != "GET" && request.method != "HEAD") {
    response.status = 405;
    response.set_header("Allow", "GET, HEAD");
  } else if (page == pages_.end()) {
    response.status = 404;
    response.set_content("not found\n", kPlainText);
  } else {
    const Page made = page->second();
    response.status = made.status;
    response.set_content(made.text, made.type);
  }
}

}  // namespace ormaagent
