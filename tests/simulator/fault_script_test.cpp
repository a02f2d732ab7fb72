#include "fault_script.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "server_fixture.h"

namespace ormasim::testing {
namespace {

using ::testing::Gt;
using ::testing::Lt;

FaultScript scriptOf(const std::string& rules) {
  return FaultScript::parse(rules, "f.json", {"/a", "/b"});
}

// Which of the first five requests for the path fail.
std::string hits(FaultScript& script, const std::string& path) {
  std::string marks;
  for (int i = 0; i < 5; ++i) marks += script.next(path) != nullptr ? 'x' : '.';
  return marks;
}

TEST(FaultScriptTest, NoScriptHitsNothing) {
  FaultScript script;
  EXPECT_EQ(hits(script, "/a"), ".....");
}

TEST(FaultScriptTest, RequestsAreCountedForEachPath) {
  FaultScript script = scriptOf(R"([
    {"path": "/a", "requests": [2, 3], "action": "refuse"},
    {"path": "/b", "requests": {"from": 4}, "action": "cut"}])");
  EXPECT_EQ(hits(script, "/b"), "...xx");
  EXPECT_EQ(hits(script, "/a"), ".xx..");
  EXPECT_EQ(hits(script, "/c"), ".....");
}

TEST(FaultScriptTest, AllMeansAll) {
  FaultScript script = scriptOf(R"([{"path": "/a", "requests": "all", "action": "garbage"}])");
  EXPECT_EQ(hits(script, "/a"), "xxxxx");
}

TEST(FaultScriptTest, OneInSoManyActsOnTheSameRequestsEveryTime) {
  const auto marks = [](const std::string& requests) {
    FaultScript script =
        scriptOf(R"([{"path": "/a", "action": "cut", "requests": )" + requests + "}]");
    std::string all;
    for (int i = 0; i < 400; ++i) all += hits(script, "/a");
    return all;
  };
  const std::string drawn = marks(R"({"oneIn": 20})");
  EXPECT_THAT(std::count(drawn.begin(), drawn.end(), 'x'), ::testing::AllOf(Gt(70), Lt(130)));
  EXPECT_EQ(marks(R"({"oneIn": 20})"), drawn);
  EXPECT_NE(marks(R"({"oneIn": 20, "seed": 2})"), drawn);
  EXPECT_EQ(marks(R"({"oneIn": 1})"), std::string(2000, 'x'));
  const std::string later = marks(R"({"oneIn": 20, "from": 1001})");
  EXPECT_EQ(later, std::string(1000, '.') + drawn.substr(1000));
}

TEST(FaultScriptTest, RulesDrawTheirRequestsApart) {
  FaultScript script = scriptOf(R"([
    {"path": "/a", "requests": {"oneIn": 10}, "action": "cut"},
    {"path": "/a", "requests": {"oneIn": 10}, "action": "refuse"}])");
  int refused = 0;
  for (int i = 0; i < 1000; ++i) {
    const Fault* fault = script.next("/a");
    if (fault != nullptr && fault->action == FaultAction::Refuse) ++refused;
  }
  EXPECT_GT(refused, 50);
}

TEST(FaultScriptTest, FirstRuleThatNamesARequestActs) {
  FaultScript script = scriptOf(R"([
    {"path": "/a", "requests": [2], "action": "status", "status": 503},
    {"path": "/a", "requests": "all", "action": "cut"}])");
  EXPECT_EQ(script.next("/a")->action, FaultAction::Cut);
  const Fault* second = script.next("/a");
  EXPECT_EQ(second->action, FaultAction::Status);
  EXPECT_EQ(second->status, 503);
}

TEST(FaultScriptTest, RulesCarryWhatTheirActionNeeds) {
  FaultScript script = scriptOf(R"([
    {"path": "/a", "requests": [1], "action": "stall"},
    {"path": "/a", "requests": [2], "action": "stall", "seconds": 0.25},
    {"path": "/a", "requests": [3], "action": "wrongType", "key": "objList"},
    {"path": "/a", "requests": [4], "action": "removeKey", "key": "marker"}])");
  EXPECT_FALSE(script.next("/a")->time);
  EXPECT_EQ(script.next("/a")->time, std::chrono::milliseconds(250));
  EXPECT_EQ(script.next("/a")->key, "objList");
  EXPECT_EQ(script.next("/a")->key, "marker");
}

