// Where trace calls, log objects and log proxies write: one sink a process, by the configuration's
// "log" section.
//
// Thread-safety: thread-safe. Nothing is thrown but by configureLog.
#pragma once

#include <string>

#include "orma/bundle/export.h"

namespace orma {

class Configuration;

// Builds the sink anew: rotating file, standard error, syslog, in text or JSON lines. Throws
// std::runtime_error naming the file when it cannot be opened; the sink stays as it was.
ORMA_API void configureLog(const Configuration& configuration);

// Waits until everything written so far has reached the files.
ORMA_API void flushLog();

// Opens the log file anew by its name, as a program that has renamed it expects; no message gets
// lost. Why it cannot be opened, in words: the messages then go on into the file that is open.
// Empty when all went well, and when there is no log file.
ORMA_API std::string reopenLog();

// Whether a message of this level would be written now.
ORMA_API bool logEnabled(int level) noexcept;

// One message. `logger` names the log object or proxy, empty for trace calls.
ORMA_API void writeLog(int level, const std::string& logger, const std::string& file,
                       const std::string& function, int line, const std::string& text) noexcept;

}  // namespace orma
