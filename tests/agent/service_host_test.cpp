#include "service_host.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <stdexcept>

#include "temp_directory.h"

namespace ormaagent {
namespace {

using testing::HasSubstr;

std::string entry(const std::string& service, const std::string& factory) {
  return R"({"bundle": "scripted", "service": ")" + service + R"(", "library": ")" +
         SCRIPTED_SERVICES + R"(", "factory": ")" + factory + R"("})";
}

std::shared_ptr<const orma::Configuration> configuration(const std::string& members) {
  std::vector<orma::ConfigProblem> problems;
  auto parsed = orma::Configuration::parse("{" + members + "}", "test", "", problems);
  for (const auto& problem : problems) ADD_FAILURE() << problem.where << ": " << problem.what;
  return parsed;
}

class ServiceHostTest : public testing::Test {
 protected:
  ~ServiceHostTest() override { orma::Configuration::install(nullptr); }

  // What the host writes to standard error from one call on.
  static std::string messagesOf(const std::function<void()>& call) {
    testing::internal::CaptureStderr();
    call();
    return testing::internal::GetCapturedStderr();
  }
};

TEST_F(ServiceHostTest, AServiceWhoseThreadSleepsHalfAnHourStopsInSeconds) {
  ServiceHost host(configuration("\"bundles\": [" + entry("sleeping", "makeSleeping") + "]"));
  ASSERT_TRUE(host.start());
  ASSERT_NE(host.find("scripted", "sleeping"), nullptr);
  const auto start = std::chrono::steady_clock::now();
  EXPECT_TRUE(host.stop());
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
  EXPECT_FALSE(host.runsAny());
}

TEST_F(ServiceHostTest, AFailedServiceIsToldByNameAndTheOthersGoOn) {
  ServiceHost host(configuration("\"bundles\": [" + entry("refusing", "makeRefusing") + "," +
                                 entry("throwing", "makeThrowing") + "," +
                                 entry("good", "makeScripted") + "]"));
  bool started = false;
  const std::string messages = messagesOf([&] { started = host.start(); });
  EXPECT_TRUE(started);
  EXPECT_EQ(messages,
            "ormaagent: service refusing of bundle scripted: init gave -1\n"
            "ormaagent: service throwing of bundle scripted: the factory \"makeThrowing\" threw: "
            "the scripted factory throws\n");
  EXPECT_TRUE(host.runsAny());
  EXPECT_NE(host.find("scripted", "good"), nullptr);
  EXPECT_EQ(host.find("scripted", "refusing"), nullptr);
  EXPECT_EQ(host.find("other", "good"), nullptr);
}

TEST_F(ServiceHostTest, TheConfigurationMayAskToStopAtAFailure) {
  ServiceHost host(configuration("\"onInitFailure\": \"stop\", \"bundles\": [" +
                                 entry("sleeping", "makeSleeping") + "," +
                                 entry("refusing", "makeRefusing") + "]"));
  bool started = true;
  const std::string messages = messagesOf([&] { started = host.start(); });
  EXPECT_FALSE(started);
  EXPECT_THAT(messages, HasSubstr("service refusing of bundle scripted: init gave -1"));
  EXPECT_FALSE(host.runsAny());
}

TEST_F(ServiceHostTest, AFailureToStopIsTold) {
  ServiceHost host(configuration("\"bundles\": [" + entry("failing", "makeFailingExit") + "]"));
  ASSERT_TRUE(host.start());
  bool stopped = true;
  const std::string messages = messagesOf([&] { stopped = host.stop(); });
  EXPECT_FALSE(stopped);
  EXPECT_EQ(messages, "ormaagent: service failing of bundle scripted: ExitSvc gave -1\n");
  EXPECT_TRUE(host.stop()) << "a second stop has nothing to do";
}

TEST_F(ServiceHostTest, ALogFileThatCannotBeOpenedIsNamed) {
  const emf::doubles::TempDirectory directory;
  const std::string file = (directory.path() / "none" / "agent.log").string();
  directory.write("none", "a file where a directory should be");
  try {
    ServiceHost host(configuration("\"log\": {\"file\": \"" + file + "\"}"));
    FAIL() << "the log file was opened";
  } catch (const std::runtime_error& failure) {
    EXPECT_THAT(failure.what(), HasSubstr(file));
  }
}

}  // namespace
}  // namespace ormaagent
