// What the agent says and how it exits when something is wrong.
#include <gmock/gmock.h>

#include <filesystem>

#include "documents.h"
#include "world.h"

namespace systemtest {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr char kEmptyAnswer[] = "{\"result\": 0, \"records\": []}\n";

class Failures : public World {
 protected:
  // Usage or configuration: status 2, no answer, and words that help.
  void expectRefused(const Outcome& outcome, const std::string& words) {
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.out, IsEmpty());
    EXPECT_THAT(outcome.err, HasSubstr(words));
  }
  // In the test's directory, with no word about a configuration.
  ProcessSetup withoutEnvironment() const {
    ProcessSetup setup;
    setup.directory = directory_.path().string();
    setup.environment = {"HOME=/"};
    return setup;
  }
  // The operation reported failure.
  void expectFailed(const Outcome& outcome, const std::string& result, const std::string& words) {
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out, "{\"result\": " + result + ", \"records\": []}\n");
    EXPECT_THAT(outcome.err, HasSubstr(words));
  }
  // An exception left the operation.
  void expectThrown(const Outcome& outcome, const std::string& words) {
    EXPECT_EQ(outcome.status, 3);
    EXPECT_THAT(outcome.out, IsEmpty());
    EXPECT_THAT(outcome.err, HasSubstr(words));
  }
};

TEST_F(Failures, WrongArgumentsAreRefusedBeforeAnythingStarts) {
  expectRefused(agent({"topo", "device", "twelve"}), "ID: must be a whole number");
  expectRefused(agent({"topo", "device"}), "ID is required");
  expectRefused(agent({"topo", "gadgets"}), "not known: gadgets");
  expectRefused(agent({}), "subcommand is required");
}

TEST_F(Failures, HelpAndVersionNeedNoConfiguration) {
  const Outcome help = agent({"--help"});
  EXPECT_EQ(help.status, 0);
  EXPECT_THAT(help.out, HasSubstr("Examples:"));
  const Outcome version = agent({"--version"});
  EXPECT_EQ(version.status, 0);
  EXPECT_THAT(version.out, testing::StartsWith("ormaagent "));
}

TEST_F(Failures, WithoutAConfigurationTheMessageSaysWhatToDo) {
  const Outcome outcome = agent({"res", "fdn", "1"}, withoutEnvironment());
  expectRefused(outcome, "./ormaagent.json: cannot be opened: No such file or directory");
  EXPECT_THAT(outcome.err, AllOf(HasSubstr("--config FILE"), HasSubstr("ORMAAGENT_CONFIG"),
                                 HasSubstr("ormasim serve --agent-config")));
}

TEST_F(Failures, TheConfigurationOfThisDirectoryIsFound) {
  serve();
  std::filesystem::rename(configuration_, file("ormaagent.json"));
  EXPECT_EQ(agent({"res", "fdn", "1"}, withoutEnvironment()).status, 0);
}

TEST_F(Failures, ABadConfigurationIsRefusedWithEveryProblem) {
  directory_.write("agent.json", R"({"log": {"level": "high"}, "colour": 1})");
  const Outcome outcome = agent({"res", "fdn", "1"});
  expectRefused(outcome, "agent.json: log.level: must be an integer from 0 to 9");
  EXPECT_THAT(outcome.err, HasSubstr("agent.json: colour: unknown key"));
  const Outcome checked = agent({"--format", "json", "config", "check"});
  EXPECT_EQ(checked.status, 2);
  EXPECT_EQ(jsonOf(checked.out)["result"].asInt(), 2);
  EXPECT_EQ(jsonOf(checked.out)["records"].size(), 2u);
}

TEST_F(Failures, CheckAcceptsWhatTheSimulatorWrote) {
  serve();
  const Outcome checked = agent({"--format", "json", "config", "check"});
  EXPECT_EQ(checked.status, 0);
  EXPECT_EQ(checked.out, kEmptyAnswer);
  EXPECT_THAT(checked.err, IsEmpty());
}

TEST_F(Failures, ALogFileThatCannotBeOpenedIsNamed) {
  serve();
  directory_.write("occupied", "");
  configure([](Json::Value& document) { document["log"]["file"] = "occupied/agent.log"; });
  expectRefused(agent({"res", "fdn", "1"}), file("occupied/agent.log").string());
}

TEST_F(Failures, AWrongLibraryPathIsToldAndTheCommandRefused) {
  serve();
  configure([](Json::Value& document) { document["bundles"][1]["library"] = "/none/lib.so"; });
  const Outcome outcome = agent({"error-text", "1"});
  expectRefused(outcome,
                "service ii_ormaiac_emf of bundle ii_orma_corbaagent_bundle: cannot load "
                "the library \"/none/lib.so\"");
  EXPECT_THAT(outcome.err, HasSubstr("the service ii_ormaiac_emf of bundle "
                                     "ii_orma_corbaagent_bundle is not running"));
}

TEST_F(Failures, ACopyOfTheLibraryIsRefused) {
  serve();
  std::string original;
  const std::filesystem::path copy = file("libcopy.so");
  configure([&](Json::Value& document) {
    Json::Value& library = document["bundles"][1]["library"];
    original = library.asString();
    library = copy.string();
  });
  std::filesystem::copy_file(original, copy);
  expectRefused(agent({"topo", "devices"}), "comes from " + copy.string() + ", but this program");
}

