#include <gmock/gmock.h>

#include "server_fixture.h"
#include "topology_walk.h"

namespace ormasim::testing {
namespace {

struct TopologyRefusal {
  std::string request;  // conditions, target or body
  std::string reason;
};

const char* const kAnyNode = R"(["ne"])";

class TopologyRequestsTest : public ServerTest {
 protected:
  void SetUp() override { serveNetwork(10); }

  void expectRefused(const httplib::Result& result, const TopologyRefusal& refusal) {
    ASSERT_TRUE(result) << refusal.request;
    EXPECT_EQ(result->status, 400) << refusal.request;
    EXPECT_EQ(reasonOf(result), refusal.reason) << refusal.request;
  }
};

// Refusals of one expression, of which each service has its own form of "caseSensitive".
std::vector<TopologyRefusal> expressionRefusals(const std::string& flag) {
  const std::string values = "\"value\" of operator \"in\" must be an array of 1 to 1000 values";
  return {
      {expression("label", "equal", "\"x\"", flag),
       "\"name\" is none of nodeClass, objId, parentId, nativeId and topoId"},
      {expression("nodeclass", "equal", "\"x\"", flag),
       "\"name\" is none of nodeClass, objId, parentId, nativeId and topoId"},
      {expression("nodeClass", "like", "\"x\"", flag), "\"operator\" must be \"equal\" or \"in\""},
      {expression("nodeClass", "IN", kAnyNode, flag), "\"operator\" must be \"equal\" or \"in\""},
      {expression("nodeClass", "equal", kAnyNode, flag), "\"value\" must be a text"},
      {expression("nodeClass", "equal", "null", flag), "\"value\" must be a text"},
      {expression("nodeClass", "in", "[\"ne\",7]", flag), "\"value\" must be a text"},
      {expression("nodeClass", "in", "\"ne\"", flag), values},
      {expression("nodeClass", "in", "[]", flag), values},
      {expression("topoId", "equal", "\"101\"", flag),
       "\"value\" of topoId must be a whole number"},
      {expression("topoId", "equal", "1.5", flag), "\"value\" of topoId must be a whole number"},
      {R"({"name":"nodeClass","operator":"in","value":["ne"]})",
       "an expression lacks \"caseSensitive\""},
      {R"({"name":"nodeClass","operator":"in","value":["ne"],"caseSensitive":)" + flag +
           R"(,"not":true})",
       "an expression has the unknown member \"not\""},
      {"[]", "an expression must be an object"},
  };
}

TEST_F(TopologyRequestsTest, WrongConditionsOfANodeQueryAreRefusedWithTheReason) {
  std::vector<TopologyRefusal> refusals = expressionRefusals("true");
  for (TopologyRefusal& refusal : refusals) refusal.request = conditions({refusal.request});
  const char* const flag = "\"caseSensitive\" must be true or false";
  const std::string good = expression("nodeClass", "in", kAnyNode, "true");
  const std::vector<TopologyRefusal> more = {
      {conditions({expression("nodeClass", "in", kAnyNode, "\"false\"")}), flag},
      {conditions({expression("nodeClass", "in", kAnyNode, "0")}), flag},
      {conditions({good, expression("nodeClass", "in", kAnyNode, "null")}), flag},
      {R"([{"logOp":"or","simple":)" + good + "}]", "\"logOp\" must be \"and\""},
      {R"([{"logOp":0,"simple":)" + good + "}]", "\"logOp\" must be \"and\""},
      {R"([{"simple":)" + good + "}]", "a condition lacks \"logOp\""},
      {R"([{"logOp":"and"}])", "a condition lacks \"simple\""},
      {R"([{"logOp":"and","complex":{},"simple":)" + good + "}]",
       "a condition has the unknown member \"complex\""},
      {R"([{"logOp":"and","simple":[)" + good + "]}]", "an expression must be an object"},
      {"[7]", "a condition must be an object"},
      {"{}", "parameter \"conditions\" must be an array"},
      {"", "parameter \"conditions\" is not JSON"},
      {"[", "parameter \"conditions\" is not JSON"},
      {"[] x", "parameter \"conditions\" is not JSON"},
      {std::string(2000, '['), "parameter \"conditions\" is not JSON"},
  };
  refusals.insert(refusals.end(), more.begin(), more.end());
  for (const TopologyRefusal& refusal : refusals)
    expectRefused(get(tsNodes(refusal.request)), refusal);
}

TEST_F(TopologyRequestsTest, WrongParametersOfANodeQueryAreRefusedWithTheReason) {
  const std::string path = kTsNodes;
  const std::string marker = "parameter \"marker\" is none that a page has handed out";
  std::vector<TopologyRefusal> refusals = {
      {path + "?limit=0", "parameter \"limit\" is \"0\", not a number from 1 to 10000"},
      {path + "?limit=10001", "parameter \"limit\" is \"10001\", not a number from 1 to 10000"},
      {path + "?limit=x", "parameter \"limit\" is \"x\", not a number from 1 to 10000"},
      {path + "?limit=1&limit=2", "parameter \"limit\" is given more than once"},
      {path + "?conditions=[]&conditions=[7]", "parameter \"conditions\" is given more than once"},
      {path + "?contentSelector=[]", "unknown parameter \"contentSelector\""},
      {path + "?condition=[]", "unknown parameter \"condition\""},
  };
  for (const char* garbage :
       {"", "t", "t1", "t1-", "t-1", "t1-x", "t1-1x", "t01-1", "t1-01", "x1-1", "t3-1", "t1--1",
        "t--1-1", "t1-9223372036854775808", "d3", "%20t1-1", "t1-1%20", "t1%2B1"}) {
    refusals.push_back({path + "?marker=" + garbage, marker});
  }
  for (const TopologyRefusal& refusal : refusals) expectRefused(get(refusal.request), refusal);
}

TEST_F(TopologyRequestsTest, WrongBodiesOfAViewQueryAreRefusedWithTheReason) {
  std::vector<TopologyRefusal> refusals = expressionRefusals("\"false\"");
  for (TopologyRefusal& refusal : refusals)
    refusal.request = viewBody(viewFilter(refusal.request), "9");
  const std::string good = expression("nodeClass", "in", kAnyNode, "\"false\"");
  const std::string filter = viewFilter(good);
  const char* const flag = "\"caseSensitive\" must be the text \"true\" or \"false\"";
  const char* const limit = "\"limit\" must be a number from 1 to 10000";
  const char* const marker = "\"marker\" is none that a page has handed out";
  const std::vector<TopologyRefusal> more = {
      {viewBody(viewFilter(expression("nodeClass", "in", kAnyNode, "false")), "9"), flag},
      {viewBody(viewFilter(expression("nodeClass", "in", kAnyNode, "\"False\"")), "9"), flag},
      {viewBody(R"({"logOp":"or","simple":)" + good + "}", "9"), "\"logOp\" must be \"and\""},
      {viewBody(R"({"simple":)" + good + "}", "9"), "\"filter\" lacks \"logOp\""},
      {viewBody(R"({"logOp":"and","simple":[)" + good + "]}", "9"),
       "an expression must be an object"},
      {viewBody(R"({"logOp":"and","complex":[],"simple":)" + good + "}", "9"),
       "\"filter\" has the unknown member \"complex\""},
      {viewBody("7", "9"), "\"filter\" must be an object"},
      {viewBody(filter, "0"), limit},
      {viewBody(filter, "10001"), limit},
      {viewBody(filter, "-1"), limit},
      {viewBody(filter, "1.5"), limit},
      {viewBody(filter, "\"9\""), limit},
      {viewBody(filter, "9", "garbage"), marker},
      {viewBody(filter, "9", "t9-1"), marker},
      {viewBody(filter, "9,\"marker\":\"\""), marker},
      {viewBody(filter, "9,\"marker\":7"), marker},
      {viewBody(filter, "9,\"page\":1"), "the body has the unknown member \"page\""},
      {viewBody(filter, "9,\"marker\":\"t1-1\",\"page\":1"),
       "the body has the unknown member \"page\""},
      {R"({"condition":{"filter":)" + filter + "}}", "the body lacks \"limit\""},
      {R"({"limit":9})", "the body lacks \"condition\""},
      {R"({"limit":9,"condition":[]})", "\"condition\" must be an object"},
      {R"({"limit":9,"condition":{}})", "\"condition\" lacks \"filter\""},
      {"[]", "the body must be an object"},
      {"", "the body is not JSON"},
      {viewBody(filter, "9,\"limit\":9"), "the body is not JSON"},
      {std::string(100000, '['), "the body is not JSON"},
  };
  refusals.insert(refusals.end(), more.begin(), more.end());
  for (const TopologyRefusal& refusal : refusals) {
    expectRefused(post(kSubnetView, refusal.request), refusal);
  }
}

TEST_F(TopologyRequestsTest, ViewQueryIsABodyOfJsonAndNothingElse) {
  const std::string body =
      viewBody(viewFilter(expression("nodeClass", "in", kAnyNode, "\"false\"")), "9");
  EXPECT_EQ(post(kSubnetView, body)->status, 200);
  expectRefused(post(kSubnetView, body, "text/plain"),
                {"text/plain", "header Content-Type is not application/json"});
  expectRefused(post(std::string(kSubnetView) + "?limit=9", body),
                {"?limit=9", "unknown parameter \"limit\""});
}

TEST_F(TopologyRequestsTest, AsManyValuesAsAreAllowedAreTaken) {
  std::string values = "\"NE=5\"";
  for (int i = 1; i < 1000; ++i) values += ",\"NE=5\"";
  const auto body = [&values](const char* more) {
    return viewBody(viewFilter(expression("nativeId", "in", "[" + values + more + "]", "\"true\"")),
                    "9");
  };
  EXPECT_EQ(json(post(kSubnetView, body(""))->body)["dataList"].size(), 1u);
  expectRefused(
      post(kSubnetView, body(",\"NE=5\"")),
      {"1001 values", "\"value\" of operator \"in\" must be an array of 1 to 1000 values"});
}

}  // namespace
}  // namespace ormasim::testing
