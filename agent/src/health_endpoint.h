// Health and metrics over HTTP: GET or HEAD of a few paths, one request a connection. Whoever is
// slow is cut off, so that nobody can hold the endpoint up.
//
//   HealthEndpoint endpoint({{"/healthz", [] { return Page{200, "text/plain", "ok\n"}; }}});
//   const std::string address = endpoint.start("127.0.0.1", 0);  // "http://127.0.0.1:39617"
//
// Thread-safety: thread-compatible; the pages are made on the endpoint's threads. start throws
// HostFailure when it cannot listen.
#pragma once

#include <httplib.h>

#include <chrono>
#include <functional>
#include <map>
#include <string>
#include <thread>

namespace ormaagent {

struct Page {
  int status;
  std::string type;
  std::string text;
};

class HealthEndpoint : private httplib::Server {
 public:
  using Pages = std::map<std::string, std::function<Page()>>;  // by path

  // An exchange that has not ended after `longestExchange` is cut off.
  explicit HealthEndpoint(Pages pages,
                          std::chrono::milliseconds longestExchange = std::chrono::seconds(5));
  // Stops.
  ~HealthEndpoint() override;

  // Listens and answers. `address` is an IPv4 or IPv6 address, the port a free one for 0. Once
  // only.
  std::string start(const std::string& address, int port);
  // Cuts off the requests that are being answered. Harmless when not started.
  void stop();

 private:
  bool process_and_close_socket(socket_t socket) override;
  void answer(const httplib::Request& request, httplib::Response& response) const;

  const Pages pages_;
  const std::chrono::milliseconds longestExchange_;
  int listener_ = -1;
  int stopEvent_ = -1;  // readable from the stop on
  std::thread acceptor_;
};

}  // namespace ormaagent
