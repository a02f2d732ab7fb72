// The outside services' last exchanges belong to the process: other tests may have left some.
#include "readiness.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "emfwatch.h"
#include "figures.h"
#include "orma/bundle/config_items.h"
#include "orma/bundle/configuration.h"
#include "orma/metrics/outside_services.h"

namespace ormaagent {
namespace {

using orma::metrics::Exchange;
using orma::metrics::Outcome;
using orma::metrics::OutsideService;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class ReadinessTest : public testing::Test {
 protected:
  ~ReadinessTest() override { orma::Configuration::install(nullptr); }

  static void keepSubnetNames() {
    std::vector<orma::ConfigProblem> problems;
    orma::Configuration::install(
        orma::Configuration::parse(R"({"items": {"IsReportSubnet": 1}})", "test", "", problems));
  }
};

TEST_F(ReadinessTest, ThePluginHasToRun) {
  EXPECT_THAT(readiness(PluginState::kRunning).text, StartsWith("ready\nplug-in: running\n"));
  EXPECT_TRUE(readiness(PluginState::kRunning).ready);
  EXPECT_THAT(readiness(PluginState::kStarting).text,
              StartsWith("not ready\nplug-in: the services are being started (not ready)\n"));
  EXPECT_THAT(readiness(PluginState::kNotRunning).text,
              StartsWith("not ready\nplug-in: not running (not ready)\n"));
}

TEST_F(ReadinessTest, ARefreshHasToHaveSucceededWhereSubnetNamesAreKept) {
  keepSubnetNames();
  EXPECT_THAT(readiness(PluginState::kRunning).text,
              HasSubstr("subnet names: the first refresh has not ended (not ready)\n"));
  Figures::instance().countOperation(kEmfSubnetRefresh, std::chrono::seconds(1), true);
  EXPECT_THAT(readiness(PluginState::kRunning).text,
              HasSubstr("subnet names: no refresh has succeeded yet (not ready)\n"));
  Figures::instance().countOperation(kEmfSubnetRefresh, std::chrono::seconds(1), false);
  EXPECT_THAT(readiness(PluginState::kRunning).text,
              HasSubstr("subnet names: last refresh 0 s ago\n"));
  EXPECT_TRUE(readiness(PluginState::kRunning).ready);
}

TEST_F(ReadinessTest, AServiceHasToHaveBeenInReach) {
  EXPECT_THAT(readiness(PluginState::kRunning).text, Not(HasSubstr("fault_server")));
  Exchange(OutsideService::kFaultServer).arrived(Outcome::kRefused);
  EXPECT_THAT(readiness(PluginState::kRunning).text,
              HasSubstr("fault_server: last exchange refused, 0 s ago\n"));
  EXPECT_TRUE(readiness(PluginState::kRunning).ready);
  Exchange(OutsideService::kFaultServer).arrived(Outcome::kUnreached);
  const Readiness now = readiness(PluginState::kRunning);
  EXPECT_FALSE(now.ready);
  EXPECT_THAT(now.text, StartsWith("not ready\n"));
  EXPECT_THAT(now.text, HasSubstr("fault_server: last exchange unreached, 0 s ago (not ready)\n"));
  Exchange(OutsideService::kFaultServer).arrived(Outcome::kAnswered);
  EXPECT_TRUE(readiness(PluginState::kRunning).ready);
}

}  // namespace
}  // namespace ormaagent
