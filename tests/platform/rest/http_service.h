// A real HTTP(S) service on loopback that answers as a test says and records what it was asked.
#pragma once

#include <httplib.h>

#include <functional>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <thread>
#include <vector>

struct ServiceTls {
  std::string certificate;
  std::string key;
  std::string clientAuthority;  // empty: clients need no certificate
};

class HttpService {
 public:
  using Answer = std::function<void(const httplib::Request&, httplib::Response&)>;

  // What becomes of a connection after an answer. An idle one that is kept holds the service's
  // end up for a second.
  enum class After { Close, Keep };

  explicit HttpService(Answer answer, After after = After::Close);
  HttpService(Answer answer, const ServiceTls& tls, After after = After::Close);
  HttpService(const HttpService&) = delete;
  HttpService& operator=(const HttpService&) = delete;
  ~HttpService();

  int port() const { return port_; }
  std::string url() const { return scheme_ + "127.0.0.1:" + std::to_string(port_); }
  std::vector<httplib::Request> requests() const;
  // The one request that came.
  httplib::Request request() const;
  // How many connections carried the requests.
  std::size_t connections() const;

 private:
  void start(Answer answer, After after);

  std::string scheme_;
  std::unique_ptr<httplib::Server> server_;
  int port_ = 0;
  mutable std::mutex mutex_;
  std::vector<httplib::Request> requests_;  // under mutex_
  std::set<int> clientPorts_;               // under mutex_
  std::thread thread_;
};

// Answers everything with this body and status.
HttpService::Answer always(const std::string& body, int status = 200,
                           const std::string& type = "application/json");
