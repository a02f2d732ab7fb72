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
#include <optional>
#include <string>
#include <vector>

#include "connection.h"
#include "failure.h"
#include "json_reader.h"
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

  // One exchange: the connection that holds a 2xx answer, not read yet; null on failure. JSON text
  // in `body` is sent in place of the request's own.
  std::unique_ptr<Connection> fetch(const Nimbola::RestReq& request, Failure& failure,
                                    std::optional<std::string> body = std::nullopt);
  // Reads what `connection` holds, the answer to `request`, and takes the connection back.
  bool read(std::unique_ptr<Connection> connection, const Nimbola::RestReq& request,
            Json::Value& answer, Failure& failure, const JsonReader::Glance& glance = nullptr);
  // The one trace of an exchange that failed.
  void traceFailure(const Nimbola::RestReq& request, const Failure& failure) const;

 private:
  std::unique_ptr<Connection> take();
  void giveBack(std::unique_ptr<Connection> connection);

  const Settings settings_;
  std::mutex mutex_;
  std::vector<std::unique_ptr<Connection>> idle_;  // under mutex_; the last used is at the end
};

}  // namespace orma::rest
