// What goes wrong with the pages of a walk.
#include <gmock/gmock.h>

#include "resource_fixture.h"

namespace ormasim::testing {
namespace {

class ResourceFaultsTest : public ResourceTest {
 protected:
  // The second request of the path meets the fault.
  void serveWith(const std::string& path, const std::string& action) {
    useFaults(R"([{"path": ")" + path + R"(", "requests": [2], "action": )" + action + "}]");
    serveNetwork(10);
  }
  Json::Value firstPage() { return posted(kGraphQuery, graphQuery("NE=2", R"(,"limit":5)")); }
  std::string nextBody(const Json::Value& page) {
    return R"({"query-id":")" + page["queryId"].asString() + "\"}";
  }
};

TEST_F(ResourceFaultsTest, CursorsExpireBeforeARequest) {
  serveWith(kGraphQuery, R"("expireCursors")");
  const Json::Value first = firstPage();
  const httplib::Result second = post(kGraphQuery, nextBody(first));
  EXPECT_EQ(second->status, 400);
  EXPECT_EQ(reasonOf(second), "\"query-id\" has expired, was used already or is none");
  EXPECT_EQ(firstPage()["objList"], first["objList"]);
}

TEST_F(ResourceFaultsTest, PageComesAgainAndTheWalkGoesOn) {
  serveWith(kGraphQuery, R"("repeat")");
  const Json::Value first = firstPage();
  EXPECT_EQ(posted(kGraphQuery, nextBody(first)), first);
  const Json::Value third = posted(kGraphQuery, nextBody(first));
  EXPECT_EQ(third["objList"].size(), 5u);
  EXPECT_NE(third["objList"], first["objList"]);
}

TEST_F(ResourceFaultsTest, FirstAnswerCannotBeARepetition) {
  useFaults(R"([{"path": ")" + std::string(kGraphQuery) +
            R"(", "requests": [1], "action": "repeat"}])");
  serveNetwork(3);
  const httplib::Result result = post(kGraphQuery, graphQuery("NE=2"));
  EXPECT_EQ(result->status, 500);
  EXPECT_EQ(reasonOf(result), "fault script: there is no answer to repeat");
}

TEST_F(ResourceFaultsTest, MemberIsReplacedByAnyValue) {
  const char* const values[] = {"null", "{}", "[]", "7", R"({"a":[1]})"};
  std::string rules;
  int request = 0;
  for (const char* value : values) {
    rules += (rules.empty() ? R"({"path": ")" : R"(,{"path": ")") + std::string(kElements) +
             R"(", "action": "replaceKey", "key": "objList", "value": )" + value +
             R"(, "requests": [)" + std::to_string(++request) + "]}";
  }
  useFaults("[" + rules + "]");
  serveNetwork(10);
  for (const char* value : values) {
    const Json::Value page = posted(kElements, R"({"limit":3})");
    EXPECT_EQ(page["objList"], json(R"({"v":)" + std::string(value) + "}")["v"]) << value;
    EXPECT_EQ(page["isTruncated"], Json::Value(true));
  }
  EXPECT_EQ(posted(kElements, R"({"limit":3})")["objList"].size(), 3u);
}

TEST_F(ResourceFaultsTest, MemberIsReplacedInEveryObject) {
  serveWith(kElements, R"("replaceKey", "key": "name", "value": null)");
  posted(kElements, R"({"limit":3})");
  for (const Json::Value& object : posted(kElements, R"({"limit":3})")["objList"]) {
    EXPECT_TRUE(object.isMember("name"));
    EXPECT_TRUE(object["name"].isNull());
  }
}

TEST_F(ResourceFaultsTest, AnswerWithoutTheMemberSaysSo) {
  serveWith(kElements, R"("replaceKey", "key": "dataList", "value": null)");
  posted(kElements, "{}");
  const httplib::Result result = post(kElements, "{}");
  EXPECT_EQ(result->status, 500);
  EXPECT_EQ(reasonOf(result), "fault script: the answer has no member \"dataList\"");
}

TEST_F(ResourceFaultsTest, PageFails) {
  serveWith(kFrames, R"("status", "status": 503)");
  EXPECT_EQ(post(kFrames, "{}")->status, 200);
  EXPECT_EQ(post(kFrames, "{}")->status, 503);
  EXPECT_EQ(post(kFrames, "{}")->status, 200);
}

TEST_F(ResourceFaultsTest, ListIsAbsent) {
  serveWith("/rest/resource/v2/port-properties", R"("removeKey", "key": "objList")");
  properties("port", {});
  EXPECT_EQ(posted("/rest/resource/v2/port-properties", R"({"nativeIds":[]})"), json("{}"));
}

}  // namespace
}  // namespace ormasim::testing