TEST_F(Failures, ALinkToTheLibraryIsTheLibrary) {
  serve();
  configure([&](Json::Value& document) {
    Json::Value& library = document["bundles"][1]["library"];
    std::filesystem::create_symlink(library.asString(), file("liblink.so"));
    library = file("liblink.so").string();
  });
  EXPECT_EQ(agent({"cache", "device", "12"}).status, 0);
}

TEST_F(Failures, WithoutALogServiceQueriesGoOn) {
  serve();
  configure([](Json::Value& document) { document["bundles"][0]["library"] = "/none/liblog.so"; });
  const Outcome outcome = agent({"--format", "csv", "cache", "device", "12"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(rowsOf("csv", outcome.out), testing::SizeIs(2));
  EXPECT_THAT(outcome.err,
              HasSubstr("service ii_log_service of bundle ii_log_bundle: cannot load"));
}

TEST_F(Failures, AFactoryThatThrowsIsToldAndTheOthersGoOn) {
  serve();
  configure(
      [](Json::Value& document) { document["bundles"].append(scriptedService("makeThrowing")); });
  const Outcome outcome = agent({"res", "fdn", "1"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.err,
              HasSubstr("service makeThrowing of bundle scripted: the factory \"makeThrowing\" "
                        "threw: the scripted factory throws"));
}

TEST_F(Failures, AFailedServiceStopsTheHostWhereTheConfigurationSaysSo) {
  serve();
  configure([](Json::Value& document) {
    document["onInitFailure"] = "stop";
    document["bundles"].append(scriptedService("makeRefusing"));
  });
  expectRefused(agent({"res", "fdn", "1"}),
                "service makeRefusing of bundle scripted: init gave -1");
}

TEST_F(Failures, AnUnknownDeviceIsAReportedFailure) {
  serve();
  expectFailed(agent({"--format", "json", "topo", "device", "9999"}), "1092092108",
               "topo device 9999 failed: error 1092092108 (0x411800CC): ");
  expectFailed(agent({"--format", "json", "cache", "device", "9999"}), "0",
               "cache device 9999 failed: no such device");
  expectFailed(agent({"--format", "json", "topo", "device-of-node", "none"}), "-1",
               "topo device-of-node none failed: no such node");
}

TEST_F(Failures, TheTableIsFollowedByCountAndResultInWords) {
  serve();
  EXPECT_THAT(agent({"topo", "device", "12"}).err, HasSubstr("1 record, result 0: success\n"));
  EXPECT_THAT(agent({"topo", "device", "9999"}).err,
              HasSubstr("0 records, result 1092092108 (0x411800CC): failure\n"));
}

TEST_F(Failures, AnEmptyDatabaseConnectionFailsTheDatabaseQueriesOnly) {
  serve();
  configure([](Json::Value& document) { document["database"]["connection"] = ""; });
  expectFailed(agent({"--format", "json", "topo", "device", "12"}), "1092092090",
               "database.connection");
  EXPECT_EQ(agent({"cache", "device", "12"}).status, 0);
}

TEST_F(Failures, AMissingDatabaseIsNamed) {
  serve();
  configure([](Json::Value& document) { document["database"]["connection"] = "sqlite:none.db"; });
  expectFailed(agent({"--format", "json", "topo", "device", "12"}), "1092092090",
               file("none.db").string());
}

TEST_F(Failures, ALockedDatabaseIsAFailureAfterItsTimeout) {
  serve();
  configure([](Json::Value& document) { document["database"]["busyTimeoutMs"] = 50; });
  Inventory lock(database_);
  lock.rows("BEGIN EXCLUSIVE");
  expectFailed(agent({"--format", "json", "topo", "device", "12"}), "1092092090", "locked");
}

TEST_F(Failures, ADatabaseWithoutTheTablesIsAFailure) {
  serve();
  killSimulator();
  Inventory(database_).rows("DROP TABLE device_location");
  expectFailed(agent({"--format", "json", "topo", "location", "12"}), "1092092108",
               "device_location");
}

TEST_F(Failures, ADeadPlatformIsAnEmptyListWithAHint) {
  serve();
  killSimulator();
  const Outcome outcome = agent({"--format", "json", "topo", "devices"});
  EXPECT_EQ(outcome.status, 0) << "the operation reports success by contract";
  EXPECT_EQ(outcome.out, kEmptyAnswer);
  EXPECT_THAT(outcome.err, AllOf(HasSubstr("REST request GET http://127.0.0.1:"),
                                 HasSubstr("connect"), HasSubstr("ormaagent: no devices: ")));
  expectFailed(agent({"--format", "json", "cache", "device", "12"}), "0",
               "Couldn't connect to server");
}

TEST_F(Failures, ANativeIdWithoutANumberThrows) {
  Inventory(database_).rows("UPDATE device SET native_id = 'XYZ' WHERE dev_id = 3");
  serve();
  for (const auto& words : std::vector<std::vector<std::string>>{
           {"topo", "devices"}, {"cache", "device", "12"}, {"cache", "name", "x"}}) {
    expectThrown(agent(words), "the operation threw std::invalid_argument: stol");
  }
}

}  // namespace
}  // namespace systemtest
