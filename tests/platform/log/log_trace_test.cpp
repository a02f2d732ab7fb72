#include "orma/log/trace.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <cstdlib>
#include <map>
#include <thread>

#include "log_fixture.h"

namespace NS_CORBA {
namespace {

using testing::ElementsAre;

void setSource(const char* file, int line) {
  GetTss()->file = file;
  GetTss()->function = "unknown";
  GetTss()->line = line;
}

class TraceCalls : public LogTest {
 protected:
  TraceCalls() {
    logToFile();
    setSource("deviceinfo", 57);
  }
};

TEST_F(TraceCalls, CarryTheSourceOfTheirThread) {
  TaDebug(1, "first");
  EXPECT_EQ(onlyLine(), "info deviceinfo:57 unknown - first");
}

TEST_F(TraceCalls, TextIsNeverAFormat) {
  TaDebug(1, "100%s %n %d");
  EXPECT_EQ(onlyLine(), "info deviceinfo:57 unknown - 100%s %n %d");
}

TEST_F(TraceCalls, FormatIsCarriedOut) {
  TaDebugWithPara(1, "found %d of %s, %5.1f%%", 3, "devices", 2.5);
  EXPECT_EQ(onlyLine(), "info deviceinfo:57 unknown - found 3 of devices,   2.5%");
}

TEST_F(TraceCalls, LevelsUpToTheThresholdAreWritten) {
  TaDebug(0, "error");
  TaDebug(1, "information");
  TaDebug(2, "between");
  TaDebug(3, "detail");
  EXPECT_EQ(lines().size(), 2u);
  logToFile(R"(,"level": 3)");
  TaDebug(3, "detail");
  TaDebug(4, "more");
  EXPECT_EQ(lines().size(), 3u);
  EXPECT_FALSE(orma::logEnabled(4));
  EXPECT_TRUE(orma::logEnabled(3));
}

TEST_F(TraceCalls, MessageAboveTheThresholdIsNotEvenFormatted) {
  // Formatting it would read from an address that is not mapped.
  const auto* unreadable = reinterpret_cast<const char*>(0x10);
  TaDebugWithPara(3, "%s", unreadable);
  TaDebug(3, unreadable);
  EXPECT_THAT(lines(), ElementsAre());
}

TEST_F(TraceCalls, TraceWithoutALevelIsAlwaysWritten) {
  logToFile(R"(,"level": 0)");
  TaTrace("%s %d", "count", 7);
  EXPECT_EQ(onlyLine(), "trace deviceinfo:57 unknown - count 7");
}

TEST_F(TraceCalls, NullTextsAreTolerated) {
  const char* volatile null = nullptr;  // out of the compiler's sight
  TaDebug(1, null);
  TaDebugWithPara(1, "%s", null);
  TaTrace("[%s]", null);
  std::vector<std::string> texts;
  for (const std::string& line : lines()) texts.push_back(line.substr(line.find(" - ") + 3));
  EXPECT_THAT(texts, ElementsAre("(null)", "(null)", "[(null)]"));
}

TEST_F(TraceCalls, TextsOfAnyLengthComeWhole) {
  for (const std::size_t length : {1022u, 1023u, 1024u, 1025u, 100000u}) {
    std::filesystem::resize_file(file_, 0);
    const std::string text(length, 'x');
    TaDebugWithPara(1, "%s", text.c_str());
    EXPECT_EQ(onlyLine(), "info deviceinfo:57 unknown - " + text);
  }
}

TEST_F(TraceCalls, ErrnoStaysAsItWas) {
  errno = ENOTTY;
  TaDebugWithPara(1, "%d", 1);
  EXPECT_EQ(errno, ENOTTY);
}

TEST_F(TraceCalls, EachThreadHasItsOwnSource) {
  setSource("deviceinfo", 1);
  std::thread([] {
    EXPECT_EQ(GetTss()->file, "");
    EXPECT_EQ(GetTss()->line, 0);
    setSource("emftopointerface", 2);
    TaDebug(1, "other");
  }).join();
  EXPECT_EQ(GetTss()->file, "deviceinfo");
  EXPECT_EQ(onlyLine(), "info emftopointerface:2 unknown - other");
}

// Writes from a destructor that runs when the thread's record may be gone.
struct LateWriter {
  ~LateWriter() {
    setSource("a source file with a long name", 9);
    TaDebug(1, "late words");
  }
};

TEST_F(TraceCalls, MayComeFromDestructorsOfAThread) {
  std::thread([] {
    static thread_local LateWriter writer;
    static_cast<void>(writer);
    TaDebug(1, "early words");
  }).join();
  std::thread([] {
    TaDebug(1, "early words");
    static thread_local LateWriter writer;
    static_cast<void>(writer);
  }).join();
  EXPECT_EQ(lines().size(), 4u);
}

TEST_F(TraceCalls, MayComeFromDestructorsOfTheProcess) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(
      {
        configureLogWith("{}");
        static LateWriter writer;
        std::exit(0);
      },
      testing::ExitedWithCode(0), "info a source file with a long name:9 unknown - late words");
}

// Not of the fixture above: that one configures the log.
TEST(UnconfiguredLog, WritesTextUpToLevel1ToStandardError) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(
      {
        setSource("deviceinfo", 3);
        TaDebug(3, "detail");
        TaDebug(1, "information");
        std::exit(0);
      },
      testing::ExitedWithCode(0),
      "^[-0-9]+T[:0-9]+\\.[0-9]+Z [0-9]+ info deviceinfo:3 unknown - information\n$");
}

