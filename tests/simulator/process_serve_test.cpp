#include <gmock/gmock.h>
#include <httplib.h>
#include <sys/stat.h>

#include <chrono>
#include <csignal>
#include <filesystem>

#include "generate.h"
#include "process.h"
#include "raw_client.h"
#include "support.h"

namespace ormasim::testing {
namespace {

using std::chrono::steady_clock;
using ::testing::AllOf;
using ::testing::HasSubstr;

constexpr char kDevices[] = "/rest/resource/v2/dev-properties";
constexpr auto kPrompt = std::chrono::seconds(5);

class ServeProgramTest : public ::testing::Test {
 protected:
  void SetUp() override { generateFile(database_, {30, 1}, false); }

  std::vector<std::string> arguments(const std::vector<std::string>& more = {}) {
    std::vector<std::string> all = {"serve", "--db", database_};
    all.insert(all.end(), more.begin(), more.end());
    return all;
  }
  // The port of the ready line.
  static int portOf(Process& process) {
    const std::string line = process.readLine();
    if (line.empty()) {
      ADD_FAILURE() << "no ready line: " << process.errors();
      return 0;
    }
    const Json::Value ready = json(line);
    EXPECT_EQ(ready.size(), 2u);
    EXPECT_GT(ready["faultPort"].asInt(), 0);
    return ready["httpPort"].asInt();
  }

