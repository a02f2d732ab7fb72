// What the client reports of its exchanges.
#include "../metrics/exchange_counts.h"

#include <gtest/gtest.h>

#include "http_service.h"
#include "orma/rest/nbi_http_proxy.h"
#include "rest_fixture.h"
#include "scripted_peer.h"

namespace {

class RestCounts : public RestTest {
 protected:
  // The counts of one request.
  std::string countsAt(const std::string& baseUrl, const Json::Value& more = Json::objectValue) {
    Json::Value rest = more;
    rest["baseUrl"] = baseUrl;
    configure(rest);
    const ExchangeCounts counts(orma::metrics::OutsideService::kRest);
    Json::Value answer;
    static_cast<void>(Nimbola::SendRestReq(get("/p"), answer));
    return counts.since();
  }
  std::string countsOf(const std::string& body, int status = 200) {
    const HttpService service(always(body, status));
    return countsAt(service.url());
  }
  std::string countsOfBytes(const std::string& bytes) {
    const ScriptedPeer peer(answers(bytes));
    return countsAt(peer.url());
  }
};

constexpr char kAnswered[] = "1 answered, 0 refused, 0 unreached";
constexpr char kRefused[] = "0 answered, 1 refused, 0 unreached";
constexpr char kUnreached[] = "0 answered, 0 refused, 1 unreached";
constexpr char kNothing[] = "0 answered, 0 refused, 0 unreached";

TEST_F(RestCounts, UsableJsonIsAnswered) { EXPECT_EQ(countsOf("{}"), kAnswered); }

TEST_F(RestCounts, StatusAndWhatIsNoJsonAreRefused) {
  EXPECT_EQ(countsOf("{}", 503), kRefused);
  EXPECT_EQ(countsOf("<html>"), kRefused);
}

TEST_F(RestCounts, AnAnswerThatIsTooLargeIsRefused) {
  const HttpService service(always(std::string(5000, ' ')));
  Json::Value limit;
  limit["maxAnswerBytes"] = 1024;
  EXPECT_EQ(countsAt(service.url(), limit), kRefused);
}

TEST_F(RestCounts, WithoutAWholeAnswerItWasNotReached) {
  EXPECT_EQ(countsAt(ClosedPort().url()), kUnreached);
  EXPECT_EQ(countsOfBytes("HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\n{}"), kUnreached);
}

TEST_F(RestCounts, WhatIsNotSentDoesNotCount) {
  EXPECT_EQ(countsAt("ftp://127.0.0.1"), kNothing);
  Json::Value token;
  token["token"]["file"] = "no-such-file";
  EXPECT_EQ(countsAt("http://127.0.0.1:1", token), kNothing);
}

TEST_F(RestCounts, EachPageOfTheDeviceListingCounts) {
  const HttpService service([](const httplib::Request& request, httplib::Response& response) {
    const bool first = !request.has_param("marker");
    response.set_content(first ? R"({"objList":[],"isTruncated":true,"marker":"2"})"
                               : R"({"objList":[],"isTruncated":false})",
                         "application/json");
  });
  configureBaseUrl(service.url());
  const ExchangeCounts counts(orma::metrics::OutsideService::kRest);
  std::vector<Json::Value> devices;
  EXPECT_TRUE(NS_UTIL::NBIHTTPProxy::GetAllDevProperty(devices));
  EXPECT_EQ(counts.since(), "2 answered, 0 refused, 0 unreached");
}

}  // namespace
