// The queries of the fault service: what is asked and what comes back.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "http_service.h"
#include "orma/rest/nbi_http_proxy.h"
#include "rest_fixture.h"

using NS_UTIL::NBIHTTPProxy;
using testing::HasSubstr;

namespace {

constexpr char kFirstPage[] = "{\n   \"limit\" : 5000,\n   \"offset\" : 0\n}\n";

}  // namespace

// Definitions and reasons are of one shape.
struct Catalogue {
  const char* path;
  bool (*query)(Json::Value& answer, const std::string& body);
};

class AlarmCatalogue : public RestTest, public testing::WithParamInterface<Catalogue> {
 protected:
  Json::Value answer_ = "old";
};

TEST_P(AlarmCatalogue, PageIsAskedForByItsBody) {
  constexpr char kAnswer[] = R"({"totalCount":1,"definitions":[{"alarmId":"7"}]})";
  HttpService service(always(kAnswer));
  configureBaseUrl(service.url());
  ASSERT_TRUE(GetParam().query(answer_, kFirstPage));
  EXPECT_EQ(answer_, json(kAnswer));
  EXPECT_EQ(service.request().method, "POST");
  EXPECT_EQ(service.request().target, GetParam().path);
  EXPECT_EQ(service.request().body, kFirstPage);
}

TEST_P(AlarmCatalogue, FailureLeavesNull) {
  HttpService service(always("{}", 500));
  configureBaseUrl(service.url());
  EXPECT_FALSE(GetParam().query(answer_, kFirstPage));
  EXPECT_TRUE(answer_.isNull());
}

TEST_P(AlarmCatalogue, BodyThatIsNoJsonIsNotSent) {
  HttpService service(always("{}"));
  configureBaseUrl(service.url());
  EXPECT_FALSE(GetParam().query(answer_, "{\"offset\": "));
  EXPECT_TRUE(answer_.isNull());
  EXPECT_THAT(failureTrace(), HasSubstr("the query is no JSON"));
}

INSTANTIATE_TEST_SUITE_P(Queries, AlarmCatalogue,
                         testing::Values(Catalogue{"/rest/fault/v1/alarm-definitions",
                                                   NBIHTTPProxy::QueryAlarmDefinitionInfo},
                                         Catalogue{"/rest/fault/v1/alarm-reasons",
                                                   NBIHTTPProxy::QueryAlarmReasonInfo}));

class RedefinedAlarms : public RestTest {
 protected:
  bool query(const std::string& answer, int status = 200) {
    service_ = std::make_unique<HttpService>(always(answer, status));
    configureBaseUrl(service_->url());
    return NBIHTTPProxy::QueryRedefineAlarmDataList(answer_, R"({"offset": 1, "limit": 500})");
  }

  std::unique_ptr<HttpService> service_;
  Json::Value answer_ = "old";
};

TEST_F(RedefinedAlarms, RowsAreReachedByTheirIndexInDecimal) {
  std::string rows;
  for (int i = 0; i < 11; ++i) {
    rows += (i > 0 ? ",{\"alarmId\":\"" : "{\"alarmId\":\"") + std::to_string(i) + "\"}";
  }
  ASSERT_TRUE(query("{\"count\":11,\"rows\":[" + rows + "]}"));
  EXPECT_EQ(service_->request().target, "/rest/fault/v1/redefined-alarms");
  EXPECT_EQ(service_->request().body, R"({"offset": 1, "limit": 500})");
  EXPECT_EQ(answer_.size(), 12u);
  EXPECT_EQ(answer_["count"], 11);
  for (int i = 0; i < 11; ++i) {
    EXPECT_EQ(answer_[std::to_string(i)]["alarmId"], std::to_string(i));
  }
}

TEST_F(RedefinedAlarms, CountIsThatOfTheRowsWhateverTheServiceSays) {
  ASSERT_TRUE(query(R"({"count":100,"rows":[{"Name":"a"},null]})"));
  EXPECT_EQ(answer_, json(R"({"count":2,"0":{"Name":"a"},"1":null})"));
}

TEST_F(RedefinedAlarms, NoRowsAreACountOfZero) {
  ASSERT_TRUE(query(R"({"count":0,"rows":[]})"));
  EXPECT_EQ(answer_, json(R"({"count":0})"));
}

TEST_F(RedefinedAlarms, FailureLeavesNull) {
  EXPECT_FALSE(query("{}", 503));
  EXPECT_TRUE(answer_.isNull());
}

TEST_F(RedefinedAlarms, AnswerOfAnotherFormIsAFailure) {
  for (const char* answer : {"[]", "null", "{}", R"({"count":1,"rows":{}})", "7"}) {
    EXPECT_FALSE(query(answer)) << answer;
    EXPECT_TRUE(answer_.isNull()) << answer;
    EXPECT_EQ(failureTrace(), "Redefined alarms: the answer of " + service_->url() +
                                  "/rest/fault/v1/redefined-alarms has no array \"rows\"; check "
                                  "that rest.baseUrl names the right service in a matching "
                                  "release");
  }
}
