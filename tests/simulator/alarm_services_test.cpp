// Definitions, reasons and redefined severities over REST.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "generate.h"
#include "server_fixture.h"

namespace ormasim::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

constexpr char kDefinitions[] = "/rest/fault/v1/alarm-definitions";
constexpr char kReasons[] = "/rest/fault/v1/alarm-reasons";
constexpr char kRedefined[] = "/rest/fault/v1/redefined-alarms";

class AlarmServicesTest : public ServerTest {
 protected:
  AlarmServicesTest() {
    settings_.databaseFile = file_;
    GenerateOptions options;
    options.elements = 5;
    options.definitions = 200;
    generateFile(file_, options, false);
    serveNetwork(5);
  }

  Json::Value page(const char* path, std::int64_t offset, std::int64_t limit) {
    const httplib::Result result = post(path, "{\"offset\":" + std::to_string(offset) +
                                                  ",\"limit\":" + std::to_string(limit) + "}");
    EXPECT_EQ(result->status, 200);
    return json(result->body);
  }

  const std::string file_ = directory_.path("catalogue.db");
};

TEST_F(AlarmServicesTest, PagesOfDefinitionsMakeTheCatalogue) {
  std::vector<std::string> all;
  for (int offset = 0; offset < 300; offset += 90) {
    const Json::Value answer = page(kDefinitions, offset, 90);
    EXPECT_EQ(answer["totalCount"], 200);
    EXPECT_EQ(answer.size(), 2u);
    for (const Json::Value& row : answer["definitions"]) {
      EXPECT_THAT(row.getMemberNames(), ElementsAre("alarmGroupId", "alarmId", "alarmName",
                                                    "description", "eventType", "severity"));
      all.push_back(row["alarmGroupId"].asString() + "|" + row["alarmId"].asString() + "|" +
                    row["eventType"].asString() + "|" + row["severity"].asString() + "|" +
                    row["alarmName"].asString() + "|" + row["description"].asString());
      EXPECT_TRUE(row["alarmGroupId"].isString() && row["alarmId"].isString());
      EXPECT_TRUE(row["eventType"].isInt() && row["severity"].isInt());
    }
  }
  EXPECT_EQ(all, query(file_,
                       "SELECT group_id, alarm_id, event_type, severity, name, description "
                       "FROM alarm_definition ORDER BY seq"));
}

TEST_F(AlarmServicesTest, ReasonsStandUnderTheKeyOfDefinitions) {
  const Json::Value answer = page(kReasons, 1, 2);
  EXPECT_EQ(answer["totalCount"].asString(), query(file_, "SELECT count(*) FROM alarm_reason")[0]);
  ASSERT_EQ(answer["definitions"].size(), 2u);
  EXPECT_EQ(answer["definitions"][0], json(R"({"alarmGroupId":"1","alarmId":"1001","reasonId":2,
                     "causes":"The peer port is shut down",
                     "repairAction":"Open the peer port"})"));
}

TEST_F(AlarmServicesTest, RedefinedAlarmsCountTheirOffsetFromOne) {
  const Json::Value all = page(kRedefined, 1, 500);
  const Json::Value second = page(kRedefined, 2, 1);
  ASSERT_EQ(second["rows"].size(), 1u);
  EXPECT_EQ(second["rows"][0], all["rows"][1]);
  EXPECT_EQ(all["rows"].size(), all["count"].asUInt());
  EXPECT_EQ(all["rows"][0], json(R"({"alarmGroupId":"1","alarmId":"1001","newSeverity":2,
                                     "OldLevel":1,"Name":"LINK_DOWN"})"));
}

TEST_F(AlarmServicesTest, BehindTheEndThereIsNothing) {
  EXPECT_EQ(page(kDefinitions, 200, 10)["definitions"], Json::Value(Json::arrayValue));
  EXPECT_EQ(page(kRedefined, 5000, 10)["rows"], Json::Value(Json::arrayValue));
}

