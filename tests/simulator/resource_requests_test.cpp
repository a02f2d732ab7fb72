// Requests for resources that are not understood.
#include <gmock/gmock.h>

#include "resource_fixture.h"
#include "services.h"
#include "topology_walk.h"

namespace ormasim::testing {
namespace {

struct ResourceRefusal {
  std::string path;
  std::string body;
  std::string reason;
};

class ResourceRequestsTest : public ResourceTest {
 protected:
  void SetUp() override { serveNetwork(3); }

  void expectRefused(const std::vector<ResourceRefusal>& refusals) {
    for (const ResourceRefusal& refusal : refusals) {
      const httplib::Result result = post(refusal.path, refusal.body);
      ASSERT_TRUE(result) << refusal.body;
      EXPECT_EQ(result->status, 400) << refusal.path << " " << refusal.body;
      EXPECT_EQ(reasonOf(result), refusal.reason) << refusal.path << " " << refusal.body;
    }
  }
};

std::string manyTexts(std::size_t count) {
  std::string texts = "\"x\"";
  for (std::size_t i = 1; i < count; ++i) texts += ",\"x\"";
  return texts;
}

TEST_F(ResourceRequestsTest, EveryServiceTakesOneJsonObjectAndNothingElse) {
  for (const std::string& path : servicePaths()) {
    if (path.find("/rest/resource/") != 0 || path == kDevices) continue;
    expectRefused({{path, "", "the body is not JSON"},
                   {path, "{} x", "the body is not JSON"},
                   {path, "[]", "the body must be an object"},
                   {path, "7", "the body is not JSON"},
                   {path + "?limit=1", "{}", "unknown parameter \"limit\""}});
    EXPECT_EQ(post(path, R"({"not":1})")->status, 400) << path;
    EXPECT_EQ(reasonOf(post(path, "{}", "text/plain")),
              "header Content-Type is not application/json");
    EXPECT_EQ(get(path + "?x=1")->status, path == kElements ? 400 : 405) << path;
  }
}

TEST_F(ResourceRequestsTest, WhatIsNearlyJsonIsNone) {
  using namespace std::string_literals;
  expectRefused({{kElements, "{}\0"s, "the body is not JSON"},
                 {kElements, "{\"limit\":1}\0{"s, "the body is not JSON"},
                 {kElements, "{/* all */}", "the body is not JSON"},
                 {kElements, "{} // all", "the body is not JSON"}});
  posted(kElements, R"({"condition":{"filter":{"logOp":"and","simple":[)" +
                        expression("name", "notEqual", R"("a/b\"/,[{\\")", "true") + "]}}}");
}

