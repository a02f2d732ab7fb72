// No command hangs: whatever it waits for, it ends in time and says what that was.
#include <gmock/gmock.h>
#include <sys/stat.h>

#include <chrono>

#include "silent_server.h"
#include "world.h"

namespace systemtest {
namespace {

using testing::HasSubstr;

constexpr int kGivenUp = 4;
// Far above the deadlines that are set here and far below the usual ones.
constexpr std::chrono::seconds kFarAbove{20};

class Deadlines : public World {
 protected:
  Deadlines() { serve(); }

  // Runs a command that is given up after a second; standard error.
  std::string givenUp(std::vector<std::string> words, ProcessSetup setup = {}) {
    words.insert(words.begin(), {"--timeout", "1"});
    const Outcome outcome = startAgent(words, std::move(setup))->finish(kFarAbove);
    EXPECT_EQ(outcome.status, kGivenUp) << outcome.err;
    return outcome.err;
  }

  ProcessSetup withoutNameService() const {
    ProcessSetup setup;
    setup.environment = {"ORMAAGENT_CONFIG=" + configuration_.string(),
                         "LD_PRELOAD=" HANGING_NAME_SERVICE};
    return setup;
  }

  std::filesystem::path pipe(const std::string& name) const {
    EXPECT_EQ(::mkfifo(file(name).c_str(), 0600), 0);
    return file(name);
  }

  const SilentServer silent_;
};

TEST_F(Deadlines, ARestServiceThatSaysNothing) {
  configure([this](Json::Value& document) { document["rest"]["baseUrl"] = silent_.url(); });
  const std::string err = givenUp({"topo", "devices"});
  EXPECT_THAT(err, HasSubstr("ormaagent: given up after 1 s (--timeout): it waited for the REST "
                             "service (rest.baseUrl), asked "));
  EXPECT_THAT(err, HasSubstr(" s before, and with it the operation of \"topo devices\"\n"));
}

TEST_F(Deadlines, ARestServiceThatSaysNothingEndsByItsOwnDeadlineFirst) {
  configure([this](Json::Value& document) {
    document["rest"]["baseUrl"] = silent_.url();
    document["rest"]["totalTimeoutMs"] = 200;
  });
  const Outcome outcome = startAgent({"cache", "device", "12"})->finish(kFarAbove);
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("timed out"));
}

TEST_F(Deadlines, ADatabaseServerThatSaysNothing) {
  configure([this](Json::Value& document) {
    document["database"]["connection"] =
        "postgresql:host=127.0.0.1 port=" + std::to_string(silent_.port());
  });
  EXPECT_THAT(givenUp({"topo", "device", "12"}),
              HasSubstr("it waited for the database (database.connection), asked "));
}

TEST_F(Deadlines, AFaultServerThatSaysNothing) {
  configure([this](Json::Value& document) {
    document["faultServer"]["host"] = "127.0.0.1";
    document["faultServer"]["port"] = silent_.port();
  });
  EXPECT_THAT(givenUp({"alarm", "current"}),
              HasSubstr("it waited for the fault server (faultServer.host), asked "));
}

TEST_F(Deadlines, AConfigurationThatIsAPipe) {
  const std::string name = pipe("config").string();
  EXPECT_THAT(givenUp({"--config", name, "config", "check"}),
              HasSubstr("it waited for the configuration file " + name + "\n"));
  EXPECT_THAT(givenUp({"--config", name, "topo", "devices"}),
              HasSubstr("it waited for the configuration file " + name + "\n"));
}

TEST_F(Deadlines, AListOfNamesThatIsAPipe) {
  const std::string name = pipe("names").string();
  EXPECT_THAT(givenUp({"res", "labels", "--from", name}),
              HasSubstr("it waited for the file " + name + "\n"));
}

TEST_F(Deadlines, AServiceThatNeverStops) {
  configure(
      [](Json::Value& document) { document["bundles"].append(scriptedService("makeStuck")); });
  EXPECT_THAT(givenUp({"error-text", "1"}), HasSubstr("it waited for the services to stop\n"));
}

TEST_F(Deadlines, SubnetNamesThatNeverCome) {
  configure([](Json::Value& document) { document["items"]["IsReportSubnet"] = 1; });
  EXPECT_THAT(givenUp({"topo", "submap-name", "4000000000", "--wait", "3600"}),
              HasSubstr("it waited for the first subnet names\n"));
}

TEST_F(Deadlines, AServeThatNeverStops) {
  configure(
      [](Json::Value& document) { document["bundles"].append(scriptedService("makeStuck")); });
  const auto agent = startAgent({"--timeout", "1", "serve"});
  agent->awaitError("ready\n");
  agent->send(SIGTERM);
  const Outcome outcome = agent->finish(kFarAbove);
  EXPECT_EQ(outcome.status, kGivenUp);
  EXPECT_THAT(outcome.err, HasSubstr("it waited for the services to stop\n"));
}

// A name server that never answers keeps nobody beyond the deadlines of the service it is for.

TEST_F(Deadlines, ANameOfTheRestServiceThatIsNeverResolved) {
  configure([](Json::Value& document) {
    document["rest"]["baseUrl"] = "http://platform.example";
    document["rest"]["connectTimeoutMs"] = 300;
  });
  const Outcome outcome =
      startAgent({"cache", "device", "12"}, withoutNameService())->finish(kFarAbove);
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("Resolving timed out"));
}

TEST_F(Deadlines, ANameOfTheFaultServerThatIsNeverResolved) {
  configure([](Json::Value& document) {
    document["faultServer"]["host"] = "faults.example";
    document["faultServer"]["port"] = 1;
    document["faultServer"]["connectTimeoutMs"] = 300;
  });
  const Outcome outcome = startAgent({"alarm", "current"}, withoutNameService())->finish(kFarAbove);
  EXPECT_NE(outcome.status, 0);
  EXPECT_THAT(outcome.err, HasSubstr("no connection in time"));
}

TEST_F(Deadlines, ANameOfTheDatabaseServerThatIsNeverResolved) {
  configure([](Json::Value& document) {
    document["database"]["connection"] = "postgresql:host=database.example";
  });
  EXPECT_THAT(givenUp({"topo", "device", "12"}, withoutNameService()),
              HasSubstr("it waited for the database (database.connection), asked "));
}

}  // namespace
}  // namespace systemtest
