// The exception log, which has no first file until somebody opens one.
#include <ctime>
#include <regex>

#include "file_log_fixture.h"

namespace emf::test {
namespace {

namespace fs = std::filesystem;
using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::MatchesRegex;
using ::testing::SizeIs;

class ExceptionLog : public FileLogs {
 protected:
  bool open() const { return emf::openExceptionLog(directory_.path().c_str()); }
  static std::string timeText(std::time_t time) {
    char text[16];
    std::tm local{};
    std::strftime(text, sizeof text, "%Y%m%d%H%M%S", ::localtime_r(&time, &local));
    return text;
  }
};

TEST_F(ExceptionLog, IsNotOpenedByATextAndTakesNone) {
  const ChildOutcome outcome = run([] {
    printAssertions();
    writeException("lost");
    WriteException(nullptr);
    writeException(bytes(300000));
  });
  EXPECT_EQ(outcome.status, kChildDone);
  EXPECT_EQ(outcome.output, "");
  EXPECT_THAT(logNames(), IsEmpty());
}

TEST_F(ExceptionLog, TakesTextsOnceItIsOpen) {
  runWhole([this] {
    ASSERT_TRUE(open());
    writeException("one\n");
    EXPECT_EQ(contentOfLog("exception.txt"), "one\n") << "each is flushed";
    EXPECT_TRUE(open()) << "it stays";
    writeException("two\n");
  });
  EXPECT_EQ(contentOfLog("exception.txt"), "one\ntwo\n");
  EXPECT_THAT(logNames(), ElementsAre("exception.txt"));
}

TEST_F(ExceptionLog, ThatCannotBeOpenedIsTold) {
  runWhole([this] {
    EXPECT_FALSE(emf::openExceptionLog("/dev/null"));
    writeException("lost");
    EXPECT_TRUE(open());
    writeException("kept");
  });
  EXPECT_EQ(contentOfLog("exception.txt"), "kept");
}

class ExceptionLogThreshold : public ExceptionLog, public testing::WithParamInterface<Threshold> {};

INSTANTIATE_TEST_SUITE_P(Bytes, ExceptionLogThreshold,
                         testing::Values(Threshold{100001, false}, Threshold{199999, false},
                                         Threshold{200000, false}, Threshold{200001, true}),
                         [](const auto& row) { return std::to_string(row.param.bytes); });

TEST_P(ExceptionLogThreshold, OnlyMoreThan200000BytesRotate) {
  runWhole([this] {
    ASSERT_TRUE(open());
    writeException(bytes(100000));
    writeException(bytes(GetParam().bytes - 100000));
    EXPECT_THAT(logNames(), SizeIs(GetParam().rotates ? 2 : 1));
    writeException("y");
  });
  EXPECT_EQ(contentOfLog("exception.txt"),
            bytes(GetParam().bytes) + (GetParam().rotates ? "" : "y"));
}

TEST_F(ExceptionLog, RotatedFileIsNamedByTheLocalTime) {
  runWhole([this] {
    ::setenv("TZ", "FAR-14", 1);  // nowhere is it later
    ::tzset();
    ASSERT_TRUE(open());
    ::umask(0);
    const std::time_t before = std::time(nullptr);
    writeException(bytes(200001));
    const std::time_t after = std::time(nullptr);
    writeException("next");
    const auto names = logNames();
    ASSERT_THAT(names, SizeIs(2));
    EXPECT_EQ(names[0], "exception.txt");
    EXPECT_TRUE(std::regex_match(names[1], std::regex("exception[0-9]{14}\\.txt"))) << names[1];
    EXPECT_GE(names[1], "exception" + timeText(before) + ".txt");
    EXPECT_LE(names[1], "exception" + timeText(after) + ".txt");
    EXPECT_EQ(contentOfLog(names[1]), "next");
    struct stat status {};
    ASSERT_EQ(::stat(logFile(names[1]).c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0640U);
  });
}

TEST_F(ExceptionLog, RotationClosesTheOldFile) {
  runWhole([this] {
    ASSERT_TRUE(open());
    const auto before = openFiles();
    writeException(bytes(200001));
    EXPECT_EQ(openFiles(), before);
  });
}

TEST_F(ExceptionLog, NoTextIsAnAssertion) {
  runWhole([this] {
    ASSERT_TRUE(open());
    WriteException(nullptr);
    EXPECT_THAT(emf::doubles::platform().log.texts(),
                ElementsAre(HasSubstr("failed for '0 != szBuffer'.\n")));
  });
}

TEST_F(ExceptionLog, FailedRotationReportsAndEndsTheProcessWithStatus0) {
  const ChildOutcome outcome = run([this] {
    printAssertions();
    ASSERT_TRUE(open());
    fs::remove_all(logDirectory());
    directory_.write("log", "no directory");
    writeException(bytes(200001));
    ADD_FAILURE() << "still here";
  });
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.output, AllOf(printedAssertion("g_fExceptionLog != 0"),
                                    HasSubstr("\nin [WriteException] open file " +
                                              (directory_.path() / "log/exception").string() + "2"),
                                    EndsWith(".txt error, and call exit\n")));
}

TEST_F(ExceptionLog, OfThePrefix299BytesCount) {
  // Slashes more than one are one: a prefix of 310 bytes that names the directory with 299.
  const std::string name = directory_.path().string();
  const std::string prefix = bytes(299 - name.size(), '/') + name + "/not there";
  runWhole([&] {
    ASSERT_TRUE(emf::openExceptionLog(prefix.c_str()));
    EXPECT_THAT(logNames(), ElementsAre("exception.txt"));
    writeException(bytes(200001));
    EXPECT_THAT(logNames(), SizeIs(2)) << "and of that of the next file";
  });
}

class BothLogs : public ExceptionLog {
 protected:
  static std::string thread() {
    return "Thread:" + std::to_string(static_cast<int>(::pthread_self())) + ", ";
  }
};

TEST_F(BothLogs, GetOneLineWithTheThreadsNumber) {
  runWhole([this] {
    ASSERT_TRUE(open());
    WriteBothLogs("%s has %d rows\n", "100%", 7);
    EXPECT_EQ(contentOfLog("agent.log"), thread() + "100% has 7 rows\n");
    EXPECT_EQ(contentOfLog("exception.txt"), thread() + "100% has 7 rows\n");
  });
}

TEST_F(BothLogs, MayBeOne) {
  runWhole([this] {
    WriteBothLogs("only here");
    EXPECT_EQ(contentOfLog("agent.log"), thread() + "only here");
  });
  EXPECT_THAT(logNames(), ElementsAre("agent.log"));
}

TEST_F(BothLogs, AgentLogComesFirst) {
  fs::create_directory(logFile("agent1.log"));
  const ChildOutcome outcome = run([this] {
    ASSERT_TRUE(open());
    writeLog(bytes(100000));
    WriteBothLogs("the process ends in the rotation");
  });
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(contentOfLog("exception.txt"), "");
}

TEST_F(BothLogs, CountTheirBytesApart) {
  runWhole([this] {
    ASSERT_TRUE(open());
    writeLog(bytes(60000));
    writeException(bytes(200001));
    EXPECT_FALSE(fs::exists(logFile("agent1.log")));
    writeLog(bytes(40001));
    EXPECT_TRUE(fs::exists(logFile("agent1.log")));
  });
}

TEST_F(BothLogs, TextOf299BytesIsWhole) {
  runWhole([this] {
    WriteBothLogs("%s", bytes(299).c_str());
    EXPECT_EQ(contentOfLog("agent.log"), thread() + bytes(299));
    EXPECT_THAT(emf::doubles::platform().log.texts(), IsEmpty());
  });
}

TEST_F(BothLogs, TextOf300BytesIsCutAndReportedAndKeepsTheThread) {
  runWhole([this] {
    WriteBothLogs("%s", bytes(300).c_str());
    EXPECT_EQ(contentOfLog("agent.log"), thread() + bytes(299));
    EXPECT_THAT(
        emf::doubles::platform().log.texts(),
        ElementsAre(MatchesRegex("ASSERT: file emfglobal, line [1-9][0-9]* assertion failed "
                                 "for 'nBuf >= 0'.\n")));
  });
}

TEST_F(BothLogs, TextThatCannotBeFormattedIsReportedAndLeavesTheThread) {
  runWhole([this] {
    WriteBothLogs("%lc", static_cast<wint_t>(0x7FFFFFFF));
    EXPECT_EQ(contentOfLog("agent.log"), thread());
    EXPECT_THAT(emf::doubles::platform().log.texts(),
                ElementsAre(HasSubstr("failed for 'nBuf >= 0'.\n")));
  });
}

}  // namespace
}  // namespace emf::test