TEST(FaultScriptTest, WrongScriptsAreRefusedByRuleAndReason) {
  const std::string rule = R"([{"path": "/a", "requests": "all", "action": "refuse"}, )";
  const std::pair<std::string, std::string> wrong[] = {
      {"{}", "fault script f.json is not a JSON array of rules"},
      {rule + "7]", "fault script f.json: rule 2: is not an object"},
      {rule + R"({"requests": "all", "action": "cut"}])",
       R"(fault script f.json: rule 2: "path" is missing or no text)"},
      {rule + R"({"path": "/c", "requests": "all", "action": "cut"}])",
       R"(fault script f.json: rule 2: "path" is no service; there are /a, /b)"},
      {rule + R"({"path": "/a", "requests": "all", "action": "explode"}])",
       "fault script f.json: rule 2: \"action\" is none of refuse, stall, cut, garbage, "
       "wrongType, removeKey, replaceKey, status, repeat, expireCursors"},
      {rule + R"({"path": "/a", "requests": "all", "action": "cut", "status": 500}])",
       R"(fault script f.json: rule 2: "status" has no meaning for action cut)"},
      {rule + R"({"path": "/a", "requests": "all", "action": "status"}])",
       R"(fault script f.json: rule 2: action status needs "status")"},
      {rule + R"({"path": "/a", "requests": "all", "action": "status", "status": 99}])",
       R"(fault script f.json: rule 2: "status" is not a number from 200 to 599)"},
      {rule + R"({"path": "/a", "requests": "all", "action": "wrongType"}])",
       R"(fault script f.json: rule 2: action wrongType needs "key")"},
      {rule + R"({"path": "/a", "requests": "all", "action": "wrongType", "key": 7}])",
       R"(fault script f.json: rule 2: "key" is missing or no text)"},
      {rule + R"({"path": "/a", "requests": "all", "action": "removeKey"}])",
       R"(fault script f.json: rule 2: action removeKey needs "key")"},
      {rule + R"({"path": "/a", "requests": "all", "action": "replaceKey", "key": "a"}])",
       R"(fault script f.json: rule 2: action replaceKey needs "value")"},
      {rule + R"({"path": "/a", "requests": "all", "action": "replaceKey", "value": null}])",
       R"(fault script f.json: rule 2: action replaceKey needs "key")"},
      {rule + R"({"path": "/a", "requests": "all", "action": "repeat", "key": "a"}])",
       R"(fault script f.json: rule 2: "key" has no meaning for action repeat)"},
      {rule + R"({"path": "/a", "requests": "all", "action": "expireCursors", "seconds": 1}])",
       R"(fault script f.json: rule 2: "seconds" has no meaning for action expireCursors)"},
      {rule + R"({"path": "/a", "requests": "all", "action": "stall", "seconds": 0}])",
       R"(fault script f.json: rule 2: "seconds" is not a number above 0 and up to 3600)"},
      {rule + R"({"path": "/a", "requests": "all", "action": "stall", "seconds": 1e9}])",
       R"(fault script f.json: rule 2: "seconds" is not a number above 0 and up to 3600)"},
  };
  for (const auto& [text, reason] : wrong) {
    EXPECT_EQ(errorOf([&, &script = text] { scriptOf(script); }), reason) << text;
  }
}

TEST(FaultScriptTest, WrongRequestsAreRefused) {
  for (const char* requests :
       {"7", "[]", "[0]", "[-1]", "[1.5]", "[\"1\"]", "\"some\"", "{}", "{\"from\": 0}",
        "{\"from\": 1, \"to\": 2}", "{\"oneIn\": 0}", "{\"seed\": 1}", "null"}) {
    EXPECT_EQ(
        errorOf([&] {
          scriptOf(std::string(R"([{"path": "/a", "action": "cut", "requests": )") + requests +
                   "}]");
        }),
        "fault script f.json: rule 1: \"requests\" is none of \"all\", a list of numbers "
        "from 1, {\"from\": number}, {\"oneIn\": number} with \"from\" and \"seed\" or without")
        << requests;
  }
}

TEST(FaultScriptTest, TextThatIsNoJsonIsRefused) {
  for (const std::string& text :
       {std::string("["), std::string(""), std::string("[] x"), std::string(100000, '[')}) {
    EXPECT_THAT(errorOf([&] { scriptOf(text); }),
                ::testing::StartsWith("fault script f.json is not valid JSON: "));
  }
}

TEST(FaultScriptTest, FileThatIsMissingIsNamed) {
  const TempDirectory directory;
  EXPECT_EQ(errorOf([&] { FaultScript::load(directory.path("f.json"), {}); }),
            "cannot read " + directory.path("f.json") + ": No such file or directory");
}

}  // namespace
}  // namespace ormasim::testing