  TempDirectory directory_;
  const std::string database_ = directory_.path("net.db");
};

TEST_F(ServeProgramTest, ReadyLineIsExactlyOneLineAndItsPortAnswers) {
  Process process(ORMASIM_PROGRAM, arguments());
  const int port = portOf(process);
  httplib::Client client("127.0.0.1", port);
  const httplib::Result result = client.Get(kDevices);
  ASSERT_TRUE(result);
  EXPECT_EQ(result->status, 200);
  process.signal(SIGTERM);
  EXPECT_EQ(process.output(), "");
  EXPECT_EQ(process.wait(), 0);
  EXPECT_EQ(process.errors(), "");
}

TEST_F(ServeProgramTest, EitherSignalStopsItWithinSecondsAlsoWhileARequestIsHeld) {
  const std::string faults = directory_.write(
      "faults.json",
      R"([{"path": "/rest/resource/v2/dev-properties", "requests": [1], "action": "stall"}])");
  for (const int number : {SIGTERM, SIGINT}) {
    Process process(ORMASIM_PROGRAM, arguments({"--faults", faults}));
    const int port = portOf(process);
    RawClient first(port);
    RawClient second(port);
    first.get(kDevices);
    second.get(kDevices);
    const int answered = firstReadable({&first, &second});
    ASSERT_GE(answered, 0);
    const auto begin = steady_clock::now();
    process.signal(number);
    EXPECT_EQ(process.wait(), 0) << process.errors();
    EXPECT_LT(steady_clock::now() - begin, kPrompt);
    EXPECT_TRUE((answered == 0 ? second : first).closedSilently());
  }
}

TEST_F(ServeProgramTest, StatesChangeWhileTheDatabaseIsServed) {
  Process process(ORMASIM_PROGRAM, arguments());
  httplib::Client client("127.0.0.1", portOf(process));
  ASSERT_EQ(client.Get(kDevices)->status, 200);
  const std::string states = "SELECT state_a, state_b FROM port WHERE port_id = 1";
  for (const char* wanted : {"0,1", "-1,1", "1,1"}) {
    const Outcome changed =
        run(ORMASIM_PROGRAM, {"status", "--db", database_, "--port", "1", "--states", wanted});
    EXPECT_EQ(changed.status, 0) << changed.errors;
    EXPECT_EQ(changed.errors, "");
    EXPECT_EQ(changed.output,
              run(ORMASIM_PROGRAM, {"status", "--db", database_, "--port", "1"}).output);
    const Json::Value line = json(changed.output);
    EXPECT_EQ(line["states"], json("[" + std::string(wanted) + "]"));
    EXPECT_EQ(line["links"].size(), 1u);
    EXPECT_EQ(query(database_, states).at(0),
              line["states"][0].asString() + "|" + line["states"][1].asString());
    EXPECT_EQ(client.Get(kDevices)->status, 200);
  }
}

TEST_F(ServeProgramTest, PortInUseFailsAndIsNamed) {
  Process first(ORMASIM_PROGRAM, arguments());
  const std::string port = std::to_string(portOf(first));
  const Outcome second = run(ORMASIM_PROGRAM, arguments({"--http-port", port}));
  EXPECT_EQ(second.status, 1);
  EXPECT_EQ(second.output, "");
  EXPECT_EQ(second.errors, "ormasim: cannot listen on 127.0.0.1:" + port +
                               ": Address already in use; give another port, or 0 for a free "
                               "one\n");
}

TEST_F(ServeProgramTest, DatabaseThatIsMissingOrBareFailsAndIsNamed) {
  const Outcome missing = run(ORMASIM_PROGRAM, {"serve", "--db", directory_.path("no.db")});
  EXPECT_EQ(missing.status, 1);
  EXPECT_EQ(missing.output, "");
  EXPECT_THAT(missing.errors, AllOf(HasSubstr(directory_.path("no.db")), HasSubstr("generate")));
  EXPECT_FALSE(std::filesystem::exists(directory_.path("no.db")));

  const std::string bare = directory_.write("bare.db", "");
  const Outcome without = run(ORMASIM_PROGRAM, {"serve", "--db", bare});
  EXPECT_EQ(without.status, 1);
  EXPECT_THAT(without.errors, AllOf(HasSubstr(bare), HasSubstr("no such table")));
}

TEST_F(ServeProgramTest, WrongFaultScriptFails) {
  const std::string faults = directory_.write("faults.json", "[{}]");
  const Outcome outcome = run(ORMASIM_PROGRAM, arguments({"--faults", faults}));
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.errors,
            "ormasim: fault script " + faults + ": rule 1: \"path\" is missing or no text\n");
}

TEST_F(ServeProgramTest, FaultPortThatIsTakenFails) {
  Process first(ORMASIM_PROGRAM, arguments());
  const std::string port = std::to_string(json(first.readLine())["faultPort"].asInt());
  const Outcome second = run(ORMASIM_PROGRAM, arguments({"--fault-port", port}));
  EXPECT_EQ(second.status, 1);
  EXPECT_THAT(second.errors, HasSubstr("cannot listen on 127.0.0.1:" + port));
}

TEST_F(ServeProgramTest, AgentConfigurationIsThereWhenTheReadyLineIs) {
  const std::string file = directory_.path("agent.json");
  Process process(ORMASIM_PROGRAM, arguments({"--agent-config", file}));
  const int port = portOf(process);
  const Json::Value config = json(contentOf(file));
  EXPECT_EQ(config.getMemberNames(), (std::vector<std::string>{"bundles", "database", "faultServer",
                                                               "installation", "items", "rest"}));
  EXPECT_EQ(config["rest"],
            json(R"({"baseUrl": "http://127.0.0.1:)" + std::to_string(port) + R"("})"));
  EXPECT_EQ(config["database"], json(R"({"connection": "sqlite:)" +
                                     std::filesystem::canonical(database_).string() + R"("})"));
  EXPECT_EQ(config["items"], json(R"({"IsReportSubnet": 0})"));
  ASSERT_EQ(config["bundles"].size(), 2u);
  const Json::Value& log = config["bundles"][0];
  EXPECT_EQ(
      log["bundle"].asString() + " " + log["service"].asString() + " " + log["factory"].asString(),
      "ii_log_bundle ii_log_service _make_orma_log_service");
  EXPECT_THAT(log["library"].asString(), ::testing::EndsWith("/liborma_log.so.1"));
  const Json::Value& plugin = config["bundles"][1];
  EXPECT_EQ(plugin["bundle"].asString() + " " + plugin["service"].asString() + " " +
                plugin["factory"].asString(),
            "ii_orma_corbaagent_bundle ii_ormaiac_emf _make_ii_ormaiac_emf");
  EXPECT_THAT(plugin["library"].asString(), ::testing::EndsWith("libii_ormaiac_emf.so"));
}

TEST_F(ServeProgramTest, ErrorTextsLieWhereTheAgentLooksForThem) {
  const std::string file = directory_.path("agent.json");
  Process process(ORMASIM_PROGRAM, arguments({"--agent-config", file}));
  portOf(process);
  const std::string base = json(contentOf(file))["installation"]["environment"].asString();
  for (const char* language : {"en_US", "zh_CN"}) {
    const std::string texts =
        contentOf(base + "/../etc/nbires/" + language + "/errcode_ACCESS_TDT.res");
    for (const char* code :
         {"0x41180004", "0x41180035", "0x411800BA", "0x411800CC", "0x411800D4"}) {
      EXPECT_THAT(texts, HasSubstr(std::string(code) + " = ")) << language;
    }
  }
}

TEST_F(ServeProgramTest, AccessTypesLieWhereTheAgentLooksForThem) {
  const std::string file = directory_.path("agent.json");
  Process process(ORMASIM_PROGRAM, arguments({"--agent-config", file}));
  portOf(process);
  const std::string root = json(contentOf(file))["installation"]["root"].asString();
  EXPECT_THAT(contentOf(root + "/etc/oss_cfg/nbi/corba/conf/ii_orma_corbaagent_bundle/"
                               "devicetype.cfg"),
              HasSubstr("\nACCESS=1,4,85,86,262145\n"));
}

TEST_F(ServeProgramTest, TokenGoesIntoAFileOfItsOwnForTheAgent) {
  const std::string file = directory_.path("agent.json");
  Process process(ORMASIM_PROGRAM, arguments({"--agent-config", file, "--token", "sesame"}));
  const int port = portOf(process);
  const std::string tokenFile = json(contentOf(file))["rest"]["token"]["file"].asString();
  EXPECT_EQ(contentOf(tokenFile), "sesame\n");
  struct stat status {};
  ASSERT_EQ(::stat(tokenFile.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777, 0600u);
  EXPECT_EQ(contentOf(file).find("sesame"), std::string::npos);
  httplib::Client client("127.0.0.1", port);
  EXPECT_EQ(client.Get(kDevices)->status, 401);
  EXPECT_EQ(client.Get(kDevices, {{"X-Auth-Token", "sesame"}})->status, 200);
}

TEST_F(ServeProgramTest, AgentConfigurationThatCannotBeWrittenFails) {
  const std::string file = directory_.path("no/agent.json");
  const Outcome outcome = run(ORMASIM_PROGRAM, arguments({"--agent-config", file}));
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.output, "");
  EXPECT_EQ(outcome.errors, "ormasim: cannot write " + file + ": No such file or directory\n");
}

}  // namespace
}  // namespace ormasim::testing
