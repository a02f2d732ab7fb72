// The HTTP server on the loopback interface: the HTTP library's parser and threads, with a
// connection loop of its own that can be stopped at once.
//
//   HttpServer server(handler);
//   int port = server.start(0);
//   …
//   server.stop();
//
// Thread-safety: thread-compatible; the handler runs on the server's threads. Failure: start
// throws SimError.
#pragma once

#include <atomic>
#include <cstddef>
#include <thread>

#include "connection.h"
#include "rest_handler.h"

namespace ormasim {

class HttpServer : private httplib::Server {
 public:
  // `threads` connections are served at once; more wait until one closes or falls idle.
  explicit HttpServer(RestHandler& handler, std::size_t threads = 64, ExchangeTimes times = {});
  // Stops.
  ~HttpServer() override;

  // Listens on 127.0.0.1 and serves; the port, a free one for 0. Once only.
  int start(int port);
  // Ends at once, with the requests that are being answered. Harmless when not started.
  void stop();

 private:
  bool process_and_close_socket(socket_t socket) override;
  void route(RestHandler& handler);
  void prepareLibrary();
  void serveConnection(Connection& connection);
  static void answerRefused(Connection& connection);

  const ExchangeTimes times_;
  ConnectionSet connections_;
  std::atomic<std::size_t> waiting_{0};  // accepted, and no thread has taken them up
  int listener_ = -1;
  std::thread acceptor_;
};

}  // namespace ormasim