TEST_F(ResourceRequestsTest, MoreValuesThanAnyQueryNeedsAreRefused) {
  const std::string tooMany = "the body has more than 250000 values";
  const std::string nested = "[" + manyTexts(249'999) + "]";
  expectRefused({{kElements, "[" + manyTexts(250'000) + "]", tooMany},
                 {kElements, nested, "the body must be an object"},
                 {kElements, std::string(250'000, '['), tooMany},
                 {kElements, std::string(250'000, '{'), tooMany}});
}

TEST_F(ResourceRequestsTest, OnlyTheBeginningOfALongNameIsRepeated) {
  const std::string shown = std::string(100, 'x') + "…\"";
  expectRefused({{kElements, "{\"" + std::string(100'000, 'x') + "\":1}",
                  "the body has the unknown member \"" + shown},
                 {kElements, R"({"a\u0000b":1})", "the body has the unknown member \"a\""}});
  EXPECT_EQ(reasonOf(get(std::string(kElements) + "?" + std::string(1000, 'x'))),
            "unknown parameter \"" + shown);
}

TEST_F(ResourceRequestsTest, PropertyReadsTakeNamesAndNothingElse) {
  const std::string path = "/rest/resource/v2/port-properties";
  expectRefused(
      {{path, "{}", "the body lacks \"nativeIds\""},
       {path, R"({"nativeIds":[],"limit":1})", "the body has the unknown member \"limit\""},
       {path, R"({"nativeIds":"x"})", "\"nativeIds\" must be an array of at most 100000 texts"},
       {path, R"({"nativeIds":["x",7]})", "\"nativeIds\" must hold texts only"},
       {path, R"({"nativeIds":[null]})", "\"nativeIds\" must hold texts only"},
       {path, R"({"nativeIds":[)" + manyTexts(100'001) + "]}",
        "\"nativeIds\" must be an array of at most 100000 texts"}});
}

TEST_F(ResourceRequestsTest, GraphQueryIsTheOneTraversal) {
  const std::string path = kGraphQuery;
  const std::string understood =
      "; what is understood is \"g.V('NE=2').hasLabel('FixedNetworkElement').out('Has')\", with "
      "double quotes around it within the text";
  const auto refused = [&](const std::string& body, const std::string& why) {
    expectRefused({{path, body, why}});
  };
  const auto text = [](const std::string& query) { return R"({"query-text":")" + query + "\"}"; };
  refused("{}", "\"query-text\" must be a text" + understood);
  refused(R"({"query-text":7})", "\"query-text\" must be a text" + understood);
  for (const char* bare : {"", "g.V('NE=2').hasLabel('FixedNetworkElement').out('Has')", "\\\""}) {
    refused(text(bare), "\"query-text\" has no double quotes around it" + understood);
  }
  for (const char* other :
       {"\\\"\\\"", "\\\"g.V('NE=2')\\\"", "\\\"g.V('NE=2').hasLabel('X').out('Has')\\\"",
        "\\\"g.V('NE=2').hasLabel('FixedNetworkElement').out('Has').limit(1)\\\"",
        "\\\"g.V(').hasLabel('FixedNetworkElement').out('Has')\\\"",
        "\\\" g.V('NE=2').hasLabel('FixedNetworkElement').out('Has')\\\""}) {
    refused(text(other), "\"query-text\" is another traversal" + understood);
  }
  refused(graphQuery(""), "\"query-text\" names no element" + understood);
  refused(graphQuery("NE=2','NE=3"), "\"query-text\" names no element" + understood);
  refused(graphQuery("NE=2", R"(,"limit":0)"), "\"limit\" must be a number from 1 to 10000");
  refused(graphQuery("NE=2", R"(,"limit":"9")"), "\"limit\" must be a number from 1 to 10000");
  refused(graphQuery("NE=2", R"(,"marker":"x")"), "the body has the unknown member \"marker\"");
}

TEST_F(ResourceRequestsTest, LaterPageCarriesItsCursorAlone) {
  const std::string gone = "\"query-id\" has expired, was used already or is none";
  std::vector<ResourceRefusal> refusals = {
      {kGraphQuery, R"({"query-id":"q1","limit":9})", "the body has the unknown member \"limit\""},
      {kGraphQuery, R"({"query-id":7})", gone}};
  for (const char* id : {"", "q", "q0", "q1", "q01", "1", "x1", "q-1", "q99999999999999999999"}) {
    refusals.push_back({kGraphQuery, std::string(R"({"query-id":")") + id + "\"}", gone});
  }
  expectRefused(refusals);
}

TEST_F(ResourceRequestsTest, InstancesAreAskedForByKnownMembers) {
  const std::string selector = "\"content-selector\" must be an array that is not empty";
  const std::string marker = "\"marker\" is none that a page has handed out";
  std::vector<ResourceRefusal> refusals = {
      {kElements, R"({"contentSelector":["name"]})",
       "the body has the unknown member \"contentSelector\""},
      {kElements, R"({"content-selector":"name"})", selector},
      {kElements, R"({"content-selector":[]})", selector},
      {kElements, R"({"content-selector":["label"]})",
       "\"content-selector\" is none of nativeId, name, neType, ipAddress, softwareVersion, "
       "remark"},
      {kFrames, R"({"content-selector":["neType"]})",
       "\"content-selector\" is none of nativeId, name, frameType"},
      {kCards, R"({"content-selector":["neType"]})",
       "\"content-selector\" is none of nativeId, name, cardType"},
      {kElements, R"({"content-selector":["name","nativeId","name"]})",
       "\"content-selector\" has name twice"},
      {kElements, R"({"limit":10001})", "\"limit\" must be a number from 1 to 10000"},
      {kElements, R"({"marker":7})", marker}};
  for (const char* text :
       {"", "i", "i2", "i2-", "i-1", "i02-0", "i2-00", "i2-0x", "x2-0", "d2", "i0-1", "i2--1"}) {
    refusals.push_back({kElements, std::string(R"({"marker":")") + text + "\"}", marker});
  }
  expectRefused(refusals);
  EXPECT_EQ(reasonOf(get(std::string(kElements) + "?content-selector=x")),
            "parameter \"content-selector\" is not JSON");
  EXPECT_EQ(reasonOf(get(std::string(kElements) + "?limit=x")),
            "parameter \"limit\" is \"x\", not a number from 1 to 10000");
}

TEST_F(ResourceRequestsTest, ConditionsAreRefusedWithTheReason) {
  const std::string good = expression("nativeId", "equal", "\"x\"", "true");
  const auto simple = [](const std::string& one) {
    return R"({"filter":{"logOp":"or","simple":[)" + one + "]}}";
  };
  const auto complex = [](const std::string& one) {
    return R"({"filter":{"logOp":"or","complex":[)" + one + "]}}";
  };
  const std::string word = "\"logOp\" must be \"and\" or \"or\"";
  const std::pair<std::string, std::string> conditions[] = {
      {"7", "\"condition\" must be an object"},
      {"{}", "\"condition\" lacks \"filter\""},
      {R"({"filter":[]})", "\"filter\" must be an object"},
      {R"({"filter":{"logOp":"or"}})", "\"filter\" lacks \"simple\""},
      {R"({"filter":{"simple":[)" + good + "]}}", "\"filter\" lacks \"logOp\""},
      {R"({"filter":{"logOp":"xor","simple":[)" + good + "]}}", word},
      {R"({"filter":{"logOp":"or","simple":)" + good + "}}",
       "\"simple\" must be an array that is not empty"},
      {simple(""), "\"simple\" must be an array that is not empty"},
      {R"({"filter":{"logOp":"or","simple":[)" + good + R"(],"complex":[]}})",
       "\"filter\" has the unknown member \"simple\""},
      {complex(""), "\"complex\" must be an array that is not empty"},
      {complex("7"), "an element of \"complex\" must be an object"},
      {complex("{}"), "\"simple\" must be an array that is not empty"},
      {complex(R"({"simple":[)" + good + "," + good + "]}"), word},
      {complex(R"({"simple":[)" + good + R"(],"not":1})"),
       "an element of \"complex\" has the unknown member \"not\""},
      {simple("[]"), "an expression must be an object"},
      {simple(R"({"name":"nativeId"})"), "an expression lacks \"operator\""},
      {simple(expression("label", "equal", "\"x\"", "true")),
       "\"name\" is none of nativeId, name, neType, ipAddress, softwareVersion, remark"},
      {simple(expression("nativeId", "like", "\"x\"", "true")),
       "\"operator\" must be \"equal\", \"notEqual\" or \"in\""},
      {simple(expression("nativeId", "equal", "7", "true")), "\"value\" must be a text"},
      {simple(expression("nativeId", "in", "[]", "true")),
       "\"value\" must be an array that is not empty"},
      {simple(expression("nativeId", "in", "[null]", "true")), "\"value\" must be a text"},
      {simple(expression("neType", "equal", "\"7\"", "true")),
       "\"value\" of neType must be a whole number"},
      {simple(expression("nativeId", "equal", "\"x\"", "\"true\"")),
       "\"caseSensitive\" must be true or false"},
      {simple(expression("nativeId", "in", "[" + manyTexts(20'001) + "]", "true")),
       "\"filter\" has more than 20000 values"},
  };
  for (const auto& [condition, reason] : conditions) {
    expectRefused({{kElements, R"({"condition":)" + condition + "}", reason}});
  }
  expectRefused({{kFrames, R"({"condition":)" + simple(good) + "}",
                  "\"caseSensitive\" must be the text \"true\" or \"false\""}});
}

TEST_F(ResourceRequestsTest, TooManyTermsAreRefusedAndAsManyAsAllowedAreTaken) {
  const auto body = [](int count) {
    const std::string one = expression("nativeId", "notEqual", "\"x\"", "true");
    std::string all = one;
    for (int i = 1; i < count; ++i) all += "," + one;
    return R"({"condition":{"filter":{"logOp":"and","simple":[)" + all + "]}}}";
  };
  EXPECT_EQ(posted(kElements, body(500))["objList"].size(), 3u);
  expectRefused({{kElements, body(501), "\"filter\" has more than 500 terms"}});
}

TEST_F(ResourceRequestsTest, CataloguesRefuseWhatTheyDoNotKnow) {
  const std::string marker = "\"marker\" is none that a page has handed out";
  const std::string ids = "\"ids\" must be an array of 1 to 1000 whole numbers";
  expectRefused({{kMainTypesPath, R"({"limit":0})", "\"limit\" must be a number from 1 to 10000"},
                 {kMainTypesPath, R"({"marker":""})", marker},
                 {kMainTypesPath, R"({"marker":"m"})", marker},
                 {kMainTypesPath, R"({"marker":"m01"})", marker},
                 {kMainTypesPath, R"({"marker":"m-1"})", marker},
                 {kMainTypesPath, R"({"ids":[]})", ids},
                 {kMainTypesPath, R"({"ids":7})", ids},
                 {kMainTypesPath, R"({"ids":["1"]})", "\"ids\" must hold whole numbers only"},
                 {kLocation, R"({"nativeIds":[]})", "the body lacks \"needMaintenanceInfo\""},
                 {kLocation, R"({"nativeIds":[],"needMaintenanceInfo":"true"})",
                  "\"needMaintenanceInfo\" must be true or false"},
                 {kLocation, R"({"nativeIds":{},"needMaintenanceInfo":true})",
                  "\"nativeIds\" must be an array of at most 1000 texts"}});
}

}  // namespace
}  // namespace ormasim::testing
