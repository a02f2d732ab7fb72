#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "config_problems.h"
#include "orma/bundle/configuration.h"
#include "temp_directory.h"

namespace orma {
namespace {

using testing::ElementsAre;

class ConfigurationFile : public testing::Test {
 protected:
  std::vector<std::string> problemsOfFile(const std::string& file) {
    std::vector<ConfigProblem> problems;
    EXPECT_EQ(Configuration::load(file, problems), nullptr);
    return asLines(problems);
  }

  TempDirectory directory_;
};

TEST_F(ConfigurationFile, IsReadAndGivesPathsRelativeToItself) {
  const std::string file = directory_.write("agent.json", R"({"log": {"file": "agent.log"}})");
  std::vector<ConfigProblem> problems;
  const auto configuration = Configuration::load(file, problems);
  ASSERT_NE(configuration, nullptr);
  EXPECT_TRUE(problems.empty());
  EXPECT_EQ(configuration->path("log.file"), directory_ / "agent.log");
}

TEST_F(ConfigurationFile, NamedRelativeToTheWorkingDirectoryStaysPutWhenThatChanges) {
  directory_.write("agent.json", R"({"log": {"file": "agent.log"}})");
  const auto before = std::filesystem::current_path();
  std::filesystem::current_path(directory_.path());
  std::vector<ConfigProblem> problems;
  const auto configuration = Configuration::load("agent.json", problems);
  std::filesystem::current_path(before);
  ASSERT_NE(configuration, nullptr);
  EXPECT_EQ(configuration->path("log.file"), directory_ / "agent.log");
}

TEST_F(ConfigurationFile, ThatIsMissingIsAProblem) {
  const std::string file = directory_ / "none.json";
  EXPECT_THAT(problemsOfFile(file),
              ElementsAre(file + " | cannot be opened: No such file or directory"));
}

TEST_F(ConfigurationFile, WithoutANameIsAProblem) {
  EXPECT_THAT(problemsOfFile(""), ElementsAre("configuration | no configuration file is named"));
}

TEST_F(ConfigurationFile, ThatIsADirectoryIsAProblem) {
  EXPECT_THAT(
      problemsOfFile(directory_.path()),
      ElementsAre(directory_.path() + " | is a directory; a configuration is one JSON file"));
}

TEST_F(ConfigurationFile, BelowAFileCannotBeOpened) {
  const std::string file = directory_.write("agent.json", "{}") + "/agent.json";
  EXPECT_THAT(problemsOfFile(file), ElementsAre(file + " | cannot be opened: Not a directory"));
}

TEST_F(ConfigurationFile, ThatCannotBeReadIsAProblem) {
  // Its first page is not mapped, so reading it fails after opening it has not.
  EXPECT_THAT(problemsOfFile("/proc/self/mem"),
              ElementsAre("/proc/self/mem | cannot be read: Input/output error"));
}

TEST_F(ConfigurationFile, ThatIsTooLargeIsAProblem) {
  const std::string file = directory_.write("agent.json", "{}" + std::string(1048575, ' '));
  EXPECT_THAT(problemsOfFile(file), ElementsAre(file + " | is larger than 1048576 bytes"));
}

TEST_F(ConfigurationFile, AtTheLargestSizeIsTaken) {
  const std::string file = directory_.write("agent.json", "{}" + std::string(1048574, ' '));
  std::vector<ConfigProblem> problems;
  EXPECT_NE(Configuration::load(file, problems), nullptr);
}

TEST_F(ConfigurationFile, ThatNeverEndsStopsAtTheLimit) {
  EXPECT_THAT(problemsOfFile("/dev/zero"), ElementsAre("/dev/zero | is larger than 1048576 bytes"));
}

TEST_F(ConfigurationFile, ThatIsEmptyIsAProblem) {
  const std::string file = directory_.write("agent.json", "");
  EXPECT_EQ(problemsOfFile(file).at(0),
            file + ":1:1 | Syntax error: value, object or array expected.");
}

TEST_F(ConfigurationFile, ProblemsNameTheFileAsItWasGiven) {
  const std::string file = directory_.write("agent.json", "{\"log\":\n {\"level\": 10}}");
  EXPECT_THAT(problemsOfFile(file),
              ElementsAre(file + ": log.level | must be an integer from 0 to 9, not 10"));
}

}  // namespace
}  // namespace orma
