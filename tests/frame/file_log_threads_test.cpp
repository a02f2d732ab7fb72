// Eight threads at once: every text comes out whole and once, and the locks keep their order.
#include <map>
#include <sstream>
#include <thread>

#include "file_log_fixture.h"

namespace emf::test {
namespace {

using ::testing::SizeIs;

constexpr int kThreads = 8;

class FileLogThreads : public FileLogs {
 protected:
  // Runs `body` with the number of the thread in eight threads.
  template <class Body>
  static void inThreads(Body body) {
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) threads.emplace_back([&body, i] { body(i); });
    for (std::thread& thread : threads) thread.join();
  }

  // How often each line stands in the files of that beginning.
  std::map<std::string, int> linesOf(const std::string& beginning) const {
    std::map<std::string, int> lines;
    for (const std::string& name : logNames()) {
      if (name.rfind(beginning, 0) != 0) continue;
      std::istringstream content(contentOfLog(name));
      for (std::string line; std::getline(content, line);) ++lines[line];
    }
    return lines;
  }
};

TEST_F(FileLogThreads, LinesComeOutWholeAndOnceAcrossRotations) {
  constexpr int kLines = 700;
  const std::string filler = bytes(90, '.');
  runWhole([&] {
    inThreads([&](int thread) {
      for (int i = 0; i < kLines; ++i) {
        writeLog(std::to_string(thread) + "/" + std::to_string(i) + filler + "\n");
      }
    });
  });
  EXPECT_THAT(logNames(), SizeIs(::testing::Ge(5U)));
  const auto lines = linesOf("agent");
  EXPECT_THAT(lines, SizeIs(kThreads * kLines));
  for (int thread = 0; thread < kThreads; ++thread) {
    for (int i = 0; i < kLines; ++i) {
      const std::string line = std::to_string(thread) + "/" + std::to_string(i) + filler;
      EXPECT_EQ(lines.count(line), 1U) << line;
      if (lines.count(line) == 1) {
        EXPECT_EQ(lines.at(line), 1) << line;
      }
    }
  }
}

TEST_F(FileLogThreads, LinesForBothLogsStandInBoth) {
  constexpr int kLines = 200;
  runWhole([&] {
    ASSERT_TRUE(emf::openExceptionLog(directory_.path().c_str()));
    inThreads([&](int thread) {
      for (int i = 0; i < kLines; ++i) WriteBothLogs("%d/%d\n", thread, i);
    });
  });
  const auto agent = linesOf("agent");
  EXPECT_THAT(agent, SizeIs(kThreads * kLines));
  EXPECT_EQ(agent, linesOf("exception"));
}

// The console mutex comes first: the thread sanitizer reports a thread that takes them otherwise.
TEST_F(FileLogThreads, EveryWriterMayRunBesideEveryOther) {
  constexpr int kRounds = 60;
  const ChildOutcome outcome = run([&] {
    ASSERT_TRUE(emf::openExceptionLog(directory_.path().c_str()));
    emf::sendAsnTraceTo(true, true);
    inThreads([&](int thread) {
      for (int i = 0; i < kRounds; ++i) {
        writeLog("log " + bytes(500) + "\n");
        writeException("exception " + bytes(500) + "\n");
        WriteBothLogs("both %d\n", thread);
        ConsolePrint("console %d\n", thread);
        emf::writeAsnText(("asn " + std::to_string(thread) + "\n").c_str());
        WriteAsnTrace();
        DbTrace("trace %d", thread);
        emf::enableConsolePrint(true);
        emf::sendAsnTraceTo(true, true);
        WriteLog(nullptr);
      }
    });
  });
  EXPECT_EQ(outcome.status, kChildDone) << outcome.output;
  std::map<std::string, int> printed;
  int asnTraces = 0;
  std::istringstream content(outcome.output);
  for (std::string line; std::getline(content, line);) ++printed[line];
  for (int thread = 0; thread < kThreads; ++thread) {
    EXPECT_EQ(printed["console " + std::to_string(thread)], kRounds);
    EXPECT_GE(printed["asn " + std::to_string(thread)], kRounds);
    asnTraces += printed["asn " + std::to_string(thread)];
  }
  EXPECT_EQ(asnTraces, 2 * kThreads * kRounds);
  EXPECT_EQ(linesOf("agent")["log " + bytes(500)], kThreads * kRounds);
  EXPECT_EQ(linesOf("exception")["exception " + bytes(500)], kThreads * kRounds);
}

}  // namespace
}  // namespace emf::test
