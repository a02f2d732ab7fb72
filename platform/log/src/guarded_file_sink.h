// A rotating log file that survives a full disk and a directory that goes away: what cannot be
// written is dropped and counted, standard error hears of it once, and each later message tries
// the file anew. The count is written as soon as that succeeds.
//
// Thread-safety: thread-safe. The constructor throws std::runtime_error naming the file.
#pragma once

#include <spdlog/sinks/base_sink.h>
#include <spdlog/sinks/rotating_file_sink.h>

#include <cstddef>
#include <memory>
#include <mutex>
#include <string>

#include "log_line.h"

namespace orma {

using LineForm = std::string (*)(const LogMessage&);

class GuardedFileSink : public spdlog::sinks::base_sink<std::mutex> {
 public:
  GuardedFileSink(std::string file, std::size_t maxFileBytes, std::size_t maxFiles, LineForm form);

  // Opens the file by its name anew, for when someone else has renamed it; no line gets lost. Why
  // it cannot be opened, in words: then the lines go on where they went. Empty when all went well.
  std::string reopen();

 protected:
  void sink_it_(const spdlog::details::log_msg& message) override;
  void flush_() override;

 private:
  bool openAgain();
  void writeLine(const spdlog::details::log_msg& message);
  void writeLossNote();
  void fail(const char* reason);

  const std::string fileName_;
  const std::size_t maxFileBytes_;
  const std::size_t maxFiles_;
  const LineForm form_;
  // The mutex of base_sink guards these.
  std::unique_ptr<spdlog::sinks::rotating_file_sink_st> file_;  // null while it cannot be written
  std::size_t lost_ = 0;
};

}  // namespace orma
