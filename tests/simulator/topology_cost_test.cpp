// What a page costs is counted in the database's own steps, which no other load disturbs.
#include <gtest/gtest.h>

#include <algorithm>

#include "generate.h"
#include "support.h"
#include "topology_objects.h"

namespace ormasim::testing {
namespace {

constexpr std::int64_t kLimit = 200;
constexpr int kStepsOfATick = 100;

class TopologyCostTest : public ::testing::Test {
 protected:
  static int count(void* ticks) {
    ++*static_cast<std::int64_t*>(ticks);
    return 0;
  }

  TopologyCostTest() {
    generateFile(file_, {20'000, 7}, false);
    database_.emplace(file_, Database::Mode::ReadOnly);
    sqlite3_progress_handler(database_->handle(), kStepsOfATick, count, &ticks_);
  }

  static TopologyFilter filterOf(const std::string& expression) {
    TopologyFilter filter;
    filter.add(json(expression), CaseFlag::Boolean);
    return filter;
  }
  // The ticks of each page of a walk.
  std::vector<std::int64_t> walk(const TopologyFilter& filter) {
    TopologyObjects objects(*database_);
    std::vector<std::int64_t> costs;
    TopologyPage page;
    do {
      std::string out;
      ticks_ = 0;
      page = objects.appendPage(filter, page.last, kLimit, out);
      costs.push_back(ticks_);
    } while (page.more);
    return costs;
  }

  TempDirectory directory_;
  const std::string file_ = directory_.path("net.db");
  std::optional<Database> database_;
  std::int64_t ticks_ = 0;
};

TEST_F(TopologyCostTest, EveryPageOfAWalkThroughTheNodesCostsTheSame) {
  std::vector<std::int64_t> costs = walk(filterOf(
      R"({"name":"nodeClass","operator":"in","value":["ne","container"],"caseSensitive":false})"));
  ASSERT_EQ(costs.size(), 101u);  // with the management system
  costs.pop_back();               // shorter than the others
  const auto [least, most] = std::minmax_element(costs.begin(), costs.end());
  EXPECT_GT(*least, 0);
  EXPECT_LE(*most, *least + *least / 10 + 2);
}

TEST_F(TopologyCostTest, QueriesForSubnetsDoNotReadTheElements) {
  for (const char* expression :
       {R"({"name":"nodeClass","operator":"equal","value":"subnet","caseSensitive":true})",
        R"({"name":"nodeClass","operator":"in","value":["SUBNET"],"caseSensitive":false})"}) {
    TopologyFilter filter = filterOf(expression);
    filter.add(json(R"({"name":"parentId","operator":"equal","value":"102","caseSensitive":true})"),
               CaseFlag::Boolean);
    // 20,000 elements would cost a thousand.
    EXPECT_LT(walk(filter).at(0), 20) << expression;
  }
}

}  // namespace
}  // namespace ormasim::testing
