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
using testing::IsEmpty;
using testing::SizeIs;

class NameList : public testing::Test {
 protected:
  ~NameList() override { std::cin.rdbuf(standardInput_); }

  std::string file(const std::string& name, const std::string& content) {
    return directory_.write(name, content).string();
  }

  static void expectRefused(const std::string& name, const std::string& reason) {
    try {
      readNames({}, {name});
      ADD_FAILURE() << name << " was read";
    } catch (const HostFailure& failure) {
      EXPECT_EQ(failure.exitStatus(), kExitUsage);
      EXPECT_EQ(failure.what(), name + ": " + reason);
    }
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

TEST_F(NameList, ByteOrderMarkBelongsToNoName) {
  EXPECT_THAT(readNames({}, {file("marked", "\xEF\xBB\xBFNE=3\r\nNE=4\r\n")}),
              ElementsAre("NE=3", "NE=4"));
  EXPECT_THAT(readNames({}, {file("marks", "\xEF\xBB\xBF\n\xEF\xBB\xBFNE=3\n")}),
              ElementsAre("\xEF\xBB\xBFNE=3"));
}

TEST_F(NameList, NullByteBelongsToItsName) {
  EXPECT_THAT(readNames({}, {file("null", std::string("NE=3\0x\nNE=4", 11))}),
              ElementsAre(std::string("NE=3\0x", 6), "NE=4"));
}

TEST_F(NameList, WhatIsTooLongForANameOrAListIsWrongUsage) {
  const std::string longest(65'536, 'x');
  EXPECT_THAT(readNames({}, {file("longest", longest + "\n")}), ElementsAre(longest));
  expectRefused("/dev/zero", "a line has more than 65536 bytes");
  expectRefused(file("long", "NE=3\n" + longest + "x"), "a line has more than 65536 bytes");
  std::string million;
  for (int i = 0; i < 1'000'000; ++i) million += "x\n";
  EXPECT_THAT(readNames({}, {file("million", million)}), SizeIs(1'000'000));
  expectRefused(file("more", million + "x\n"), "there are more than 1000000 names");
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
  expectRefused((directory_.path() / "missing").string(), "No such file or directory");
  expectRefused(directory_.path().string(), "Is a directory");
}

}  // namespace
}  // namespace ormaagent
