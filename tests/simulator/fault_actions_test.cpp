#include <gmock/gmock.h>

#include <chrono>

#include "raw_client.h"
#include "server_fixture.h"

namespace ormasim::testing {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::StartsWith;

// Each test's first request fails in its way and the second is answered as ever, if the
// connection allows it.
class FaultActionsTest : public ServerTest {
 protected:
  void serveWith(const std::string& action) {
    useFaults(R"([{"path": "/rest/resource/v2/dev-properties", "requests": [1], "action": )" +
              action + "}]");
    serveNetwork(10);
  }
  // The answer to a request that no fault touches.
  std::string soundBody() { return get(kDevices)->body; }
};

TEST_F(FaultActionsTest, RefuseClosesWithoutAByte) {
  serveWith(R"("refuse")");
  RawClient client(port_);
  client.get(kDevices);
  EXPECT_TRUE(client.closedSilently());
  EXPECT_EQ(get(kDevices)->status, 200);
}

TEST_F(FaultActionsTest, CutAnnouncesTheWholeBodyAndSendsHalf) {
  serveWith(R"("cut")");
  RawClient client(port_);
  client.get(kDevices);
  const std::string answer = client.readToEnd();
  EXPECT_TRUE(client.ended());
  const std::string whole = soundBody();
  EXPECT_THAT(headOf(answer),
              AllOf(StartsWith("HTTP/1.1 200 OK\r\n"),
                    HasSubstr("Content-Length: " + std::to_string(whole.size()) + "\r\n"),
                    HasSubstr("Content-Type: application/json\r\n")));
  EXPECT_EQ(bodyOf(answer), whole.substr(0, whole.size() / 2));
}

TEST_F(FaultActionsTest, GarbageIsAWholeAnswerThatIsNoJson) {
  serveWith(R"("garbage")");
  RawClient client(port_);
  client.get(kDevices);
  const std::string answer = client.readAnswer();
  EXPECT_THAT(headOf(answer), AllOf(StartsWith("HTTP/1.1 200 OK\r\n"),
                                    HasSubstr("Content-Type: application/json\r\n")));
  EXPECT_EQ(bodyOf(answer), "<html>\xFF\xFE this is no JSON \x80{]\n");
  client.get(kDevices);
  EXPECT_EQ(bodyOf(client.readAnswer()), soundBody());
}

TEST_F(FaultActionsTest, StatusIsAnsweredWithAReason) {
  serveWith(R"("status", "status": 503)");
  const httplib::Result result = get(kDevices);
  EXPECT_EQ(result->status, 503);
  EXPECT_EQ(reasonOf(result), "fault script: status 503");
  EXPECT_EQ(get(kDevices)->status, 200);
}

TEST_F(FaultActionsTest, StallForATimeAnswersThen) {
  serveWith(R"("stall", "seconds": 0.3)");
  const auto begin = std::chrono::steady_clock::now();
  const httplib::Result result = get(kDevices);
  EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(300));
  ASSERT_TRUE(result);
  EXPECT_EQ(result->body, soundBody());
}

TEST_F(FaultActionsTest, StalledConnectionIsFreedWhenItsClientLeaves) {
  useFaults(
      R"([{"path": "/rest/resource/v2/dev-properties", "requests": [1], "action": "stall"}])");
  serveNetwork(10, 1);
  {
    RawClient leaver(port_);
    leaver.get(kDevices);
  }
  // The one thread there is serves on.
  EXPECT_EQ(get(kDevices)->status, 200);
}

TEST_F(FaultActionsTest, WrongTypeMakesANumberAText) {
  serveWith(R"("wrongType", "key": "typeId")");
  const Json::Value spoilt = json(get(kDevices)->body);
  const Json::Value sound = json(soundBody());
  for (Json::ArrayIndex i = 0; i < sound["objList"].size(); ++i) {
    EXPECT_EQ(spoilt["objList"][i]["typeId"],
              Json::Value(std::to_string(sound["objList"][i]["typeId"].asInt())));
    EXPECT_EQ(spoilt["objList"][i]["name"], sound["objList"][i]["name"]);
  }
}

TEST_F(FaultActionsTest, WrongTypeMakesATextAnArray) {
  serveWith(R"("wrongType", "key": "nativeId")");
  const Json::Value row = json(get(kDevices)->body)["objList"][0];
  ASSERT_TRUE(row["nativeId"].isArray());
  EXPECT_EQ(row["nativeId"][0], Json::Value("OS=1"));
}

TEST_F(FaultActionsTest, WrongTypeMakesAFlagAText) {
  serveWith(R"("wrongType", "key": "isTruncated")");
  EXPECT_EQ(json(get(kDevices)->body)["isTruncated"], Json::Value("false"));
}

TEST_F(FaultActionsTest, WrongTypeMakesAListAText) {
  serveWith(R"("wrongType", "key": "objList")");
  const Json::Value spoilt = json(get(kDevices)->body);
  ASSERT_TRUE(spoilt["objList"].isString());
  EXPECT_EQ(json(spoilt["objList"].asString()), json(soundBody())["objList"]);
}

TEST_F(FaultActionsTest, WrongTypeOfAKeyThatIsNotThereIsToldAsAMistakeOfTheScript) {
  serveWith(R"("wrongType", "key": "objlist")");
  const httplib::Result result = get(kDevices);
  EXPECT_EQ(result->status, 500);
  EXPECT_EQ(reasonOf(result), "fault script: the answer has no member \"objlist\"");
}

TEST_F(FaultActionsTest, RemoveKeyLeavesTheMemberOutAtAnyDepth) {
  serveWith(R"("removeKey", "key": "name")");
  const Json::Value spoilt = json(get(kDevices)->body);
  Json::Value expected = json(soundBody());
  for (Json::Value& row : expected["objList"]) row.removeMember("name");
  EXPECT_EQ(spoilt, expected);
}

TEST_F(FaultActionsTest, RemoveKeyThatIsNotThereIsToldAsAMistakeOfTheScript) {
  serveWith(R"("removeKey", "key": "Marker")");
  const httplib::Result result = get(kDevices);
  EXPECT_EQ(result->status, 500);
  EXPECT_EQ(reasonOf(result), "fault script: the answer has no member \"Marker\"");
}

TEST_F(FaultActionsTest, FaultComesBeforeTheToken) {
  useToken("sesame");
  serveWith(R"("status", "status": 418)");
  EXPECT_EQ(get(kDevices)->status, 418);
  EXPECT_EQ(get(kDevices)->status, 401);
}

}  // namespace
}  // namespace ormasim::testing
