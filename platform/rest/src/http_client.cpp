#include "http_client.h"

#include <strings.h>

#include <utility>

#include "orma/bundle/configuration.h"
#include "token.h"

namespace orma::rest {
namespace {

// The process's client. libcurl is started before the first handle and ended after the last.
class CurrentClient {
 public:
  CurrentClient() { curl_global_init(CURL_GLOBAL_DEFAULT); }
  CurrentClient(const CurrentClient&) = delete;
  CurrentClient& operator=(const CurrentClient&) = delete;
  ~CurrentClient() {
    client_.reset();
    curl_global_cleanup();
  }

  std::shared_ptr<HttpClient> get() {
    std::shared_ptr<HttpClient> retired;  // ends outside the lock: it may close connections
    const std::lock_guard<std::mutex> lock(mutex_);
    auto configuration = Configuration::current();
    if (configuration != configuration_) {
      auto client = std::make_shared<HttpClient>(*configuration);
      retired = std::exchange(client_, std::move(client));
      configuration_ = std::move(configuration);
    }
    return client_;
  }

 private:
  std::mutex mutex_;
  std::shared_ptr<const Configuration> configuration_;  // under mutex_, the one client_ is for
  std::shared_ptr<HttpClient> client_;                  // under mutex_
};

bool readAnswer(Connection& connection, const std::string& address, Json::Value& answer,
                Failure& failure) {
  std::string reason;
  switch (connection.reader().read(connection.body(), answer, reason)) {
    case JsonOutcome::Read:
      return true;
    case JsonOutcome::ReadInvalidUtf8:
      REST_TRACE(1, "REST answer of " + address +
                        " is not valid UTF-8; its texts are passed on byte for byte");
      return true;
    case JsonOutcome::Refused:
      break;
  }
  failure = {
      "the answer (" + connection.describeAnswer() + ") is not usable JSON: " + printable(reason),
      "that rest.baseUrl names the service itself and no page of another one"};
  return false;
}

}  // namespace

HttpClient::HttpClient(const Configuration& configuration) : settings_(configuration) {
  if (!settings_.tlsVerify && ::strncasecmp(settings_.baseUrl.c_str(), "https:", 6) == 0) {
    REST_TRACE(1, "TLS certificates of the REST service are not checked: rest.tls.verify is false");
  }
}

HttpClient::~HttpClient() = default;

std::shared_ptr<HttpClient> HttpClient::current() {
  static CurrentClient client;
  return client.get();
}

bool HttpClient::send(const Nimbola::RestReq& request, Json::Value& answer, Failure& failure) {
  if (!settings_.baseUrlFault.empty()) {
    failure = {settings_.baseUrlFault, "rest.baseUrl"};
    return false;
  }
  std::string token;
  HttpRequest wire;
  if (!currentToken(settings_, token, failure)) return false;
  if (!composeRequest(request, settings_.baseUrl, token, wire, failure)) return false;
  auto connection = take();
  bool good = connection->exchange(wire, failure);
  if (good) {
    good = readAnswer(*connection, shownAddress(settings_.baseUrl, request.url), answer, failure);
  }
  giveBack(std::move(connection));
  return good;
}

std::unique_ptr<Connection> HttpClient::take() {
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    if (!idle_.empty()) {
      auto connection = std::move(idle_.back());
      idle_.pop_back();
      return connection;
    }
  }
  return std::make_unique<Connection>(settings_);
}

void HttpClient::giveBack(std::unique_ptr<Connection> connection) {
  connection->trim();
  const std::lock_guard<std::mutex> lock(mutex_);
  if (idle_.size() < settings_.maxConnections) idle_.push_back(std::move(connection));
}

}  // namespace orma::rest
