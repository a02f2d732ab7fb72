#include "http_server.h"

#include <sys/socket.h>
#include <unistd.h>

#include <utility>

#include "listener.h"
#include "request_framing.h"

namespace ormasim {
namespace {

constexpr auto kIdleTimeout = std::chrono::milliseconds(60000);
// Told to the client only; the loop counts nothing.
constexpr std::size_t kRequestsOfAConnection = 1'000'000;

// Hands connections to the library's threads and keeps count of those not yet taken up.
class CountingPool : public httplib::TaskQueue {
 public:
  CountingPool(std::size_t threads, std::atomic<std::size_t>& waiting)
      : pool_(threads), waiting_(waiting) {}

  void enqueue(std::function<void()> task) override {
    ++waiting_;
    pool_.enqueue([this, task = std::move(task)] {
      --waiting_;
      task();
    });
  }
  void shutdown() override { pool_.shutdown(); }

 private:
  httplib::ThreadPool pool_;
  std::atomic<std::size_t>& waiting_;
};

}  // namespace

HttpServer::HttpServer(RestHandler& handler, std::size_t threads, ExchangeTimes times)
    : times_(times) {
  new_task_queue = [this, threads] { return new CountingPool(threads, waiting_); };
  set_payload_max_length(kBodyLimitBytes);
  set_keep_alive_timeout(std::chrono::duration_cast<std::chrono::seconds>(kIdleTimeout).count());
  set_keep_alive_max_count(kRequestsOfAConnection);
  route(handler);
}

HttpServer::~HttpServer() { stop(); }

void HttpServer::route(RestHandler& handler) {
  const auto handle = [&handler](const httplib::Request& request, httplib::Response& response) {
    handler.handle(request, response);
  };
  // Requests without a body are taken before the library's routing, which costs a regular
  // expression for each; the others must pass it to have their body read.
  set_pre_routing_handler([handle](const httplib::Request& request, httplib::Response& response) {
    if (const auto problem = framingProblem(request)) {
      RestHandler::refuse(problem->status, problem->reason, response);
    } else if (!takesBody(request.method)) {
      handle(request, response);
    } else {
      if (Connection* connection = Connection::current()) connection->expectBody();
      return HandlerResponse::Unhandled;
    }
    return HandlerResponse::Handled;
  });
  Post(".*", handle);
  Put(".*", handle);
  Patch(".*", handle);
  set_error_handler([](const httplib::Request&, httplib::Response& response) {
    RestHandler::explainRefusal(response);
  });
}

// The library makes tables at its first request. Made before there are threads, they are seen as
// safely published also by the thread sanitizer, which cannot look into the library.
void HttpServer::prepareLibrary() {
  httplib::detail::BufferStream stream;
  static_cast<httplib::Stream&>(stream).write(
      std::string("POST / HTTP/1.1\r\nTransfer-Encoding: chunked\r\n\r\n"));
  bool closed = false;
  process_request(stream, true, closed, nullptr);
}

int HttpServer::start(int port) {
  listener_ = listenOnLoopback(port);
  svr_sock_ = listener_;
  prepareLibrary();
  // From here on the system takes connections; the thread picks them up.
  acceptor_ = std::thread([this] { listen_after_bind(); });
  return portOfListener(listener_);
}

void HttpServer::stop() {
  if (!acceptor_.joinable()) return;
  svr_sock_ = INVALID_SOCKET;
  ::shutdown(listener_, SHUT_RDWR);
  connections_.shutDownAll();
  acceptor_.join();
  // Closed last: until then its number cannot become another socket's under the acceptor.
  ::close(listener_);
}

bool HttpServer::process_and_close_socket(socket_t socket) {
  Connection connection(socket, connections_, times_);
  serveConnection(connection);
  return true;
}

// The library drops a request whose first line does not end.
void HttpServer::answerRefused(Connection& connection) {
  httplib::Response response;
  RestHandler::explainRefusal(response);
  const std::string answer = "HTTP/1.1 " + std::to_string(response.status) +
                             " \r\nConnection: close\r\nContent-Type: application/json\r\n" +
                             "Content-Length: " + std::to_string(response.body.size()) +
                             "\r\n\r\n" + response.body;
  static_cast<httplib::Stream&>(connection).write(answer);
}

void HttpServer::serveConnection(Connection& connection) {
  const Connection::Serving serving(connection);
  const auto othersWait = [this] { return waiting_ > 0; };
  while (connection.usable() && connection.waitForRequest(kIdleTimeout, othersWait)) {
    connection.beginRequest();
    bool closed = false;
    // Parts of an answer are not given: a range has no meaning here.
    const auto whole = [](httplib::Request& request) { request.ranges.clear(); };
    if (!process_request(connection, false, closed, whole) || closed) break;
  }
  if (connection.refusal() && !connection.answering()) answerRefused(connection);
  if (connection.closing()) connection.discardRest();
}

}  // namespace ormasim
