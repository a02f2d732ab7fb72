// One kept connection: a libcurl handle with the buffers that an exchange needs.
//
// Thread-safety: thread-compatible. Failure is told by the result; nothing is thrown but
// std::bad_alloc.
#pragma once

#include <curl/curl.h>

#include <memory>
#include <optional>
#include <string>

#include "failure.h"
#include "http_request.h"
#include "json_reader.h"
#include "orma/metrics/outside_services.h"
#include "settings.h"

namespace orma::rest {

class Connection {
 public:
  explicit Connection(const Settings& settings);
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;
  ~Connection();

  // Sends `request` and takes the whole answer. True for a 2xx answer, whose body then is in
  // body(). Blocks up to the total timeout.
  bool exchange(const HttpRequest& request, Failure& failure);
  std::string& body() { return body_; }
  JsonReader& reader() { return reader_; }
  // What the last answer called itself, for messages: "text/html, 120 bytes".
  std::string describeAnswer() const;
  // What the last answer turned out to be; it counts from here on.
  void conclude(bool usable);
  // Gives back what an unusually large answer took.
  void trim();

 private:
  struct CloseHandle {
    void operator()(CURL* handle) const { curl_easy_cleanup(handle); }
  };

  static std::size_t takeBody(char* data, std::size_t one, std::size_t size, void* self) noexcept;
  static std::size_t takeHeader(char* data, std::size_t one, std::size_t size, void* self) noexcept;
  void setUpHandle();
  void setUpTls();
  void setUpRequest(const HttpRequest& request, curl_slist* headers);
  void forgetRequest();
  bool judge(CURLcode code, Failure& failure);
  std::string reasonFor(CURLcode code) const;

  const Settings& settings_;
  std::unique_ptr<CURL, CloseHandle> handle_;
  char error_[CURL_ERROR_SIZE] = {};
  std::string body_;
  std::size_t headerBytes_ = 0;
  bool outOfMemory_ = false;
  JsonReader reader_;
  std::optional<metrics::Exchange> exchange_;  // until it is concluded
};

}  // namespace orma::rest
