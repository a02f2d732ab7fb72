// The client of one configuration: its settings and its idle connections. All threads share it; a
// configuration that is installed later gets a client of its own, and the old one goes when its
// last exchange ends.
//
// Thread-safety: thread-safe. Failure is told by the result; nothing is thrown but
// std::bad_alloc.
#pragma once

#include <json/value.h>

#include <memory>
#include <mutex>
#include <vector>

#include "connection.h"
#include "failure.h"
#include "restreq.h"
#include "settings.h"

namespace orma::rest {

class HttpClient {
 public:
  explicit HttpClient(const Configuration& configuration);
  HttpClient(const HttpClient&) = delete;
  HttpClient& operator=(const HttpClient&) = delete;
  ~HttpClient();

  // The client of the installed configuration.
  static std::shared_ptr<HttpClient> current();

  const Settings& settings() const { return settings_; }
  // One exchange: true when a 2xx answer was read into `answer`.
  bool send(const Nimbola::RestReq& request, Json::Value& answer, Failure& failure);

 private:
  std::unique_ptr<Connection> take();
  void giveBack(std::unique_ptr<Connection> connection);

  const Settings settings_;
  std::mutex mutex_;
  std::vector<std::unique_ptr<Connection>> idle_;  // under mutex_; the last used is at the end
};

}  // namespace orma::rest
