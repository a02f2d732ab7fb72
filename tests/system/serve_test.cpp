// The command serve: from "ready" to an orderly end.
#include <gmock/gmock.h>

#include <chrono>
#include <csignal>

#include "world.h"

namespace systemtest {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

// What "within seconds" means here: far below the 1800 seconds of a sleep.
constexpr std::chrono::seconds kSeconds{15};

// What every refresh writes.
constexpr char kRefreshMark[] = "pass not real NE device[OS=1]";

class Serve : public World, public testing::WithParamInterface<int> {
 protected:
  Serve() { serve(); }

  std::unique_ptr<Process> readyAgent(const std::vector<std::string>& words = {"serve"}) {
    auto agent = startAgent(words);
    agent->awaitError("ready\n");
    return agent;
  }
};

INSTANTIATE_TEST_SUITE_P(Signals, Serve, testing::Values(SIGINT, SIGTERM), [](const auto& row) {
  return row.param == SIGINT ? "SIGINT" : "SIGTERM";
});

TEST_P(Serve, EndsInOrder) {
  const auto agent = readyAgent();
  agent->send(GetParam());
  const Outcome outcome = agent->finish(kSeconds);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.out, IsEmpty());
  EXPECT_THAT(outcome.err, HasSubstr("Exit Bundle Service ---[ ii_orma_corbaagent_bundle -- "
                                     "ii_ormaiac_emf ]"));
}

TEST_P(Serve, EndsInSecondsWhileTheSubnetTaskSleeps) {
  configure([](Json::Value& document) { document["items"]["IsReportSubnet"] = 1; });
  const auto agent = readyAgent({"--log-level", "3", "serve"});
  agent->awaitError(kRefreshMark);
  agent->awaitSleepingThread();
  agent->send(GetParam());
  const Outcome outcome = agent->finish(kSeconds);
  EXPECT_EQ(outcome.status, 0);
  const auto first = outcome.err.find(kRefreshMark);
  EXPECT_NE(outcome.err.find(kRefreshMark, first + 1), std::string::npos)
      << "a stop that is asked for during the sleep costs one more refresh";
}

TEST_P(Serve, EndsInSecondsWhileAServiceSleepsHalfAnHour) {
  configure(
      [](Json::Value& document) { document["bundles"].append(scriptedService("makeSleeping")); });
  const auto agent = readyAgent();
  agent->send(GetParam());
  EXPECT_EQ(agent->finish(kSeconds).status, 0);
}

TEST_P(Serve, ASecondSignalEndsAStopThatHangs) {
  configure(
      [](Json::Value& document) { document["bundles"].append(scriptedService("makeStuck")); });
  const auto agent = readyAgent();
  agent->send(GetParam());
  agent->awaitError("stopping on");
  agent->send(GetParam());
  EXPECT_EQ(agent->finish(kSeconds).signal, GetParam());
}

TEST_P(Serve, AServiceThatFailsToStopShowsInTheStatus) {
  configure([](Json::Value& document) {
    document["bundles"].append(scriptedService("makeFailingExit"));
  });
  const auto agent = readyAgent();
  agent->send(GetParam());
  const Outcome outcome = agent->finish(kSeconds);
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err,
              HasSubstr("service makeFailingExit of bundle scripted: ExitSvc gave -1"));
}

class ServeStart : public World {
 protected:
  ServeStart() { serve(); }
};

TEST_F(ServeStart, WithoutAServiceThereIsNothingToServe) {
  configure([](Json::Value& document) { document["bundles"] = Json::arrayValue; });
  const Outcome outcome = agent({"serve"});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_THAT(outcome.err, HasSubstr("no service is running"));
  EXPECT_THAT(outcome.err, testing::Not(HasSubstr("ready")));
}

TEST_F(ServeStart, AFailedServiceIsToldAndTheOthersAreServed) {
  configure(
      [](Json::Value& document) { document["bundles"].append(scriptedService("makeRefusing")); });
  const auto agent = startAgent({"serve"});
  EXPECT_THAT(agent->awaitError("ready\n"),
              HasSubstr("service makeRefusing of bundle scripted: init gave -1"));
  agent->send(SIGTERM);
  EXPECT_EQ(agent->finish(kSeconds).status, 0);
}

TEST_F(ServeStart, AQueryEndsInSecondsWhileTheSubnetTaskSleeps) {
  configure([](Json::Value& document) { document["items"]["IsReportSubnet"] = 1; });
  EXPECT_EQ(startAgent({"res", "fdn", "12"})->finish(kSeconds).status, 0);
}

}  // namespace
}  // namespace systemtest
