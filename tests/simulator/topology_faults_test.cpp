#include <gmock/gmock.h>

#include "server_fixture.h"
#include "topology_walk.h"

namespace ormasim::testing {
namespace {

// Two pages of five objects, of which the second fails or is spoilt.
class TopologyFaultsTest : public ServerTest {
 protected:
  void serveWith(const std::string& action) {
    std::string rules;
    for (const char* path : {kTsNodes, kSubnetView}) {
      rules += std::string(rules.empty() ? "" : ",") + R"({"path": ")" + path +
               R"(", "requests": [2], "action": )" + action + "}";
    }
    useFaults("[" + rules + "]");
    serveNetwork(30);
  }

  httplib::Result nodes(const std::string& marker = "") {
    return get(std::string(kTsNodes) + "?limit=5" + (marker.empty() ? "" : "&marker=" + marker));
  }
  httplib::Result view(const std::string& marker = "") {
    return post(
        kSubnetView,
        viewBody(viewFilter(expression("nodeClass", "in", R"(["ne"])", "\"false\"")), "5", marker));
  }
  // The second pages, with the first ones' markers.
  httplib::Result secondNodes() { return nodes(json(nodes()->body)["marker"].asString()); }
  httplib::Result secondView() { return view(json(view()->body)["marker"].asString()); }
};

TEST_F(TopologyFaultsTest, PageIsNotFound) {
  serveWith("\"status\", \"status\": 404");
  EXPECT_EQ(secondNodes()->status, 404);
  EXPECT_EQ(secondView()->status, 404);
  EXPECT_EQ(nodes()->status, 200);
  EXPECT_EQ(view()->status, 200);
}

TEST_F(TopologyFaultsTest, PageFailsInsideTheServer) {
  serveWith("\"status\", \"status\": 500");
  EXPECT_EQ(secondNodes()->status, 500);
  EXPECT_EQ(secondView()->status, 500);
}

TEST_F(TopologyFaultsTest, PageIsCut) {
  serveWith("\"cut\"");
  EXPECT_EQ(secondNodes().error(), httplib::Error::Read);
  EXPECT_EQ(secondView().error(), httplib::Error::Read);
  EXPECT_EQ(view()->status, 200);
}

TEST_F(TopologyFaultsTest, SendOfAPageFails) {
  serveWith("\"refuse\"");
  EXPECT_FALSE(secondNodes());
  EXPECT_FALSE(secondView());
  EXPECT_EQ(nodes()->status, 200);
  EXPECT_EQ(view()->status, 200);
}

TEST_F(TopologyFaultsTest, FlagOfANextPageIsAText) {
  serveWith(R"("wrongType", "key": "hasNext")");
  EXPECT_EQ(json(view()->body)["hasNext"], Json::Value(true));
  EXPECT_EQ(json(view()->body)["hasNext"], Json::Value("true"));
  EXPECT_EQ(json(view()->body)["hasNext"], Json::Value(true));
}

TEST_F(TopologyFaultsTest, ListIsNoArray) {
  serveWith(R"("wrongType", "key": "dataList")");
  EXPECT_TRUE(json(secondNodes()->body)["dataList"].isString());
  EXPECT_TRUE(json(secondView()->body)["dataList"].isString());
  EXPECT_TRUE(json(nodes()->body)["dataList"].isArray());
}

TEST_F(TopologyFaultsTest, MarkerIsMissing) {
  serveWith(R"("removeKey", "key": "marker")");
  const Json::Value page = json(secondNodes()->body);
  EXPECT_EQ(page.getMemberNames(), (std::vector<std::string>{"dataList", "isTruncated"}));
  EXPECT_EQ(page["isTruncated"], Json::Value(true));
  EXPECT_EQ(json(secondView()->body).getMemberNames(),
            (std::vector<std::string>{"dataList", "hasNext"}));
}

}  // namespace
}  // namespace ormasim::testing
