// What the file logs do when the functions they stand on fail, and what they hand to them. Linked
// with strncpy_s, vsnprintf_s, fopen and the mutex lock wrapped.
#include <cerrno>
#include <sstream>

#include "file_log_fixture.h"
#include "lock_failure.h"

namespace {

bool copyFails = false;
bool openFails = false;
int formats = 0;
int formatsIntoClearedBuffers = 0;
// How the files were opened, as "w+ 37": the mode, and the umask of that moment.
std::vector<std::string> openings;

void noteOpening(const char* mode) {
  const mode_t mask = ::umask(0);
  ::umask(mask);
  std::ostringstream text;
  text << mode << ' ' << std::oct << mask;
  openings.push_back(text.str());
}

}  // namespace

extern "C" {
int __real_strncpy_s(char* dest, std::size_t destMax, const char* src, std::size_t count);
int __wrap_strncpy_s(char* dest, std::size_t destMax, const char* src, std::size_t count) {
  if (!copyFails) return __real_strncpy_s(dest, destMax, src, count);
  dest[0] = '\0';
  return ERANGE;
}

int __real_vsnprintf_s(char* dest, std::size_t destMax, std::size_t count, const char* format,
                       va_list arguments);
int __wrap_vsnprintf_s(char* dest, std::size_t destMax, std::size_t count, const char* format,
                       va_list arguments) {
  ++formats;
  if (std::count(dest, dest + destMax, '\0') == static_cast<std::ptrdiff_t>(destMax)) {
    ++formatsIntoClearedBuffers;
  }
  return __real_vsnprintf_s(dest, destMax, count, format, arguments);
}

std::FILE* __real_fopen(const char* path, const char* mode);
std::FILE* __wrap_fopen(const char* path, const char* mode) {
  noteOpening(mode);
  return openFails ? nullptr : __real_fopen(path, mode);
}
}

namespace emf::test {
namespace {

using emf::doubles::FailingLocks;
using emf::doubles::platform;
using ::testing::_;
using ::testing::ElementsAre;
using ::testing::FieldsAre;

class FileLogFailures : public FileLogs {};

TEST_F(FileLogFailures, EachFileIsOpenedForBothWaysUnderAUmaskOf037) {
  runWhole([this] {
    openings.clear();
    writeLog(bytes(100001));
    EXPECT_THAT(openings, ElementsAre("w+ 37", "w+ 37"));
    openings.clear();
    ASSERT_TRUE(emf::openExceptionLog(directory_.path().c_str()));
    writeException(bytes(200001));
    EXPECT_THAT(openings, ElementsAre("w+ 37", "w+ 37"));
  });
}

// Without a prefix the file would lie in the root directory, which no test may write to: the
// message tells the path.
TEST_F(FileLogFailures, PrefixIsEmptyWithoutTheVariable) {
  const ChildOutcome outcome = run([] {
    ::unsetenv(".");
    writeLog("first");
    openFails = true;
    writeLog(bytes(100000));
  });
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.output, "in [WriteLog] open file /log/agent1.log error, and call exit\n");
}

// The prefix is empty then, and the process ends: the trace is looked at by the log object that
// reports the assertion before.
class TracePrintingLogService : public PrintingLogService {
 public:
  NS_LOG_SERVICE1::LogObject* GetLog(const std::string& bundle, const std::string& module,
                                     const std::string& name) override {
    for (const auto& line : platform().trace.lines()) {
      std::printf("%s %d %s\n", line.call.c_str(), line.level, line.text.c_str());
    }
    return PrintingLogService::GetLog(bundle, module, name);
  }
};

ChildOutcome outcomeOfFailedCopy(const std::filesystem::path& directory, void (*write)()) {
  return inChild(directory, [&] {
    platform().log.absent();
    static auto& service = *new TracePrintingLogService;
    NS_BUNDLEMGR1::CheckIFBuf("LogSvcInterface")->push_back(&service);
    ::setenv(".", directory.c_str(), 1);
    copyFails = true;
    write();
  });
}

TEST_F(FileLogFailures, PrefixOfTheAgentLogThatCannotBeCopiedIsTracedAndEmpty) {
  const ChildOutcome outcome = outcomeOfFailedCopy(directory_.path(), [] {
    writeLog("first");
    openFails = true;
    writeLog(bytes(100000));
  });
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.output,
              ::testing::StartsWith("TaDebugWithPara 1 strncpy_s failed.\nemfglobal unknown"));
  EXPECT_THAT(outcome.output, ::testing::HasSubstr("open file /log/agent1.log error"));
}

TEST_F(FileLogFailures, PrefixOfTheExceptionLogThatCannotBeCopiedIsTracedAndEmpty) {
  const ChildOutcome outcome = outcomeOfFailedCopy(directory_.path(), [] {
    copyFails = false;
    ASSERT_TRUE(emf::openExceptionLog(std::getenv(".")));
    copyFails = true;
    openFails = true;
    writeException(bytes(200001));
  });
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.output,
              ::testing::StartsWith("TaDebugWithPara 3 strncpy_s failed!\nemfglobal unknown"));
  EXPECT_THAT(outcome.output, ::testing::HasSubstr("open file /log/exception2"));
}

// The text of the round before lies on the stack.
TEST_F(FileLogFailures, TextsAreFormattedIntoClearedBuffers) {
  runWhole([] {
    for (int round = 0; round < 2; ++round) {
      DbTrace("%s", bytes(5000).c_str());
      ConsolePrint("%s", bytes(5000).c_str());
      WriteBothLogs("%s", bytes(5000).c_str());
    }
    EXPECT_EQ(formats, 8) << "two of them for each line for both logs";
    EXPECT_EQ(formatsIntoClearedBuffers, formats);
  });
}

TEST_F(FileLogFailures, ThreadNumberThatCannotBeFormattedIsLeftOut) {
  runWhole([this] {
    platform().text.formattingFails("half a num");
    WriteBothLogs("text\n");
    EXPECT_EQ(contentOfLog("agent.log"), "text\n");
  });
}

TEST_F(FileLogFailures, AsnHeaderAndNoteThatCannotBeFormattedAreLeftOut) {
  runWhole([this] {
    platform().text.formattingFails("half");
    emf::writeAsnText(bytes(20000).c_str());
    EXPECT_EQ(contentOfLog("agent.log"), bytes(10190));
  });
}

TEST_F(FileLogFailures, LockThatFailsStopsNoText) {
  const ChildOutcome outcome = run([this] {
    ASSERT_TRUE(emf::openExceptionLog(directory_.path().c_str()));
    {
      FailingLocks failing;
      writeLog("one ");
      writeException("one ");
      WriteBothLogs("two ");
      ConsolePrint("three");
      emf::writeAsnText("four");
      WriteAsnTrace();
    }
    writeLog(" five");  // the locks are free
    emf::writeAsnText(" six");
  });
  EXPECT_EQ(outcome.status, kChildDone);
  EXPECT_EQ(outcome.output, "three");
  EXPECT_THAT(contentOfLog("agent.log"),
              ::testing::MatchesRegex("one Thread:.*, two Thread:.*, ASN Trace:\nfour"
                                      "Thread:.*, ASN Trace:\nfour five"
                                      "Thread:.*, ASN Trace:\n six"));
  EXPECT_THAT(contentOfLog("exception.txt"), ::testing::MatchesRegex("one Thread:.*, two "));
}

}  // namespace
}  // namespace emf::test
