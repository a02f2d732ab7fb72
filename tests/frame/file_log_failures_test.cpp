// What the file logs do when the functions they stand on fail. Linked with strncpy_s, fopen and the
// mutex lock wrapped.
#include <cerrno>

#include "file_log_fixture.h"
#include "lock_failure.h"

namespace {

bool copyFails = false;
bool openFails = false;

}  // namespace

extern "C" {
int __real_strncpy_s(char* dest, std::size_t destMax, const char* src, std::size_t count);
int __wrap_strncpy_s(char* dest, std::size_t destMax, const char* src, std::size_t count) {
  if (!copyFails) return __real_strncpy_s(dest, destMax, src, count);
  dest[0] = '\0';
  return ERANGE;
}

std::FILE* __real_fopen(const char* path, const char* mode);
std::FILE* __wrap_fopen(const char* path, const char* mode) {
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
    }
    writeLog(" five");  // the locks are free
    emf::writeAsnText(" six");
  });
  EXPECT_EQ(outcome.status, kChildDone);
  EXPECT_EQ(outcome.output, "three");
  EXPECT_THAT(contentOfLog("agent.log"),
              ::testing::MatchesRegex("one Thread:.*, two Thread:.*, ASN Trace:\nfour five"
                                      "Thread:.*, ASN Trace:\n six"));
  EXPECT_THAT(contentOfLog("exception.txt"), ::testing::MatchesRegex("one Thread:.*, two "));
}

}  // namespace
}  // namespace emf::test
