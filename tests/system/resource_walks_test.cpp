// The resource services misbehaving: what the agent prints and how it exits.
#include <gmock/gmock.h>

#include "documents.h"
#include "world.h"

namespace systemtest {
namespace {

using testing::HasSubstr;

constexpr char kGraph[] = "/rest/resource/v3/instances/objects";
constexpr char kElements[] = "/rest/resource/v3/instances/objects/FixedNetworkElement";
constexpr char kPorts[] = "/rest/resource/v2/port-properties";

// A thousand objects are a page: the element 2 has 2500 ports besides its own, and there are 2500
// elements more.
class ResourceWalks : public World {
 protected:
  ResourceWalks() {
    Inventory inventory(database_);
    const std::string numbers =
        "WITH RECURSIVE n (i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 2500) ";
    inventory.rows("DELETE FROM resource WHERE dev_id = 2");
    inventory.rows("BEGIN");
    inventory.rows("INSERT INTO resource " + numbers +
                   "SELECT i + 1000000, 2, i, 2, 'NE=2,PP=' || i, 6, 7, 'port ' || i FROM n");
    inventory.rows("INSERT INTO device " + numbers +
                   "SELECT i + 1000, 'NE=' || (i + 1000), i + 1000, 'ne', '102', i, 2, 5, '', "
                   "'more ' || i, '', 1, '', '', '', 0, 0 FROM n");
    inventory.rows("COMMIT");
  }

  void serveWithFault(const std::string& path, const std::string& fault) {
    serveWithFaults(R"([{"path": ")" + path + R"(", "requests": [2], "action": )" + fault + "}]");
  }
  Outcome ask(std::vector<std::string> words) {
    words.insert(words.begin(), {"--format", "json"});
    return agent(words);
  }
  Outcome askContents() { return ask({"res", "contained", "2", "--main-type", "6"}); }
  Outcome askElements() { return ask({"res", "elements"}); }
  // Labels of the first so many ports.
  Outcome askLabels(int count) {
    std::string names;
    for (int i = 1; i <= count; ++i) names += "NE=2,PP=" + std::to_string(i) + "\n";
    return ask({"res", "labels", "--from", directory_.write("names.txt", names).string()});
  }
  // The exit status, the result and the number of records: "1 -1 1000".
  static std::string summary(const Outcome& outcome) {
    const Json::Value answer = jsonOf(outcome.out);
    return std::to_string(outcome.status) + " " + answer["result"].asString() + " " +
           std::to_string(answer["records"].size());
  }
};

TEST_F(ResourceWalks, WithoutOneEverythingComes) {
  serve();
  EXPECT_EQ(summary(askContents()), "0 0 2500");
  EXPECT_EQ(summary(askElements()), "0 0 2551");
  EXPECT_EQ(summary(askLabels(250)), "0 0 250");
}

TEST_F(ResourceWalks, CursorThatIsEndedLeavesTheFirstPage) {
  serveWithFault(kGraph, R"("expireCursors")");
  const Outcome outcome = askContents();
  EXPECT_EQ(summary(outcome), "1 -1 1000");
  EXPECT_THAT(outcome.err, HasSubstr("HTTP status 400"));
  EXPECT_EQ(jsonOf(outcome.out)["records"][0]["name"], "port 1");
  EXPECT_EQ(summary(askContents()), "0 0 2500");
}

TEST_F(ResourceWalks, CursorThatGrowsTooOldLeavesTheFirstPage) {
  serve({"--cursor-seconds", "1", "--faults",
         directory_
             .write("faults.json", R"([{"path": ")" + std::string(kGraph) +
                                       R"(", "requests": [2], "action": "stall", )" +
                                       R"("seconds": 1.1}])")
             .string()});
  EXPECT_EQ(summary(askContents()), "1 -1 1000");
}

TEST_F(ResourceWalks, PageThatFailsLeavesThePagesBefore) {
  for (const char* fault : {R"("status", "status": 503)", R"("cut")", R"("garbage")"}) {
    serveWithFault(kGraph, fault);
    EXPECT_EQ(summary(askContents()), "1 -1 1000") << fault;
    killSimulator();
    serveWithFault(kElements, fault);
    EXPECT_EQ(summary(askElements()), "1 1092092090 1000") << fault;
    killSimulator();
  }
}

