// The agent log: where it is opened, when it is rotated, and what becomes of it when it cannot be.
#include <sys/resource.h>

#include <cerrno>
#include <csignal>

#include "file_log_fixture.h"

namespace emf::test {
namespace {

namespace fs = std::filesystem;
using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class AgentLog : public FileLogs {
 protected:
  std::string exitMessage(const std::string& path) const {
    return "in [WriteLog] open file " + path + " error, and call exit\n";
  }
  static mode_t modeOf(const fs::path& file) {
    struct stat status {};
    EXPECT_EQ(::stat(file.c_str(), &status), 0) << file;
    return status.st_mode & 07777;
  }
};

TEST_F(AgentLog, FirstTextOpensTheFirstFile) {
  runWhole([] {
    writeLog("one\n");
    writeLog("two\n");
  });
  EXPECT_THAT(logNames(), ElementsAre("agent.log"));
  EXPECT_EQ(contentOfLog("agent.log"), "one\ntwo\n");
}

TEST_F(AgentLog, EachTextIsInTheFileWhenTheCallReturns) {
  runWhole([this] {
    writeLog("without a line end");
    EXPECT_EQ(contentOfLog("agent.log"), "without a line end");
  });
}

TEST_F(AgentLog, OlderContentsAreGone) {
  directory_.write("log/agent.log", "of the process before");
  runWhole([] { writeLog("new"); });
  EXPECT_EQ(contentOfLog("agent.log"), "new");
}

TEST_F(AgentLog, TextIsNoFormat) {
  runWhole([] { writeLog("100%s %n\n"); });
  EXPECT_EQ(contentOfLog("agent.log"), "100%s %n\n");
}

class AgentLogThreshold : public AgentLog, public testing::WithParamInterface<Threshold> {};

INSTANTIATE_TEST_SUITE_P(Bytes, AgentLogThreshold,
                         testing::Values(Threshold{99999, false}, Threshold{100000, false},
                                         Threshold{100001, true}),
                         [](const auto& row) { return std::to_string(row.param.bytes); });

TEST_P(AgentLogThreshold, OnlyMoreThan100000BytesRotate) {
  runWhole([this] {
    writeLog(bytes(50000));
    writeLog(bytes(GetParam().bytes - 50000));
    EXPECT_THAT(logNames(), SizeIs(GetParam().rotates ? 2 : 1));
    writeLog("y");
  });
  EXPECT_EQ(contentOfLog("agent.log"), bytes(GetParam().bytes) + (GetParam().rotates ? "" : "y"));
  EXPECT_EQ(contentOfLog("agent1.log"), GetParam().rotates ? "y" : "");
}

TEST_F(AgentLog, TextThatCrossesTheThresholdStaysWhole) {
  runWhole([] {
    writeLog(bytes(100000));
    writeLog(bytes(5000, 'y'));
    writeLog("z");
  });
  EXPECT_EQ(contentOfLog("agent.log"), bytes(100000) + bytes(5000, 'y'));
  EXPECT_EQ(contentOfLog("agent1.log"), "z");
}

TEST_F(AgentLog, RingHas100NamesAndTheFirstNameIsNotAmongThem) {
  runWhole([this] {
    for (int file = 0; file < 99; ++file) writeLog(bytes(100001));
    EXPECT_THAT(logNames(), SizeIs(100));
    EXPECT_FALSE(fs::exists(logFile("agent0.log")));
    writeLog("in 99" + bytes(100000));  // the next is 0
    EXPECT_TRUE(fs::exists(logFile("agent0.log")));
    writeLog("in 0" + bytes(100000));
    EXPECT_EQ(contentOfLog("agent1.log"), "") << "the oldest is begun anew";
    writeLog("in 1");
  });
  EXPECT_THAT(logNames(), SizeIs(101));
  EXPECT_EQ(contentOfLog("agent.log"), bytes(100001));
  EXPECT_EQ(contentOfLog("agent99.log"), "in 99" + bytes(100000));
  EXPECT_EQ(contentOfLog("agent0.log"), "in 0" + bytes(100000));
  EXPECT_EQ(contentOfLog("agent1.log"), "in 1");
  EXPECT_EQ(contentOfLog("agent2.log"), bytes(100001));
}

TEST_F(AgentLog, RotationClosesTheOldFile) {
  runWhole([] {
    writeLog("first");
    const auto before = openFiles();
    writeLog(bytes(100000));
    EXPECT_EQ(openFiles(), before);
  });
}

TEST_F(AgentLog, PrefixIsReadAtEachRotationAndTrimmedInPlace) {
  fs::create_directories(directory_.path() / "other/log");
  runWhole([this] {
    const std::string other = "  " + (directory_.path() / "other").string() + " \t";
    writeLog(bytes(100001));
    ::setenv(".", other.c_str(), 1);
    writeLog(bytes(100001));
    EXPECT_EQ(std::getenv("."), (directory_.path() / "other").string());
    writeLog("here");
  });
  EXPECT_THAT(logNames(), ElementsAre("agent.log", "agent1.log"));
  EXPECT_EQ(contentOf(directory_.path() / "other/log/agent2.log"), "here");
}

TEST_F(AgentLog, OfThePrefix299BytesCount) {
  const ChildOutcome outcome = run([] {
    writeLog("first");
    ::setenv(".", ("/dev/null/" + bytes(400)).c_str(), 1);
    writeLog(bytes(100000));
  });
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.output, exitMessage("/dev/null/" + bytes(289) + "/log/agent1.log"));
}

TEST_F(AgentLog, FilesAreForOwnerAndGroupWhateverTheUmask) {
  for (const mode_t mask : {0000, 0022, 0777}) {
    runWhole([this, mask] {
      fs::remove(logFile("agent.log"));
      fs::remove(logFile("agent1.log"));
      ::umask(mask);
      writeLog(bytes(100001));
      EXPECT_EQ(modeOf(logFile("agent.log")), 0640U);
      EXPECT_EQ(modeOf(logFile("agent1.log")), 0640U);
      EXPECT_EQ(::umask(0), mask) << "it is restored";
    });
  }
}

TEST_F(AgentLog, UmaskIsRestoredWhenTheFileCannotBeOpened) {
  fs::create_directory(logFile("agent.log"));
  runWhole([] {
    ::umask(0027);
    writeLog("lost");
    EXPECT_EQ(::umask(0), 0027U);
  });
}

TEST_F(AgentLog, FirstFileThatCannotBeOpenedCostsTheTextAndIsTriedAgain) {
  fs::create_directory(logFile("agent.log"));
  const ChildOutcome outcome = run([this] {
    printAssertions();
    writeLog("lost");
    WriteLog(nullptr);
    EXPECT_THAT(emf::doubles::platform().trace.lines(), IsEmpty());
    fs::remove(logFile("agent.log"));
    writeLog("kept");
  });
  EXPECT_EQ(outcome.status, kChildDone);
  EXPECT_EQ(outcome.output, "") << "not a word";
  EXPECT_EQ(contentOfLog("agent.log"), "kept");
}

TEST_F(AgentLog, WorkingDirectoryThatIsGoneCostsTheText) {
  const fs::path gone = directory_.path() / "gone";
  fs::create_directory(gone);
  runWhole([&] {
    fs::current_path(gone);
    fs::remove(gone);
    writeLog("lost");
    fs::current_path(directory_.path());
    writeLog("kept");
  });
  EXPECT_EQ(contentOfLog("agent.log"), "kept");
}

// Meant as it stands: the path ends where the directories do.
TEST_F(AgentLog, MissingDirectorysNameIsTheFilesName) {
  fs::remove(logDirectory());
  runWhole([] { writeLog("text"); });
  EXPECT_EQ(contentOf(logDirectory()), "text");
}

TEST_F(AgentLog, DirectoryThatVanishesTakesTheOpenFileWithItAndNothingStops) {
  runWhole([this] {
    writeLog(bytes(99999));
    fs::remove_all(logDirectory());
    writeLog("y");
    EXPECT_FALSE(fs::exists(logDirectory()));
    fs::create_directory(logDirectory());
    writeLog("z");
    writeLog("in the next");
  });
  EXPECT_THAT(logNames(), ElementsAre("agent1.log"));
  EXPECT_EQ(contentOfLog("agent1.log"), "in the next");
}

TEST_F(AgentLog, RotationIntoAVanishedDirectoryHasOneFileMoreAndThenEnds) {
  const ChildOutcome outcome = run([this] {
    writeLog("first");
    fs::remove_all(logDirectory());
    writeLog(bytes(100001));
    writeLog(bytes(100001));  // its rotation finds a file in the place of the directory
    ADD_FAILURE() << "still here";
  });
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.output, exitMessage(logFile("agent2.log").string()));
  EXPECT_EQ(contentOf(logDirectory()), bytes(100001));
}

