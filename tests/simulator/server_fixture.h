// The simulator's REST side within the test's process.
#pragma once

#include <gmock/gmock.h>
#include <httplib.h>

#include <memory>
#include <string>

#include "http_server.h"
#include "rest_handler.h"
#include "support.h"

namespace ormasim::testing {

constexpr char kDevices[] = "/rest/resource/v2/dev-properties";
constexpr char kTsNodes[] = "/rest/topology/v3/tsnodes";
constexpr char kSubnetView[] = "/rest/topology/v3/subnet-view";

class ServerTest : public ::testing::Test {
 protected:
  // A network of `elements`, served on a free port.
  void serveNetwork(std::uint64_t elements, std::size_t threads = 8);
  // For what comes before serveNetwork.
  void useFaults(const std::string& script);
  void useToken(const std::string& token) { settings_.token = token; }

  httplib::Result get(const std::string& target, const httplib::Headers& headers = {});
  httplib::Result post(const std::string& target, const std::string& body,
                       const char* contentType = "application/json");
  // The target of a query for topology nodes.
  static std::string tsNodes(const std::string& conditions, const std::string& more = "");
  // The answer's body, which must be {"error": text}; the text.
  static std::string reasonOf(const httplib::Result& result);

  TempDirectory directory_;
  RestSettings settings_;
  ExchangeTimes times_;
  std::unique_ptr<RestHandler> handler_;
  std::unique_ptr<HttpServer> server_;
  int port_ = 0;
};

}  // namespace ormasim::testing
