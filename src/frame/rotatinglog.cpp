#include "rotatinglog.h"

#include <ace/Guard_T.h>
#include <ace/OS_NS_stdio.h>
#include <ace/Thread_Mutex.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <exception>
#include <string>

#include "emfglobal.h"
#include "filelogs.h"
#include "orma/text/secure_text.h"
#include "orma/text/text.h"

// The files that are open; null before the first text. Guarded by the file mutex.
static std::FILE* g_fLog = nullptr;
static std::FILE* g_fExceptionLog = nullptr;

namespace {

constexpr char kSourceName[] = "emfglobal";
constexpr std::uint64_t kAgentLogBytes = 100000;
constexpr std::uint64_t kExceptionLogBytes = 200000;
constexpr int kLastAgentLog = 99;
constexpr std::size_t kPathBytes = 4096;
constexpr std::size_t kPrefixBytes = 300;
constexpr mode_t kLogUmask = 0037;
constexpr char kPrefixVariable[] = ".";  // this very name, meant as it stands

using Guard = ACE_Guard<ACE_Thread_Mutex>;

// Serialises both files. Taken behind the console mutex where both are needed. Never destroyed, as
// threads may still write while the process ends. A lock that fails does not stop the writing.
ACE_Thread_Mutex& fileMutex() {
  static auto& mutex = *new ACE_Thread_Mutex;
  return mutex;
}

// Guarded by the file mutex.
std::uint64_t agentLogBytes = 0;
std::uint64_t exceptionLogBytes = 0;
int agentLogIndex = 0;
char exceptionLogPrefix[kPrefixBytes];

std::FILE* openTruncated(const char* path) {
  const mode_t before = ::umask(kLogUmask);
  char resolved[kPathBytes];
  memset_s(resolved, sizeof resolved, 0, sizeof resolved);
  // The result is not looked at, meant as it stands: the buffer holds the path of a file that is
  // still to be made, too. Where a directory is missing, the path ends with the missing name.
  [[maybe_unused]] const char* const known = ::realpath(path, resolved);
  std::FILE* const file = std::fopen(resolved, "w+");
  ::umask(before);
  return file;
}

// The test for rotation stands behind this also when there was no text.
void append(std::FILE* file, const char* text, std::uint64_t& bytes) {
  if (text == nullptr) {
    emf::reportAssertion(__LINE__, "0 != szBuffer");
    return;
  }
  bytes += std::fwrite(text, 1, std::strlen(text), file);
  std::fflush(file);
}

// For a rotation without a file. The report that there is no memory for is left out; the output is
// flushed, as _exit leaves the buffers of stdio alone.
[[noreturn]] void endProcess(const char* writer, const std::string& path, int line,
                             const char* expression) {
  try {
    emf::reportAssertion(line, expression);
  } catch (const std::exception&) {
  }
  ACE_OS::printf("in [%s] open file %s error, and call exit\n", writer, path.c_str());
  std::fflush(stdout);
  ::_exit(0);
}

// The prefix is empty unless the variable is set.
std::string agentLogPath(int index) {
  char prefix[kPrefixBytes] = "";
  if (char* const value = std::getenv(kPrefixVariable)) {
    OrmaTrim(value);
    if (strncpy_s(prefix, sizeof prefix, value, sizeof prefix - 1) != 0) {
      EMF_TRACE(kSourceName, TaDebugWithPara(1, "strncpy_s failed."));
    }
  }
  return std::string(prefix) + "/log/agent" + std::to_string(index) + ".log";
}

// The path comes first: without memory for it the old file stays open, and the next text rotates.
void rotateAgentLog() {
  const int index = agentLogIndex < kLastAgentLog ? agentLogIndex + 1 : 0;
  const std::string path = agentLogPath(index);
  std::fclose(g_fLog);
  agentLogIndex = index;
  agentLogBytes = 0;
  g_fLog = openTruncated(path.c_str());
  if (g_fLog == nullptr) endProcess("WriteLog", path, __LINE__, "g_fLog != 0");
}

std::string nextExceptionLogPath() {
  char prefix[kPrefixBytes];
  memset_s(prefix, sizeof prefix, 0, sizeof prefix);
  if (strncpy_s(prefix, sizeof prefix, exceptionLogPrefix, sizeof prefix - 1) != 0) {
    EMF_TRACE(kSourceName, TaDebugWithPara(3, "strncpy_s failed!"));
  }
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  char time[16] = "";
  if (::localtime_r(&now, &local) != nullptr) {
    std::strftime(time, sizeof time, "%Y%m%d%H%M%S", &local);
  }
  return std::string(prefix) + "/log/exception" + time + ".txt";
}

void rotateExceptionLog() {
  const std::string path = nextExceptionLogPath();
  std::fclose(g_fExceptionLog);
  exceptionLogBytes = 0;
  g_fExceptionLog = openTruncated(path.c_str());
  if (g_fExceptionLog == nullptr) {
    endProcess("WriteException", path, __LINE__, "g_fExceptionLog != 0");
  }
}

}  // namespace

// A first file that cannot be opened costs the text without a word, where a rotation that fails
// ends the process: the difference is meant.
void WriteLog(const char* text) {
  Guard guard(fileMutex());
  if (g_fLog == nullptr) g_fLog = openTruncated("./log/agent.log");
  if (g_fLog == nullptr) return;
  append(g_fLog, text, agentLogBytes);
  if (agentLogBytes > kAgentLogBytes) rotateAgentLog();
}

void WriteException(const char* text) {
  Guard guard(fileMutex());
  if (g_fExceptionLog == nullptr) return;
  append(g_fExceptionLog, text, exceptionLogBytes);
  if (exceptionLogBytes > kExceptionLogBytes) rotateExceptionLog();
}

namespace emf {

void reportAssertion(int line, const char* expression) {
  constexpr char kFormat[] = "ASSERT: file %s, line %d assertion failed for '%s'.\n";
  if (NS_LOG_SERVICE1::LogObject* log = GetEmfLog()) {
    log->LogFormat(kSourceName, kUnknownFunction, line, 0, kFormat, kSourceName, line, expression);
  } else {
    GetCorbaLogProxy()->PrintFormat(kFormat, kSourceName, line, expression);
  }
}

void flushLogs() {
  Guard guard(fileMutex());
  if (g_fLog != nullptr) std::fflush(g_fLog);
  if (g_fExceptionLog != nullptr) std::fflush(g_fExceptionLog);
}

bool openExceptionLog(const char* prefix) {
  Guard guard(fileMutex());
  if (g_fExceptionLog != nullptr) return true;
  strncpy_s(exceptionLogPrefix, sizeof exceptionLogPrefix, prefix, sizeof exceptionLogPrefix - 1);
  const std::string path = std::string(exceptionLogPrefix) + "/log/exception.txt";
  g_fExceptionLog = openTruncated(path.c_str());
  return g_fExceptionLog != nullptr;
}

}  // namespace emf
