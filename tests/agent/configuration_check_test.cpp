#include "configuration_check.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <fstream>
#include <sstream>

#include "temp_directory.h"

namespace ormaagent {
namespace {

struct Checked {
  int status;
  std::string answer;
};

class ConfigurationCheck : public testing::Test {
 protected:
  Checked check(const std::string& file) {
    std::string name = (directory_.path() / "answer-XXXXXX").string();
    Invocation invocation;
    invocation.configFile = file;
    invocation.format = Format::kCsv;
    AnswerOutput output(::mkstemp(name.data()));
    const int status = checkConfiguration(invocation, output);
    std::ostringstream answer;
    answer << std::ifstream(name).rdbuf();
    return {status, answer.str()};
  }

  emf::doubles::TempDirectory directory_;
};

TEST_F(ConfigurationCheck, AGoodFileHasNoProblems) {
  const Checked checked = check(directory_.write("good.json", R"({"log": {"level": 3}})"));
  EXPECT_EQ(checked.status, 0);
  EXPECT_EQ(checked.answer, "where,what\r\n");
}

TEST_F(ConfigurationCheck, EveryProblemComesWithItsPlace) {
  const std::string file =
      directory_.write("bad.json", R"({"log": {"level": 10}, "onInitFailure": "maybe"})");
  const Checked checked = check(file);
  EXPECT_EQ(checked.status, 2);
  EXPECT_EQ(checked.answer, "where,what\r\n" + file +
                                ": log.level,\"must be an integer from 0 to 9, not 10\"\r\n" +
                                file + ": onInitFailure,\"must be one of: continue, stop\"\r\n");
}

TEST_F(ConfigurationCheck, AMissingFileIsAProblem) {
  const std::string file = (directory_.path() / "none.json").string();
  const Checked checked = check(file);
  EXPECT_EQ(checked.status, 2);
  EXPECT_EQ(checked.answer,
            "where,what\r\n" + file + ",cannot be opened: No such file or directory\r\n");
}

}  // namespace
}  // namespace ormaagent
