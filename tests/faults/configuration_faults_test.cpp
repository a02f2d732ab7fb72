// The configuration when it is bad: the one that is good stays, and operations without one say so.
#include <gmock/gmock.h>

#include "database_operations.h"
#include "emfalminterface.h"
#include "orma/bundle/configuration.h"
#include "rest_fixture.h"

namespace emf::faults {
namespace {

constexpr char kGood[] =
    R"({"rest": {"baseUrl": "http://127.0.0.1:1", "totalTimeoutMs": 1000},
 "faultServer": {"host": "127.0.0.1", "port": 1}, "database": {"connection": "sqlite:none.db"},
 "log": {"level": 3, "stderr": false}, "items": {"IsReportSubnet": 1}, "bundles": []})";

class FaultMatrixConfiguration : public RestMatrix {
 protected:
  // Nothing is loaded, something is said, and the operations go on by what is installed.
  void expectRefused(const std::string& name) {
    SCOPED_TRACE(name);
    std::vector<orma::ConfigProblem> problems;
    timeOf([&] { EXPECT_EQ(orma::Configuration::load(file(name), problems), nullptr); });
    EXPECT_FALSE(problems.empty());
  }
  void expectContentRefused(const std::string& content) {
    SCOPED_TRACE(content.substr(0, 100));
    directory().write("agent.json", content);
    expectRefused("agent.json");
  }
  void expectGoingOn() {
    for (const RestOperation& operation : restOperations()) expectWhole(operation);
  }
  static std::string loaded(const std::string& path) {
    std::vector<orma::ConfigProblem> problems;
    const auto configuration = orma::Configuration::load(path, problems);
    return configuration ? configuration->text("rest.baseUrl") : "";
  }
};

// Nothing is configured, and so nothing asked.
TEST_F(FaultMatrixConfiguration, NotConfigured) {
  configure(Json::objectValue);
  for (const RestOperation& operation : restOperations()) {
    EXPECT_EQ(operation.call(), operation.expected(Loss::Failed, 0, true)) << operation.name;
  }
  for (const DatabaseOperation& operation : databaseOperations()) {
    EXPECT_EQ(operation.call(), operation.failed) << operation.name;
  }
  const Outcome noAlarms = {"ProcessException 6101", {text(FaultRecord())}};
  EXPECT_EQ(appended(std::list<FaultRecord>(1), EMFAlarmI::getAllAlarms), noAlarms);
  EXPECT_EQ(appended(std::list<FaultRecord>(1),
                     [](auto& out) { return EMFAlarmI::getAllEvents(out, 1); }),
            noAlarms);
}

TEST_F(FaultMatrixConfiguration, Refused) {
  expectRefused("nothing.json");
  std::filesystem::create_directory(file("directory.json"));
  expectRefused("directory.json");
  std::filesystem::create_symlink("nothing", file("link.json"));
  expectRefused("link.json");
  expectGoingOn();
}

TEST_F(FaultMatrixConfiguration, Cut) {
  const std::string good = kGood;
  for (std::size_t size = 0; size < good.size(); ++size) expectContentRefused(good.substr(0, size));
  expectGoingOn();
  EXPECT_EQ(loaded(directory().write("agent.json", good).string()), "http://127.0.0.1:1");
}

TEST_F(FaultMatrixConfiguration, Garbage) {
  const std::string good = kGood;
  for (const std::string& content : {std::string(1000, '\0'), std::string(1000, '\xff'),
                                     std::string("\x7f"
                                                 "ELF\x02\x01"),
                                     good + good, good + "x", "[" + good + "]",
                                     std::string("<xml/>"), std::string("baseUrl=1")}) {
    expectContentRefused(content);
  }
  expectGoingOn();
}

TEST_F(FaultMatrixConfiguration, WrongType) {
  for (const char* value : {"null", "[]", "7", "\"text\"", "true"}) {
    for (const char* section : {"rest", "faultServer", "database", "log", "installation"}) {
      expectContentRefused(std::string("{\"") + section + "\": " + value + "}");
    }
  }
  for (const char* content :
       {R"({"rest": {"baseUrl": 7}})", R"({"rest": {"totalTimeoutMs": "7"}})",
        R"({"rest": {"totalTimeoutMs": 0}})", R"({"rest": {"totalTimeoutMs": 1.5}})",
        R"({"faultServer": {"port": 65536}})", R"({"faultServer": {"tagging": "other"}})",
        R"({"database": {"connection": ["sqlite:none.db"]}})", R"({"items": []})",
        R"({"bundles": {}})", R"({"unknown": 1})", R"({"rest": {}, "rest": {}})"}) {
    expectContentRefused(content);
  }
  expectGoingOn();
}

TEST_F(FaultMatrixConfiguration, TooLarge) {
  expectContentRefused(kGood + std::string(1 << 20, ' '));
  expectContentRefused(std::string(100, '[') + std::string(100, ']'));
  expectContentRefused(R"({"items": {"x": )" + std::string(100, '9') + "}}");
  expectGoingOn();
}

TEST_F(FaultMatrixConfiguration, GoneAndBack) {
  for (int round = 0; round < 3; ++round) {
    const std::string path = directory().write("agent.json", kGood).string();
    EXPECT_EQ(loaded(path), "http://127.0.0.1:1");
    std::filesystem::remove(path);
    expectRefused("agent.json");
    expectGoingOn();
  }
}

}  // namespace
}  // namespace emf::faults
