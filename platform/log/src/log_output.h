// The set of places that messages go to.
//
// Thread-safety: thread-safe. Only the constructor throws: std::runtime_error naming the file.
#pragma once

#include <spdlog/sinks/sink.h>

#include <memory>
#include <string>
#include <vector>

#include "guarded_file_sink.h"
#include "log_line.h"

namespace orma {

class Configuration;

class LogOutput {
 public:
  // By the configuration's "log" section.
  explicit LogOutput(const Configuration& configuration);

  void write(const LogMessage& message) noexcept;
  void flush() noexcept;
  // Opens the file anew, if there is one. Why it cannot be opened, in words.
  std::string reopen();

 private:
  LineForm form_;
  std::shared_ptr<GuardedFileSink> file_;  // null: none; one of the sinks otherwise
  std::vector<std::shared_ptr<spdlog::sinks::sink>> sinks_;
};

}  // namespace orma
