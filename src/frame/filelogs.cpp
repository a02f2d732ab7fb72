#include "filelogs.h"

#include <ace/Guard_T.h>
#include <ace/OS_NS_stdio.h>
#include <ace/Thread_Mutex.h>
#include <pthread.h>

#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <string>

#include "emfglobal.h"
#include "orma/text/secure_text.h"
#include "rotatinglog.h"

namespace {

constexpr char kSourceName[] = "emfglobal";
constexpr char kDbTraceTag[] = "[ORMACORBA DBLog][SATrace]:";
constexpr std::size_t kDbTraceBytes = 4096;
constexpr std::size_t kConsoleBytes = 2048;
constexpr std::size_t kLineBytes = 300;
constexpr std::size_t kAsnHeaderBytes = 4096;
constexpr std::size_t kAsnBytes = 10240;
// Where the note on a text that was cut begins, so that it ends inside the buffer.
constexpr std::size_t kAsnNoteOffset = 10190;

using Guard = ACE_Guard<ACE_Thread_Mutex>;

// Taken before the file mutex where both are needed. Never destroyed, as threads may still write
// while the process ends. A lock that fails does not stop the writing.
ACE_Thread_Mutex& consoleMutex() {
  static auto& mutex = *new ACE_Thread_Mutex;
  return mutex;
}

bool consoleEnabled = true;

// Guarded by the console mutex.
char asnText[kAsnBytes];
bool asnHasMore = false;
bool asnToStandardOutput = false;
bool asnToFile = true;

int threadNumber() { return static_cast<int>(::pthread_self()); }

void fillAsnText(const char* text) {
  if (text == nullptr) text = "";
  const std::size_t length = std::strlen(text);
  asnHasMore = length >= sizeof asnText;
  strncpy_s(asnText, sizeof asnText, text, sizeof asnText - 1);
}

void flushAsnText() {
  char header[kAsnHeaderBytes];
  if (snprintf_s(header, sizeof header, sizeof header - 1, "Thread:%d, ASN Trace:\n",
                 threadNumber()) < 0) {
    header[0] = '\0';
  }
  if (asnHasMore) {
    constexpr std::size_t kNoteBytes = kAsnBytes - kAsnNoteOffset;
    char* const note = asnText + kAsnNoteOffset;
    if (snprintf_s(note, kNoteBytes, kNoteBytes - 1, "\n...More ASN not print.\n") < 0) {
      note[0] = '\0';
    }
  }
  if (asnToStandardOutput) ACE_OS::printf("%s%s", header, asnText);
  if (asnToFile) {
    WriteLog(header);
    WriteLog(asnText);
  }
}

}  // namespace

void DbTrace(const char* format, ...) {
  std::string text = kDbTraceTag;
  char buffer[kDbTraceBytes];
  memset_s(buffer, sizeof buffer, 0, sizeof buffer);
  va_list arguments;
  va_start(arguments, format);
  const int length = vsnprintf_s(buffer, sizeof buffer, sizeof buffer - 1, format, arguments);
  va_end(arguments);
  // A text that was cut stays in the buffer and is sent all the same.
  if (length < 0) EMF_TRACE(kSourceName, TaDebug(1, "vsnprintf_s failed."));
  text += buffer;
  EMF_TRACE(kSourceName, TaDebug(1, text.c_str()));
}

void ConsolePrint(const char* format, ...) {
  if (!__atomic_load_n(&consoleEnabled, __ATOMIC_RELAXED)) return;
  char buffer[kConsoleBytes];
  memset_s(buffer, sizeof buffer, 0, sizeof buffer);
  va_list arguments;
  va_start(arguments, format);
  const int length = vsnprintf_s(buffer, sizeof buffer, sizeof buffer - 1, format, arguments);
  va_end(arguments);
  // Meant as it stands: a text that does not fit is a failure, and nothing of it is printed.
  if (length < 0) buffer[0] = '\0';
  Guard guard(consoleMutex());
  ACE_OS::printf("%s", buffer);
}

void WriteBothLogs(const char* format, ...) {
  char text[2 * kLineBytes];
  memset_s(text, sizeof text, 0, sizeof text);
  if (snprintf_s(text, kLineBytes, kLineBytes - 1, "Thread:%d, ", threadNumber()) < 0) {
    text[0] = '\0';
  }
  char line[kLineBytes];
  memset_s(line, sizeof line, 0, sizeof line);
  va_list arguments;
  va_start(arguments, format);
  const int length = vsnprintf_s(line, sizeof line, sizeof line - 1, format, arguments);
  va_end(arguments);
  if (length < 0) emf::reportAssertion(__LINE__, "nBuf >= 0");
  std::strncat(text, line, sizeof text - std::strlen(text) - 1);
  WriteLog(text);
  WriteException(text);
  emf::flushLogs();
}

void WriteAsnTrace() {
  Guard guard(consoleMutex());
  flushAsnText();
}

namespace emf {

void writeAsnText(const char* text) {
  Guard guard(consoleMutex());
  fillAsnText(text);
  flushAsnText();
}

void enableConsolePrint(bool enabled) {
  __atomic_store_n(&consoleEnabled, enabled, __ATOMIC_RELAXED);
}

void sendAsnTraceTo(bool standardOutput, bool agentLog) {
  Guard guard(consoleMutex());
  asnToStandardOutput = standardOutput;
  asnToFile = agentLog;
}

}  // namespace emf
