// One process through a platform's outage: its refreshes before, during and after.
#include <gmock/gmock.h>

#include <map>

#include "orma/bundle/configuration.h"
#include "submapbufmgr.h"
#include "world.h"

namespace systemtest {
namespace {

using testing::Each;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::Pair;

class RefreshOutages : public World {
 protected:
  ~RefreshOutages() override {
    SubmapBufMgr::Destroy();
    orma::Configuration::install(nullptr);
  }

  void reach() const {
    std::vector<orma::ConfigProblem> problems;
    auto configuration = orma::Configuration::load(configuration_.string(), problems);
    ASSERT_THAT(problems, IsEmpty());
    orma::Configuration::install(std::move(configuration));
  }

  // The link of each origin element, empty texts for those without.
  std::map<std::string, std::string> linksAfterARefresh() {
    SubmapBufMgr::Instance()->QuerySubnetAndNodesInfo();
    std::map<std::string, std::string> links;
    for (const auto& row :
         Inventory(database_).rows("SELECT dev_id FROM device WHERE origin = 1")) {
      SubmapBufMgr::Instance()->GetSubmapName(links[row[0]], std::stoul(row[0]));
    }
    return links;
  }
};

// Requests 1 and 2 are the first refresh; the outage meets the second; the third asks anew.
TEST_F(RefreshOutages, NamesComeBackWithTheService) {
  serveWithFaults(R"([{"path": "/rest/topology/v3/tsnodes", "requests": [3, 4],)"
                  R"("action": "status", "status": 503}])");
  reach();
  const auto before = linksAfterARefresh();
  ASSERT_THAT(before, Not(IsEmpty()));
  EXPECT_THAT(before, Each(Pair(testing::_, HasSubstr("Physical Root"))));
  EXPECT_THAT(linksAfterARefresh(), Each(Pair(testing::_, IsEmpty())));
  EXPECT_EQ(linksAfterARefresh(), before);
}

TEST_F(RefreshOutages, SubnetsCutInOneRefreshAreThereInTheNext) {
  serveWithFaults(R"([{"path": "/rest/topology/v3/tsnodes", "requests": [4], "action": "cut"}])");
  reach();
  const auto before = linksAfterARefresh();
  // Without subnets no element has a place, whatever was read of the elements.
  EXPECT_THAT(linksAfterARefresh(), Each(Pair(testing::_, IsEmpty())));
  EXPECT_EQ(linksAfterARefresh(), before);
}

TEST_F(RefreshOutages, APlatformStartedAgainIsFoundAgain) {
  serve();
  reach();
  const auto before = linksAfterARefresh();
  ASSERT_THAT(before, Each(Pair(testing::_, HasSubstr("Physical Root"))));
  killSimulator();
  EXPECT_THAT(linksAfterARefresh(), Each(Pair(testing::_, IsEmpty())));
  serve();
  reach();
  EXPECT_EQ(linksAfterARefresh(), before);
}

}  // namespace
}  // namespace systemtest