TEST_F(ResourceWalks, TreeOfAnElementWhoseLabelCannotBeReadFails) {
  serveWithFaults(R"([{"path": "/rest/resource/v2/ne-properties", "requests": [1], )"
                  R"("action": "status", "status": 503}])");
  EXPECT_EQ(summary(ask({"res", "tree", "3"})), "1 -1 0");
}

TEST_F(ResourceWalks, PageThatComesAgainIsTakenAgain) {
  serveWithFault(kGraph, R"("repeat")");
  EXPECT_EQ(summary(askContents()), "0 0 3500");
}

TEST_F(ResourceWalks, PageOfElementsThatComesAgainIsTakenAgain) {
  serveWithFault(kElements, R"("repeat")");
  EXPECT_EQ(summary(askElements()), "0 0 3551");
}

TEST_F(ResourceWalks, ListThatIsNoneAddsNothing) {
  for (const char* fault :
       {R"("removeKey", "key": "objList")", R"("replaceKey", "key": "objList", "value": null)",
        R"("replaceKey", "key": "objList", "value": {})"}) {
    serveWithFault(kGraph, fault);
    EXPECT_EQ(summary(askContents()), "0 0 1500") << fault;
    killSimulator();
    serveWithFault(kElements, fault);
    EXPECT_EQ(summary(askElements()), "0 0 1551") << fault;
    killSimulator();
    serveWithFault(kPorts, fault);
    EXPECT_EQ(summary(askLabels(250)), "0 0 150") << fault;
    killSimulator();
  }
}

TEST_F(ResourceWalks, BatchOfLabelsThatIsLostIsMissing) {
  serveWithFault(kPorts, R"("status", "status": 500)");
  const Outcome outcome = askLabels(450);
  EXPECT_EQ(summary(outcome), "0 0 350");
  EXPECT_THAT(outcome.err, HasSubstr("HTTP status 500"));
}

TEST_F(ResourceWalks, MissingAndNullNamesAreEmptyLabels) {
  for (const char* fault :
       {R"("removeKey", "key": "name")", R"("replaceKey", "key": "name", "value": null)",
        R"("replaceKey", "key": "name", "value": "")"}) {
    serveWithFault(kPorts, fault);
    const Outcome outcome = askLabels(101);
    EXPECT_EQ(summary(outcome), "0 0 101") << fault;
    const Json::Value records = jsonOf(outcome.out)["records"];
    EXPECT_EQ(records[99]["label"], "port 100");
    EXPECT_EQ(records[100]["label"], "") << fault;
    EXPECT_EQ(records[100]["resDN"], "NE=2,PP=101");
    killSimulator();
  }
}

TEST_F(ResourceWalks, ObjectsWithoutATypeAreSkipped) {
  for (const char* fault :
       {R"("removeKey", "key": "portType")", R"("replaceKey", "key": "portType", "value": null)"}) {
    serveWithFault(kPorts, fault);
    EXPECT_EQ(summary(askLabels(150)), "0 0 100") << fault;
    killSimulator();
  }
}

TEST_F(ResourceWalks, ChineseLabelsComeInTheConfiguredCharacterSet) {
  Inventory(database_).rows(
      "UPDATE resource SET name = '端口 Zürich ☎' WHERE native_id = 'NE=2,PP=1'");
  serve();
  const auto label = [this](int charset) {
    configure([&](Json::Value& document) { document["text"]["characterSetSwitch"] = charset; });
    const Outcome outcome = agent({"--format", "csv", "res", "labels", "NE=2,PP=1"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    return outcome.out;
  };
  EXPECT_THAT(label(0), HasSubstr("端口 Zürich ☎"));
  // The telephone is in neither set, and Chinese is not in the second.
  EXPECT_THAT(label(1), HasSubstr("\xB6\xCB\xBF\xDA Z\xA8\xB9rich ?"));
  EXPECT_THAT(label(2), HasSubstr("?? Z\xFCrich ?"));
}

}  // namespace
}  // namespace systemtest