TEST_F(AlarmServicesTest, WhatIsNotUnderstoodIsRefusedWithAReason) {
  const struct {
    const char* path;
    const char* body;
    const char* reason;
  } kRefusals[] = {
      {kDefinitions, "{", "the body is not JSON"},
      {kDefinitions, "[]", "the body must be an object"},
      {kDefinitions, R"({"limit":5})", "the body lacks \"offset\""},
      {kReasons, R"({"offset":5})", "the body lacks \"limit\""},
      {kReasons, R"({"offset":0,"limit":5,"x":1})", "the body has the unknown member \"x\""},
      {kDefinitions, R"({"offset":-1,"limit":5})", "\"offset\" must be a number from 0 on"},
      {kRedefined, R"({"offset":0,"limit":5})", "\"offset\" must be a number from 1 on"},
      {kRedefined, R"({"offset":"1","limit":5})", "\"offset\" must be a number from 1 on"},
      {kDefinitions, R"({"offset":0,"limit":0})", "\"limit\" must be a number from 1 to 10000"},
      {kDefinitions, R"({"offset":0,"limit":10001})", "\"limit\" must be a number from 1 to 10000"},
  };
  for (const auto& refusal : kRefusals) {
    const httplib::Result result = post(refusal.path, refusal.body);
    EXPECT_EQ(result->status, 400) << refusal.body;
    EXPECT_EQ(reasonOf(result), refusal.reason) << refusal.body;
  }
  EXPECT_EQ(post(kDefinitions, R"({"offset":0,"limit":5})", "text/plain")->status, 400);
  EXPECT_EQ(get(kDefinitions)->status, 405);
}

class DocumentedAlarmServices : public ServerTest {};

TEST_F(DocumentedAlarmServices, ExamplesAreWhatIsAnswered) {
  serveNetwork(5);
  const std::string document = contentOf(ORMASIM_FORMATS_DOCUMENT);
  const std::pair<const char*, const char*> kExamples[] = {
      {kDefinitions, R"({"limit":1,"offset":0})"}, {kRedefined, R"({"limit":1,"offset":1})"}};
  for (const auto& [path, body] : kExamples) {
    EXPECT_THAT(document, HasSubstr(std::string("`POST ") + path + "`\n```json\n" + body +
                                    "\n```\n```json\n" + post(path, body)->body + "```\n"));
  }
}

TEST(FaultServerRules, ActionsAndMembersAreThoseOfTheFaultServer) {
  const auto fault = [](const std::string& members) {
    return FaultScript::parse(R"([{"path": "fault-server", "requests": [1])" + members + "}]",
                              "f.json", {"/a", kFaultServerPath});
  };
  FaultScript error = fault(R"(, "action": "error", "code": 5, "frame": 3)");
  const Fault* first = error.next(kFaultServerPath);
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(first->action, FaultAction::Error);
  EXPECT_EQ(first->code, 5u);
  EXPECT_EQ(first->frame, 3u);
  EXPECT_EQ(fault(R"(, "action": "cut")").next(kFaultServerPath)->frame, 1u);
  EXPECT_EQ(fault(R"(, "action": "bare", "frame": "all")").next(kFaultServerPath)->frame, 0u);

  const std::string at = "fault script f.json: rule 1: ";
  EXPECT_EQ(errorOf([&] { fault(R"(, "action": "status", "status": 503)"); }),
            at + "\"action\" is none of refuse, stall, cut, garbage, repeat, error, reject, empty, "
                 "bare, wrongOrder, otherCommand");
  EXPECT_EQ(errorOf([&] { fault(R"(, "action": "error")"); }), at + "action error needs \"code\"");
  EXPECT_EQ(errorOf([&] { fault(R"(, "action": "reject", "code": 0)"); }),
            at + "\"code\" is not a number from 1");
  EXPECT_EQ(errorOf([&] { fault(R"(, "action": "cut", "frame": 0)"); }),
            at + "\"frame\" is neither \"all\" nor a number from 1");
  EXPECT_EQ(errorOf([] {
              FaultScript::parse(
                  R"([{"path": "/a", "requests": [1], "action": "cut", "frame": 1}])", "f.json",
                  {"/a"});
            }),
            at + "\"frame\" has no meaning for action cut");
}

}  // namespace
}  // namespace ormasim::testing
