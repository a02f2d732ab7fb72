// Health and metrics of serve, and its log opened anew.
#include <gmock/gmock.h>
#include <httplib.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <regex>
#include <sstream>

#include "world.h"

namespace systemtest {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

std::string contentsOf(const std::filesystem::path& file) {
  std::ostringstream text;
  text << std::ifstream(file).rdbuf();
  return text.str();
}

class ServeHealth : public World {
 protected:
  ServeHealth() {
    serve();
    configure([](Json::Value& document) {
      document["serve"]["port"] = 0;
      document["items"]["IsReportSubnet"] = 1;
    });
  }

  // The agent, once its first refresh is over: then its task sleeps.
  void startReadyAgent() {
    agent_ = startAgent({"serve"});
    const std::string messages = agent_->awaitError("ready\n");
    agent_->awaitSleepingThread();
    std::smatch found;
    ASSERT_TRUE(std::regex_search(
        messages, found, std::regex("health and metrics at http://127\\.0\\.0\\.1:([0-9]+)\n")));
    port_ = std::stoi(found[1].str());
    client_ = std::make_unique<httplib::Client>("127.0.0.1", port_);
  }

  // Status and text of a page: "200 alive".
  std::string page(const std::string& path) {
    const httplib::Result result = client_->Get(path.c_str());
    return result ? std::to_string(result->status) + " " + result->body : "no answer";
  }

  Outcome stopAgent() {
    agent_->send(SIGTERM);
    return agent_->finish();
  }

  std::unique_ptr<Process> agent_;
  int port_ = 0;
  std::unique_ptr<httplib::Client> client_;
};

TEST_F(ServeHealth, APlatformThatAnswersMakesItReady) {
  startReadyAgent();
  EXPECT_EQ(page("/healthz"), "200 alive\n");
  EXPECT_THAT(page("/readyz"), AllOf(StartsWith("200 ready\nplug-in: running\n"),
                                     HasSubstr("subnet names: last refresh "),
                                     HasSubstr("rest: last exchange answered")));
  EXPECT_EQ(stopAgent().status, 0);
}

TEST_F(ServeHealth, APlatformThatIsAwayKeepsItFromReadiness) {
  killSimulator();
  startReadyAgent();
  EXPECT_EQ(page("/healthz"), "200 alive\n");
  EXPECT_THAT(page("/readyz"),
              AllOf(StartsWith("503 not ready\nplug-in: running\n"),
                    HasSubstr("subnet names: no refresh has succeeded yet (not ready)\n"),
                    HasSubstr("rest: last exchange unreached, ")));
}

TEST_F(ServeHealth, WithoutThePluginItIsNotReady) {
  configure([](Json::Value& document) {
    document["bundles"] = Json::arrayValue;
    document["bundles"].append(scriptedService("makeSleeping"));
    document["items"] = Json::objectValue;
  });
  startReadyAgent();
  EXPECT_EQ(page("/readyz"), "503 not ready\nplug-in: not running (not ready)\n");
}

TEST_F(ServeHealth, MetricsTellOfTheRefreshAndOfTheRestService) {
  startReadyAgent();
  const httplib::Result result = client_->Get("/metrics");
  ASSERT_TRUE(result);
  EXPECT_EQ(result->get_header_value("Content-Type"), "text/plain; version=0.0.4; charset=utf-8");
  constexpr char kRefresh[] = "{operation=\"SubmapBufMgr::QuerySubnetAndNodesInfo\"} ";
  EXPECT_THAT(
      result->body,
      AllOf(HasSubstr(std::string("\normaagent_operation_calls_total") + kRefresh + "1\n"),
            HasSubstr(std::string("\normaagent_operation_failures_total") + kRefresh + "0\n"),
            HasSubstr(
                "\normaagent_outside_exchanges_total{service=\"rest\",outcome=\"unreached\"} 0\n"),
            HasSubstr("\normaagent_outside_exchanges_under_way{service=\"rest\"} 0\n"),
            HasSubstr("\normaagent_cache_entries{cache=\"subnet_names\"} "),
            Not(HasSubstr("subnet_names\"} 0\n")),
            HasSubstr("\normaagent_subnet_refresh_age_seconds "),
            HasSubstr("\normaagent_subnet_refresh_duration_seconds "), Not(HasSubstr("database"))));
}

TEST_F(ServeHealth, MetricsTellOfTheCallsOfOtherServices) {
  configure([](Json::Value& document) {
    Json::Value service = scriptedService("makeCalling");
    service["library"] = CALLING_SERVICE;
    document["bundles"].append(service);
  });
  startReadyAgent();
  EXPECT_THAT(
      page("/metrics"),
      AllOf(
          HasSubstr("\normaagent_operation_calls_total{operation=\"EMFTopoI::getDevice\"} 1\n"),
          HasSubstr("\normaagent_operation_failures_total{operation=\"EMFTopoI::getDevice\"} 0\n"),
          HasSubstr("\normaagent_outside_exchanges_total{service=\"database\",outcome="
                    "\"answered\"} 1\n")));
}

TEST_F(ServeHealth, OneThatIsOffTellsNothing) {
  configure([](Json::Value& document) { document.removeMember("serve"); });
  const auto agent = startAgent({"serve"});
  EXPECT_THAT(agent->awaitError("ready\n"), Not(HasSubstr("health and metrics")));
}

TEST_F(ServeHealth, AnAddressThatOthersReachIsRefused) {
  configure([](Json::Value& document) { document["serve"]["address"] = "0.0.0.0"; });
  const Outcome outcome = agent({"serve"});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_THAT(outcome.err,
              AllOf(HasSubstr("serve.address is no loopback address"), Not(HasSubstr("ready\n"))));
}

TEST_F(ServeHealth, APortInUseIsRefused) {
  startReadyAgent();
  configure([this](Json::Value& document) { document["serve"]["port"] = port_; });
  const Outcome outcome = agent({"serve"});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_THAT(outcome.err, HasSubstr("Address already in use; check serve.address and serve.port"));
}

class ServeLog : public World {
 protected:
  ServeLog() {
    serve();
    configure([this](Json::Value& document) { document["log"]["file"] = log_.string(); });
    agent_ = startAgent({"--log-level", "3", "serve"});
    agent_->awaitError("ready\n");
  }

