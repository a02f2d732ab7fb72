// The way of every message into the sink, below the public calls.
//
// Thread-safety: thread-safe. Nothing is thrown; errno stays as it was.
#pragma once

#include <optional>
#include <string_view>

namespace orma {

struct LogSource {
  std::string_view file;
  std::string_view function;
  int line = 0;
};

// Writes whatever the threshold is; without a level the message is marked "trace".
void writeUnconditionally(std::optional<int> level, std::string_view logger,
                          const LogSource& source, std::string_view text) noexcept;

}  // namespace orma
