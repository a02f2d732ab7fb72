// The least that a REST read can do: one libcurl handle, jsoncpp's reader.
//
//   BareClient client;
//   const Json::Value page = client.get(network.url("/rest/topology/v3/tsnodes?limit=200"));
//
// Thread-safety: thread-compatible. Failures are std::runtime_error.
#pragma once

#include <curl/curl.h>
#include <json/reader.h>

#include <memory>
#include <stdexcept>
#include <string>

class BareClient {
 public:
  BareClient() : curl_(curl_easy_init()), reader_(Json::CharReaderBuilder().newCharReader()) {
    headers_ = curl_slist_append(nullptr, "Content-Type: application/json");
    curl_easy_setopt(curl_, CURLOPT_WRITEFUNCTION, append);
    curl_easy_setopt(curl_, CURLOPT_WRITEDATA, &body_);
    curl_easy_setopt(curl_, CURLOPT_FAILONERROR, 1L);
  }
  BareClient(const BareClient&) = delete;
  BareClient& operator=(const BareClient&) = delete;
  ~BareClient() {
    curl_easy_cleanup(curl_);
    curl_slist_free_all(headers_);
  }

  Json::Value get(const std::string& url) {
    curl_easy_setopt(curl_, CURLOPT_HTTPGET, 1L);
    return exchange(url);
  }

  // Sends JSON text.
  Json::Value post(const std::string& url, const std::string& document) {
    curl_easy_setopt(curl_, CURLOPT_POST, 1L);
    curl_easy_setopt(curl_, CURLOPT_HTTPHEADER, headers_);
    curl_easy_setopt(curl_, CURLOPT_POSTFIELDS, document.c_str());
    curl_easy_setopt(curl_, CURLOPT_POSTFIELDSIZE, static_cast<long>(document.size()));
    return exchange(url);
  }

  // Percent-encoded.
  std::string escaped(const std::string& text) {
    const std::unique_ptr<char, void (*)(void*)> encoded(
        curl_easy_escape(curl_, text.data(), static_cast<int>(text.size())), curl_free);
    return encoded.get();
  }

 private:
  static std::size_t append(char* bytes, std::size_t size, std::size_t count, void* text) {
    static_cast<std::string*>(text)->append(bytes, size * count);
    return size * count;
  }

  Json::Value exchange(const std::string& url) {
    body_.clear();
    curl_easy_setopt(curl_, CURLOPT_URL, url.c_str());
    const CURLcode code = curl_easy_perform(curl_);
    if (code != CURLE_OK) throw std::runtime_error(curl_easy_strerror(code));
    Json::Value page;
    std::string problems;
    if (!reader_->parse(body_.data(), body_.data() + body_.size(), &page, &problems)) {
      throw std::runtime_error(problems);
    }
    return page;
  }

  CURL* curl_;
  curl_slist* headers_ = nullptr;
  std::string body_;
  std::unique_ptr<Json::CharReader> reader_;
};
