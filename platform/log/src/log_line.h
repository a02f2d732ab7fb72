// A message and its two forms: a line of text and a line of JSON.
//
// Thread-safety: thread-safe. Whatever the texts hold, the result is one line, without its end.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace orma {

struct LogMessage {
  std::optional<int> level;  // absent: traced with no level
  std::string_view logger;
  std::string_view file;
  std::string_view function;
  int line = 0;
  std::string_view text;
  std::chrono::system_clock::time_point time = std::chrono::system_clock::now();
  pid_t thread = 0;
};

// 2026-03-01T12:34:56.789Z 4711 detail deviceinfo:57 unknown - found 3
// Time, thread, level, source file and line, function, logger, text; "-" stands for an empty
// field. Control characters are escaped: \n, \r, \t, others as \x1B. Other bytes stay as they are.
std::string textLine(const LogMessage& message);

// {"time":…,"thread":…,"level":…,"logger":…,"file":…,"line":…,"function":…,"text":…}
// Always valid JSON in UTF-8: each byte that is not becomes U+FFFD.
std::string jsonLine(const LogMessage& message);

}  // namespace orma
