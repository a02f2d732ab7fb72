// The subnet names of an agent whose platform fails, before, during and after.
#include <gmock/gmock.h>

#include "documents.h"
#include "world.h"

namespace systemtest {
namespace {

using testing::Each;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

constexpr char kPath[] = "/rest/topology/v3/tsnodes";

// The first refresh asks for the nodes in request 1 and for the subnets in request 2.
struct Outage {
  const char* name;
  const char* requests;
  const char* action;
};

void PrintTo(const Outage& outage, std::ostream* out) { *out << outage.name; }

class SubnetNames : public World {
 protected:
  // The names of all devices that have one when nothing fails, by an agent started afresh.
  std::vector<std::string> names(int expectedStatus, const std::string& wait) {
    configure([](Json::Value& document) { document["items"]["IsReportSubnet"] = 1; });
    std::vector<std::string> words = {"--format", "csv", "topo", "submap-name", "--wait", wait};
    for (const auto& row :
         Inventory(database_).rows("SELECT dev_id FROM device WHERE origin = 1 ORDER BY dev_id")) {
      words.push_back(row[0]);
    }
    const Outcome outcome = agent(words);
    EXPECT_EQ(outcome.status, expectedStatus) << outcome.err;
    std::vector<std::string> names;
    const Rows rows = rowsOf("csv", outcome.out);
    for (std::size_t i = 1; i < rows.size(); ++i) names.push_back(rows[i][1]);
    return names;
  }

  static std::string fault(const std::string& requests, const std::string& action) {
    return std::string(R"([{"path": ")") + kPath + R"(", "requests": )" + requests + ", " + action +
           "}]";
  }
};

class SubnetOutages : public SubnetNames, public testing::WithParamInterface<Outage> {};

constexpr Outage kOutages[] = {
    {"NodesGone", "[1]", R"("action": "status", "status": 503)"},
    {"SubnetsGone", "[2]", R"("action": "status", "status": 500)"},
    {"BothGone", "\"all\"", R"("action": "status", "status": 503)"},
    {"CutInAPage", "[1]", R"("action": "cut")"},
    {"NoJson", "\"all\"", R"("action": "garbage")"},
    {"ListIsNone", "[1]", R"("action": "wrongType", "key": "dataList")"},
};

INSTANTIATE_TEST_SUITE_P(Script, SubnetOutages, testing::ValuesIn(kOutages),
                         [](const auto& row) { return row.param.name; });

TEST_P(SubnetOutages, TakeTheNamesAwayUntilTheNextRefresh) {
  serve();
  const auto before = names(0, "60");
  ASSERT_THAT(before, Not(IsEmpty()));
  EXPECT_THAT(before, Each(HasSubstr("Physical Root")));

  killSimulator();
  serveWithFaults(fault(GetParam().requests, GetParam().action));
  const auto during = names(1, "1");
  EXPECT_THAT(during, SizeIs(before.size()));
  EXPECT_THAT(during, Each(IsEmpty()));

  killSimulator();
  serve();
  EXPECT_EQ(names(0, "60"), before);
}

// A page holds 200 objects, the management system first: the devices behind it have no names.
TEST_F(SubnetNames, WhatCameBeforeAFailedPageHasNames) {
  const Outcome generated =
      Process({ORMASIM, "generate", "--elements", "300", "--force", "--db", database_.string()})
          .finish();
  ASSERT_EQ(generated.status, 0) << generated.err;
  const auto ids =
      Inventory(database_).rows("SELECT dev_id FROM device WHERE origin = 1 ORDER BY dev_id");
  serveWithFaults(fault("[2]", R"("action": "cut")"));
  const auto found = names(1, "1");
  ASSERT_EQ(found.size(), ids.size());
  for (std::size_t i = 0; i < ids.size(); ++i) {
    EXPECT_EQ(found[i].empty(), std::stoi(ids[i][0]) > 200) << ids[i][0];
  }
}

}  // namespace
}  // namespace systemtest