class LogUnderThreads : public LogTest {
 protected:
  static constexpr int kThreads = 8;
  static constexpr int kEach = 200;

  static void writeMany(int thread) {
    setSource("writer", thread);
    for (int i = 0; i < kEach; ++i) TaDebugWithPara(1, "%d %s", i, std::string(i, 'x').c_str());
  }

  template <typename Meanwhile>
  static void writeFromThreads(Meanwhile meanwhile) {
    std::vector<std::thread> threads;
    for (int thread = 0; thread < kThreads; ++thread) threads.emplace_back(writeMany, thread);
    meanwhile();
    for (std::thread& thread : threads) thread.join();
  }

  // Counts whole lines by writer; each writer's must come in order.
  static void count(const std::vector<std::string>& lines, std::map<int, int>& next) {
    for (const std::string& line : lines) {
      const auto source = line.find(" info writer:");
      ASSERT_NE(source, std::string::npos) << line;
      const int thread = std::stoi(line.substr(source + 13));
      const int i = next[thread]++;
      const std::string expected = "unknown - " + std::to_string(i) + " " + std::string(i, 'x');
      ASSERT_EQ(line.substr(line.find("unknown")), expected);
    }
  }

  static std::map<int, int> all() {
    std::map<int, int> counts;
    for (int thread = 0; thread < kThreads; ++thread) counts[thread] = kEach;
    return counts;
  }
};

TEST_F(LogUnderThreads, LinesComeWholeAndInOrder) {
  logToFile();
  writeFromThreads([] {});
  std::map<int, int> counts;
  count(lines(), counts);
  EXPECT_EQ(counts, all());
}

TEST_F(LogUnderThreads, LinesComeWholeAcrossRotation) {
  logToFile(R"(,"maxFileBytes": 4096, "maxFiles": 100)");
  writeFromThreads([] {});
  std::map<int, int> counts;
  for (int i = 100; i > 0; --i) {
    count(linesOf(directory_ / ("agent." + std::to_string(i) + ".log")), counts);
  }
  count(lines(), counts);
  EXPECT_EQ(counts, all());
}

TEST_F(LogUnderThreads, NothingIsLostWhileTheLogIsReconfigured) {
  const std::string other = directory_ / "other.log";
  logToFile();
  writeFromThreads([&] {
    for (int i = 0; i < 20; ++i) {
      configureLogWith(R"({"stderr": false, "file": ")" + other + "\"}");
      logToFile();
    }
  });
  EXPECT_EQ(lines().size() + linesOf(other).size(), std::size_t{kThreads * kEach});
}

}  // namespace
}  // namespace NS_CORBA
