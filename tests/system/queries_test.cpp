// Every query in every format, against the database read for itself.
#include <gmock/gmock.h>

#include "documents.h"
#include "world.h"

namespace systemtest {
namespace {

using testing::HasSubstr;
using testing::SizeIs;

const std::vector<std::string> kDeviceFields = {"id", "mainType", "subType", "ipAddress", "name"};

class Queries : public World, public testing::WithParamInterface<const char*> {
 protected:
  Queries() { serve(); }

  // The records of a command that succeeds, behind the field names.
  Rows query(std::vector<std::string> words) {
    words.insert(words.begin(), {"--format", GetParam()});
    const Outcome outcome = agent(words);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    return rowsOf(GetParam(), outcome.out);
  }

  Rows devices(const std::string& condition) {
    Rows rows = Inventory(database_).rows(
        "SELECT dev_id, main_type, sub_type, ip_address, name FROM device WHERE " + condition +
        " ORDER BY dev_id");
    rows.insert(rows.begin(), kDeviceFields);
    return rows;
  }

  bool isTable() const { return std::string(GetParam()) == "table"; }
};

INSTANTIATE_TEST_SUITE_P(Formats, Queries, testing::Values("table", "json", "csv"),
                         [](const auto& row) { return row.param; });

TEST_P(Queries, TopoDevicesListsEveryDevice) {
  const Rows expected = devices("1");
  ASSERT_THAT(expected, SizeIs(51));
  EXPECT_EQ(query({"topo", "devices"}), expected);
}

TEST_P(Queries, TopoDevicesCrossesPages) {
  configure([](Json::Value& document) { document["rest"]["devicePageSize"] = 7; });
  EXPECT_EQ(query({"topo", "devices"}), devices("1"));
}

TEST_P(Queries, TopoDeviceReadsTheDatabase) {
  EXPECT_EQ(query({"topo", "device", "12"}), devices("dev_id = 12"));
}

TEST_P(Queries, TopoVersionReadsTheDatabase) {
  Rows expected =
      Inventory(database_).rows("SELECT dev_id, version_name FROM device WHERE dev_id = 12");
  expected.insert(expected.begin(), {"id", "version"});
  EXPECT_EQ(query({"topo", "version", "12"}), expected);
}

TEST_P(Queries, TopoLocationJoinsThePartsWithTwoBlanksBehindEach) {
  std::string location;
  for (const auto& row : Inventory(database_).rows(
           "SELECT part FROM device_location WHERE dev_id = 12 ORDER BY seq")) {
    location += row[0] + "  ";
  }
  ASSERT_THAT(location, testing::Not(testing::IsEmpty()));
  if (isTable()) {
    EXPECT_THAT(agent({"topo", "location", "12"}).out, HasSubstr("\n12  " + location + "\n"));
  } else {
    EXPECT_EQ(query({"topo", "location", "12"}), (Rows{{"id", "location"}, {"12", location}}));
  }
}

TEST_P(Queries, TopoDeviceOfNodeFindsTheDevice) {
  const std::string node =
      Inventory(database_).rows("SELECT node_id FROM device WHERE dev_id = 12")[0][0];
  EXPECT_EQ(query({"topo", "device-of-node", node}), (Rows{{"nodeId", "id"}, {node, "12"}}));
}

TEST_P(Queries, CacheDeviceFindsTheDevice) {
  EXPECT_EQ(query({"cache", "device", "51"}), devices("dev_id = 51"));
}

TEST_P(Queries, CacheNameFindsEveryDeviceOfTheName) {
  Inventory(database_).rows("UPDATE device SET name = '核心 1' WHERE dev_id IN (7, 23)");
  EXPECT_EQ(query({"cache", "name", "核心 1"}), devices("dev_id IN (7, 23)"));
}

TEST_P(Queries, ResFdnFormsTheName) {
  EXPECT_EQ(query({"res", "fdn", "12"}), (Rows{{"id", "fdn"}, {"12", "NE=12"}}));
  EXPECT_EQ(query({"res", "fdn", "1"}), (Rows{{"id", "fdn"}, {"1", "OS=1"}}));
}

TEST_P(Queries, ErrorTextTakesEveryBase) {
  const Rows known = query({"error-text", "0x411800CC"});
  ASSERT_THAT(known, SizeIs(2));
  EXPECT_EQ(known[1][0], "1092092108");
  EXPECT_NE(known[1][1], "unknown");
  EXPECT_EQ(query({"error-text", "1092092108"}), known);
  EXPECT_EQ(query({"error-text", "010106000314"}), known);
  EXPECT_EQ(query({"error-text", "0xFFFFFFFFFFFFFFFF"}),
            (Rows{{"code", "text"}, {"18446744073709551615", "unknown"}}));
}

TEST_P(Queries, ErrorTextSpeaksTheConfiguredLanguage) {
  const Rows english = query({"error-text", "0x411800CC"});
  configure([](Json::Value& document) { document["text"]["language"] = "zh_CN"; });
  EXPECT_NE(query({"error-text", "0x411800CC"}), english);
}

class JsonAnswers : public World {
 protected:
  JsonAnswers() { serve(); }
};

TEST_F(JsonAnswers, HoldTheOperationsResult) {
  const auto result = [this](std::vector<std::string> words) {
    words.insert(words.begin(), {"--format", "json"});
    return jsonOf(agent(words).out)["result"].asInt64();
  };
  EXPECT_EQ(result({"topo", "devices"}), 0);
  EXPECT_EQ(result({"cache", "device", "12"}), 1);
  EXPECT_EQ(result({"res", "fdn", "12"}), 5);
  EXPECT_EQ(result({"topo", "device", "9999"}), 0x411800CC);
  EXPECT_EQ(result({"topo", "device-of-node", "none"}), -1);
}

}  // namespace
}  // namespace systemtest
