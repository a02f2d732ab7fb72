// Lines for the journal on standard error, each with its priority before it.
//
// Thread-safety: thread-safe. A line that cannot be written is dropped.
#pragma once

#include <spdlog/sinks/base_sink.h>

#include <mutex>

namespace orma {

class JournalSink : public spdlog::sinks::base_sink<std::mutex> {
 protected:
  void sink_it_(const spdlog::details::log_msg& message) override;
  void flush_() override {}
};

}  // namespace orma
