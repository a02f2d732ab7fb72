// The queries that take one exchange each: what is asked and what comes back.
#include <gmock/gmock.h>

#include "http_service.h"
#include "orma/rest/nbi_http_proxy.h"
#include "rest_fixture.h"

using NS_UTIL::NBIHTTPProxy;
using ::testing::HasSubstr;
using ::testing::StartsWith;

struct PropertyRead {
  const char* kind;
  bool (*read)(Json::Value& answer, const std::vector<std::string>& fdns);
};

void PrintTo(const PropertyRead& row, std::ostream* out) { *out << row.kind; }

class PropertyReads : public RestTest, public ::testing::WithParamInterface<PropertyRead> {};

TEST_P(PropertyReads, PostTheNamesToThePathOfTheKind) {
  HttpService service(always(R"({"objList":[{"nativeId":"NE=2"}]})"));
  configureBaseUrl(service.url());
  Json::Value answer = "old";
  ASSERT_TRUE(GetParam().read(answer, {"NE=2", "NE=3,FR=0"}));
  EXPECT_EQ(answer, json(R"({"objList":[{"nativeId":"NE=2"}]})"));
  EXPECT_EQ(service.request().method, "POST");
  EXPECT_EQ(service.request().target,
            std::string("/rest/resource/v2/") + GetParam().kind + "-properties");
  EXPECT_EQ(service.request().body, R"({"nativeIds":["NE=2","NE=3,FR=0"]})");
}

TEST_P(PropertyReads, AskForNothingWithAnEmptyList) {
  HttpService service(always(R"({"objList":[]})"));
  configureBaseUrl(service.url());
  Json::Value answer;
  ASSERT_TRUE(GetParam().read(answer, {}));
  EXPECT_EQ(service.request().body, R"({"nativeIds":[]})");
}

// Written without a value of them, and yet as the client writes texts.
TEST_P(PropertyReads, WriteEveryNameAsJson) {
  HttpService service(always(R"({"objList":[]})"));
  configureBaseUrl(service.url());
  Json::Value answer;
  ASSERT_TRUE(GetParam().read(answer, {"", "框,S=é", "a\"b", "a\\b", "a\nb\x01", "/'<>&\x7F"}));
  EXPECT_EQ(service.request().body,
            "{\"nativeIds\":[\"\",\"框,S=é\",\"a\\\"b\",\"a\\\\b\",\"a\\nb\\u0001\","
            "\"/'<>&\x7F\"]}");
}

TEST_P(PropertyReads, LeaveNullOnFailureAndSayWhy) {
  HttpService service(always("{}", 503));
  configureBaseUrl(service.url());
  Json::Value answer = "old";
  EXPECT_FALSE(GetParam().read(answer, {"NE=2"}));
  EXPECT_TRUE(answer.isNull());
  EXPECT_THAT(failureTrace(), HasSubstr("HTTP status 503"));
}

INSTANTIATE_TEST_SUITE_P(
    OfEachKind, PropertyReads,
    ::testing::Values(PropertyRead{"port", NBIHTTPProxy::GetPortResourcePropertyByFDNs},
                      PropertyRead{"slot", NBIHTTPProxy::GetSlotResourcePropertyByFDNs},
                      PropertyRead{"card", NBIHTTPProxy::GetCardResourcePropertyByFDNs},
                      PropertyRead{"frame", NBIHTTPProxy::GetFrameResourcePropertyByFDNs},
                      PropertyRead{"ne", NBIHTTPProxy::GetNEResourcePropertyByFDNs}),
    [](const auto& row) { return std::string(row.param.kind); });

class TextQueries : public RestTest {
 protected:
  Json::Value answer_ = "old";
};

TEST_F(TextQueries, AccessQueryGoesToThePathThatIsGiven) {
  HttpService service(always(R"({"objList":[]})"));
  configureBaseUrl(service.url());
  const std::string body = "{\n\t\"limit\" : 1000,\n\t\"name\" : \"框\"\n}\n";
  ASSERT_TRUE(NBIHTTPProxy::GetAcessResource(answer_, "/rest/a/query", body));
  EXPECT_EQ(answer_, json(R"({"objList":[]})"));
  EXPECT_EQ(service.request().method, "POST");
  EXPECT_EQ(service.request().target, "/rest/a/query");
  EXPECT_EQ(service.request().body, body);  // as it stands, layout and all
}

TEST_F(TextQueries, PlaceAndKeeperQueryHasAPathOfItsOwn) {
  HttpService service(always(R"({"locationInfo":[]})"));
  configureBaseUrl(service.url());
  const std::string body = R"({"nativeIds":["NE=2"],"needMaintenanceInfo":false})";
  ASSERT_TRUE(NBIHTTPProxy::QueryLocalInfoAndMaintenInfo(answer_, body));
  EXPECT_EQ(answer_, json(R"({"locationInfo":[]})"));
  EXPECT_EQ(service.request().target, "/rest/resource/v2/location-maintenance");
  EXPECT_EQ(service.request().body, body);
}

TEST_F(TextQueries, FailureLeavesNull) {
  HttpService service(always("no JSON"));
  configureBaseUrl(service.url());
  EXPECT_FALSE(NBIHTTPProxy::GetAcessResource(answer_, "/rest/a/query", "{}"));
  EXPECT_TRUE(answer_.isNull());
  answer_ = "old";
  EXPECT_FALSE(NBIHTTPProxy::QueryLocalInfoAndMaintenInfo(answer_, "{}"));
  EXPECT_TRUE(answer_.isNull());
}

TEST_F(TextQueries, TextThatIsNoJsonIsNotSent) {
  HttpService service(always("{}"));
  for (const std::string& text :
       {std::string(), std::string("{"), std::string("{} x"), std::string(101, '[')}) {
    configureBaseUrl(service.url());
    answer_ = "old";
    EXPECT_FALSE(NBIHTTPProxy::GetAcessResource(answer_, "/rest/a/query", text)) << text;
    EXPECT_TRUE(answer_.isNull());
    EXPECT_THAT(failureTrace(), StartsWith("REST request POST " + service.url() +
                                           "/rest/a/query failed: the query is no JSON: "));
  }
  EXPECT_TRUE(service.requests().empty());
}