TEST_F(AgentLog, FailedRotationReportsAndEndsTheProcessWithStatus0) {
  fs::create_directory(logFile("agent1.log"));
  const ChildOutcome outcome = run([] {
    printAssertions();
    writeLog(bytes(100001));
    ADD_FAILURE() << "still here";
  });
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.output, AllOf(printedAssertion("g_fLog != 0"),
                                    EndsWith(exitMessage(logFile("agent1.log").string()))));
  EXPECT_EQ(contentOfLog("agent.log"), bytes(100001));
}

TEST_F(AgentLog, NoTextIsAnAssertion) {
  runWhole([] {
    writeLog("before ");
    WriteLog(nullptr);
    writeLog("after");
    EXPECT_THAT(emf::doubles::platform().log.lines(),
                ElementsAre(testing::FieldsAre("ii_orma_corbaagent_bundle/ii_ormacorba_emf/debug",
                                               "LogFormat", "emfglobal", "unknown", testing::Gt(0),
                                               0, HasSubstr("failed for '0 != szBuffer'.\n"))));
  });
  EXPECT_EQ(contentOfLog("agent.log"), "before after");
}

TEST_F(AgentLog, AssertionNamesItsLineInTheRecordAndInTheText) {
  runWhole([] {
    writeLog("first");
    WriteLog(nullptr);
    const auto lines = emf::doubles::platform().log.lines();
    ASSERT_THAT(lines, SizeIs(1));
    EXPECT_EQ(lines[0].text, "ASSERT: file emfglobal, line " + std::to_string(lines[0].line) +
                                 " assertion failed for '0 != szBuffer'.\n");
  });
}