  const std::filesystem::path log_ = file("agent.log");
  std::unique_ptr<Process> agent_;
};

TEST_F(ServeLog, OpensItsFileAnewOnSighup) {
  std::filesystem::rename(log_, file("moved.log"));
  agent_->send(SIGHUP);
  agent_->awaitError("ormaagent: the log was opened anew on SIGHUP\n");
  EXPECT_TRUE(std::filesystem::exists(log_));
  EXPECT_THAT(contentsOf(file("moved.log")), Not(HasSubstr("opened anew")));
  agent_->send(SIGTERM);
  EXPECT_EQ(agent_->finish().status, 0);
}

TEST_F(ServeLog, GoesOnWhenItsFileCannotBeOpened) {
  std::filesystem::rename(log_, file("moved.log"));
  std::filesystem::create_directory(log_);
  agent_->send(SIGHUP);
  agent_->awaitError("anew: Is a directory\n");
  agent_->send(SIGTERM);
  EXPECT_EQ(agent_->finish().status, 0);
}

class ServeCheck : public World {
 protected:
  ServeCheck() { serve(); }
};

TEST_F(ServeCheck, LooksAtTheConfigurationAndStartsNothing) {
  const Outcome good = agent({"serve", "--check"});
  EXPECT_EQ(good.status, 0);
  EXPECT_THAT(good.err, AllOf(HasSubstr("no problems"), Not(HasSubstr("ready\n"))));
  configure([](Json::Value& document) {
    document["serve"]["port"] = 70000;
    document["lgo"] = 1;
  });
  const Outcome bad = agent({"serve", "--check"});
  EXPECT_EQ(bad.status, 2);
  EXPECT_THAT(bad.out, AllOf(HasSubstr("serve.port"), HasSubstr("lgo")));
}

}  // namespace
}  // namespace systemtest
