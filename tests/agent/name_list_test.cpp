#include "name_list.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <iostream>
#include <sstream>

#include "exit_status.h"
#include "host_failure.h"
#include "temp_directory.h"

namespace ormaagent {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class NameList : public testing::Test {
 protected:
  ~NameList() override { std::cin.rdbuf(standardInput_); }

  std::string file(const std::string& name, const std::string& content) {
    return directory_.write(name, content).string();
  }

  emf::doubles::TempDirectory directory_;
  std::istringstream typed_;
  std::streambuf* const standardInput_ = std::cin.rdbuf();
};

TEST_F(NameList, WordsStandBeforeTheLinesOfEachFile) {
  const std::string first = file("first", "NE=3\nNE=4,FR=1\n");
  const std::string second = file("second", "NE=5\n");
  EXPECT_THAT(readNames({"NE=2"}, {first, second}),
              ElementsAre("NE=2", "NE=3", "NE=4,FR=1", "NE=5"));
}

TEST_F(NameList, NothingIsNoName) {
  EXPECT_THAT(readNames({}, {}), IsEmpty());
  EXPECT_THAT(readNames({}, {file("empty", "")}), IsEmpty());
  EXPECT_THAT(readNames({}, {file("blank", "\n\r\n\n")}), IsEmpty());
}

TEST_F(NameList, LineEndsBelongToNoName) {
  EXPECT_THAT(readNames({}, {file("dos", "NE=3\r\nNE=4\r\n")}), ElementsAre("NE=3", "NE=4"));
  EXPECT_THAT(readNames({}, {file("cut", "NE=3\nNE=4")}), ElementsAre("NE=3", "NE=4"));
}

TEST_F(NameList, BlanksAndCommentSignsBelongToTheirName) {
  EXPECT_THAT(readNames({}, {file("odd", " NE=3 \n# NE=4\n")}), ElementsAre(" NE=3 ", "# NE=4"));
}

TEST_F(NameList, DashIsStandardInput) {
  typed_.str("NE=6\nNE=7\n");
  std::cin.rdbuf(typed_.rdbuf());
  EXPECT_THAT(readNames({"NE=2"}, {"-"}), ElementsAre("NE=2", "NE=6", "NE=7"));
}

TEST_F(NameList, FileThatCannotBeReadIsWrongUsage) {
  for (const std::string& name :
       {(directory_.path() / "missing").string(), directory_.path().string()}) {
    try {
      readNames({}, {name});
      ADD_FAILURE() << name << " was read";
    } catch (const HostFailure& failure) {
      EXPECT_EQ(failure.exitStatus(), kExitUsage);
      EXPECT_THAT(failure.what(), HasSubstr(name + ": "));
    }
  }
}

}  // namespace
}  // namespace ormaagent