TEST_F(AgentLog, AssertionGoesToTheProxyWithoutALogService) {
  runWhole([] {
    emf::doubles::platform().log.absent();
    emf::doubles::platform().proxies.present();
    WriteLog(nullptr);
    EXPECT_THAT(
        emf::doubles::platform().proxies.calls(),
        ElementsAre("CreateLogProxy ii_orma_corbaagent_bundleii_ormacorba_emf",
                    "SetBundle ii_orma_corbaagent_bundle", "SetModule ii_ormacorba_emf",
                    testing::MatchesRegex("PrintFormat ASSERT: file emfglobal, line [1-9].* "
                                          "assertion failed for '0 != szBuffer'.\n")));
  });
}

class FullDevice : public AgentLog {
 protected:
  // Lets no file grow beyond `limitBytes`, as a full device would.
  static void limitFiles(rlim_t limitBytes) {
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit limit{};
    ::getrlimit(RLIMIT_FSIZE, &limit);
    limit.rlim_cur = limitBytes;
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
  }
  static std::string line(int number) {
    const std::string digits = std::to_string(number);
    return digits + bytes(999 - digits.size(), '-') + "\n";
  }
  static std::string lines(int first, int last) {
    std::string all;
    for (int i = first; i <= last; ++i) all += line(i);
    return all;
  }
};

TEST_F(FullDevice, LosesTextsAndNothingElse) {
  runWhole([] {
    writeLog(line(1));
    limitFiles(50000);
    for (int i = 2; i <= 60; ++i) writeLog(line(i));
  });
  EXPECT_EQ(contentOfLog("agent.log"), lines(1, 50));
}

TEST_F(FullDevice, LostTextsCountForTheRotation) {
  runWhole([] {
    writeLog(line(1));
    limitFiles(50000);
    for (int i = 2; i <= 101; ++i) writeLog(line(i));
    writeLog(line(102));
  });
  EXPECT_EQ(contentOfLog("agent.log"), lines(1, 50));
  EXPECT_EQ(contentOfLog("agent1.log"), line(102));
}

// A text that the stream's buffer takes counts, as above; a longer one goes past it.
TEST_F(FullDevice, TextThatTheStreamDoesNotTakeDoesNotCount) {
  fs::create_symlink("/dev/full", logFile("agent.log"));
  runWhole([] { writeLog(bytes(100001)); });
  EXPECT_THAT(logNames(), ElementsAre("agent.log"));
}

TEST_F(FullDevice, TextsComeWholeAgainWhenThereIsRoom) {
  runWhole([] {
    writeLog(line(1));
    limitFiles(2500);
    for (int i = 2; i <= 5; ++i) writeLog(line(i));
    limitFiles(RLIM_INFINITY);
    writeLog("\n" + line(6));
  });
  EXPECT_EQ(contentOfLog("agent.log"), (lines(1, 3).substr(0, 2500) + "\n" + line(6)));
}

TEST_F(FullDevice, ThatIsOneFromTheStartLosesEverything) {
  fs::create_symlink("/dev/full", logFile("agent.log"));
  runWhole([] {
    for (int i = 1; i <= 101; ++i) writeLog(line(i));
    writeLog(line(102));
  });
  EXPECT_EQ(contentOfLog("agent1.log"), line(102));
}

}  // namespace
}  // namespace emf::test
