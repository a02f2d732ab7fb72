#include "server_fixture.h"

#include <utility>

#include "generate.h"
#include "services.h"

namespace ormasim::testing {
namespace {

// As many elements as the tests ask about: a shelf takes a millisecond to make.
constexpr std::uint64_t kEquipped = 30;

}  // namespace

void ServerTest::serveNetwork(std::uint64_t elements, std::size_t threads) {
  if (settings_.databaseFile.empty()) {
    settings_.databaseFile = directory_.path("net.db");
    generateFile(settings_.databaseFile, {elements, 7, kEquipped}, false);
  }
  handler_ = std::make_unique<RestHandler>(std::move(settings_));
  server_ = std::make_unique<HttpServer>(*handler_, threads, times_);
  port_ = server_->start(0);
}

void ServerTest::useFaults(const std::string& script) {
  settings_.faults = FaultScript::parse(script, "faults.json", servicePaths());
}

httplib::Result ServerTest::get(const std::string& target, const httplib::Headers& headers) {
  httplib::Client client("127.0.0.1", port_);
  client.set_read_timeout(30);
  return client.Get(target.c_str(), headers);
}

httplib::Result ServerTest::post(const std::string& target, const std::string& body,
                                 const char* contentType) {
  httplib::Client client("127.0.0.1", port_);
  client.set_read_timeout(30);
  return client.Post(target.c_str(), body, contentType);
}

std::string ServerTest::tsNodes(const std::string& conditions, const std::string& more) {
  return std::string(kTsNodes) + "?conditions=" + httplib::detail::encode_query_param(conditions) +
         more;
}

std::string ServerTest::reasonOf(const httplib::Result& result) {
  if (!result) return "no answer";
  EXPECT_EQ(result->get_header_value("Content-Type"), "application/json");
  const Json::Value body = json(result->body);
  EXPECT_EQ(body.size(), 1u);
  return body["error"].asString();
}

}  // namespace ormasim::testing
