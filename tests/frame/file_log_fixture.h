// The local log files in a directory of the test's own. Each test works in child processes, since
// the files stay open as long as their process lives.
#pragma once

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstdarg>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "child_process.h"
#include "filelogs.h"
#include "orma/bundle/interface_slot.h"
#include "platform_test.h"
#include "printf_text.h"
#include "temp_directory.h"

namespace emf::test {

// Whether a log of that size is rotated by the next text.
struct Threshold {
  std::size_t bytes;
  bool rotates;
};

// A log service whose log objects print, so that a message is seen from outside the process.
class PrintingLog : public NS_LOG_SERVICE1::LogObject {
 public:
  void LogText(const std::string&, const std::string&, int, int, const std::string&) override {}
  void LogFormat(const std::string& file, const std::string& function, int, int level,
                 const char* format, ...) override __attribute__((format(printf, 6, 7))) {
    va_list arguments;
    va_start(arguments, format);
    const std::string text = emf::doubles::printfText(format, arguments);
    va_end(arguments);
    std::printf("%s %s %d %s", file.c_str(), function.c_str(), level, text.c_str());
  }
  void LogAsn(const std::string&, const std::string&, int, const AsnType&) override {}
};

class PrintingLogService : public NS_LOG_SERVICE1::LogSvcInterface {
 public:
  std::string GetIFName() override { return "PrintingLogService"; }
  int IsValid() override { return 1; }
  NS_LOG_SERVICE1::LogObject* GetLog(const std::string&, const std::string&,
                                     const std::string&) override {
    return &log_;
  }

 private:
  PrintingLog log_;
};

class FileLogs : public emf::doubles::PlatformTest {
 protected:
  FileLogs() { std::filesystem::create_directory(logDirectory()); }

  // Runs `body` in a new process, in the test's directory, which is the prefix as well.
  template <class Body>
  ChildOutcome run(Body body) {
    return inChild(directory_.path(), [&] {
      ::setenv(".", directory_.path().c_str(), 1);
      body();
    });
  }
  // The same for a body that ends, with nothing amiss in it.
  template <class Body>
  void runWhole(Body body) {
    const ChildOutcome outcome = run(body);
    EXPECT_EQ(outcome.status, kChildDone) << outcome.output;
  }
  // Puts the log service that prints in the place of the double; for the child to call.
  static void printAssertions() {
    emf::doubles::platform().log.absent();
    static auto& service = *new PrintingLogService;
    NS_BUNDLEMGR1::CheckIFBuf("LogSvcInterface")->push_back(&service);
  }
  // What the printing log shows of one; the number of the line is any.
  static auto printedAssertion(const std::string& expression) {
    return ::testing::AllOf(
        ::testing::StartsWith("emfglobal unknown 0 ASSERT: "),
        ::testing::ContainsRegex("ASSERT: file emfglobal, line [1-9][0-9]* assertion failed for '" +
                                 expression + "'\\.\n"));
  }
  static std::ptrdiff_t openFiles() {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
  }

  std::filesystem::path logDirectory() const { return directory_.path() / "log"; }
  std::filesystem::path logFile(const std::string& name) const { return logDirectory() / name; }
  std::string contentOfLog(const std::string& name) const { return contentOf(logFile(name)); }
  std::vector<std::string> logNames() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(logDirectory())) {
      names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
  }

  emf::doubles::TempDirectory directory_;
};

inline std::string bytes(std::size_t count, char byte = 'x') { return std::string(count, byte); }

inline void writeLog(const std::string& text) { WriteLog(text.c_str()); }
inline void writeException(const std::string& text) { WriteException(text.c_str()); }

}  // namespace emf::test
