#include "log_output.h"

#include <spdlog/sinks/stdout_sinks.h>
#include <spdlog/sinks/syslog_sink.h>

#include "journal_sink.h"
#include "orma/bundle/configuration.h"
#include "orma/log/journal.h"

namespace orma {

namespace {

// One for the process and never destroyed: its end would close the process's syslog connection.
std::shared_ptr<spdlog::sinks::sink> syslogSink() {
  static const auto* sink = new std::shared_ptr<spdlog::sinks::sink>(
      std::make_shared<spdlog::sinks::syslog_sink_mt>("", LOG_PID, LOG_USER, false));
  return *sink;
}

std::shared_ptr<spdlog::sinks::sink> standardErrorSink() {
  if (standardErrorIsJournal()) return std::make_shared<JournalSink>();
  auto sink = std::make_shared<spdlog::sinks::stderr_sink_mt>();
  sink->set_pattern("%v");
  return sink;
}

// Only syslog and the journal look at it, for their priority.
spdlog::level::level_enum spdlogLevel(const std::optional<int>& level) {
  if (!level || *level > 1) return spdlog::level::debug;
  return *level == 1 ? spdlog::level::info : spdlog::level::err;
}

}  // namespace

LogOutput::LogOutput(const Configuration& configuration)
    : form_(configuration.text("log.format") == "json" ? jsonLine : textLine) {
  if (const std::string file = configuration.path("log.file"); !file.empty()) {
    file_ = std::make_shared<GuardedFileSink>(
        file, static_cast<std::size_t>(configuration.integer("log.maxFileBytes")),
        static_cast<std::size_t>(configuration.integer("log.maxFiles")), form_);
    sinks_.push_back(file_);
  }
  if (configuration.boolean("log.stderr")) sinks_.push_back(standardErrorSink());
  if (configuration.boolean("log.syslog")) sinks_.push_back(syslogSink());
}

void LogOutput::write(const LogMessage& message) noexcept {
  try {
    const std::string line = form_(message);
    const spdlog::details::log_msg wrapped("", spdlogLevel(message.level), line);
    for (const auto& sink : sinks_) sink->log(wrapped);
  } catch (...) {
    // A message that cannot be written is dropped.
  }
}

std::string LogOutput::reopen() { return file_ ? file_->reopen() : std::string(); }

void LogOutput::flush() noexcept {
  try {
    for (const auto& sink : sinks_) sink->flush();
  } catch (...) {
    // As above.
  }
}

}  // namespace orma
