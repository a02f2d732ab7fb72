#include "http_client.h"

#include <strings.h>

#include <utility>

#include "orma/bundle/configuration.h"
#include "token.h"
#include "wiping_memory.h"

namespace orma::rest {
namespace {

// The process's client. libcurl is started before the first handle and ended after the last.
class CurrentClient {
 public:
  CurrentClient() { startCurl(); }
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

// A key that every user can read is none.
bool mayUseKey(const Settings& settings, Failure& failure) {
  if (settings.tlsKeyFile.empty()) return true;
  const std::string fault = secretFileFault(settings.tlsKeyFile, SecretReaders::kOwnerAndGroup);
  if (fault.empty()) return true;
  failure = {"the key file " + printable(settings.tlsKeyFile) + " " + fault, "rest.tls.keyFile"};
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

std::unique_ptr<Connection> HttpClient::fetch(const Nimbola::RestReq& request, Failure& failure,
                                              std::optional<std::string> body) {
  if (!settings_.baseUrlFault.empty()) {
    failure = {settings_.baseUrlFault, "rest.baseUrl"};
    return nullptr;
  }
  SecretText token;
  HttpRequest wire;
  if (!mayUseKey(settings_, failure) || !currentToken(settings_, token, failure)) return nullptr;
  if (!composeRequest(request, settings_.baseUrl, token.view(), wire, failure)) return nullptr;
  if (body) wire.body = std::move(*body);
  auto connection = take();
  if (!connection->exchange(wire, failure)) giveBack(std::move(connection));
  return connection;
}

bool HttpClient::read(std::unique_ptr<Connection> connection, const Nimbola::RestReq& request,
                      Json::Value& answer, Failure& failure, const JsonReader::Glance& glance) {
  std::string reason;
  const JsonOutcome outcome = connection->reader().read(connection->body(), answer, reason, glance);
  if (outcome == JsonOutcome::Refused) {
    failure = {"the answer (" + connection->describeAnswer() +
                   ") is not usable JSON: " + printable(reason),
               "that rest.baseUrl names the service itself and no page of another one"};
  } else if (outcome == JsonOutcome::ReadInvalidUtf8) {
    REST_TRACE(1, "REST answer of " + shownAddress(settings_.baseUrl, request.url) +
                      " is not valid UTF-8; its texts are passed on byte for byte");
  }
  connection->conclude(outcome != JsonOutcome::Refused);
  giveBack(std::move(connection));
  return outcome != JsonOutcome::Refused;
}

void HttpClient::traceFailure(const Nimbola::RestReq& request, const Failure& failure) const {
  const char* const verb = request.method == Nimbola::kMethodBody ? "POST " : "GET ";
  REST_TRACE(0, "REST request " + std::string(verb) + shownAddress(settings_.baseUrl, request.url) +
                    " failed: " + failure.reason + "; check " + failure.check);
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
