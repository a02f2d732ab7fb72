#include "orma/log/log_sink.h"

#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <memory>
#include <utility>

#include "log_output.h"
#include "log_write.h"
#include "orma/bundle/configuration.h"

namespace orma {

namespace {

// The default of the key "log.level"; in force until configureLog.
std::atomic<int> threshold{1};

// Never destroyed: static destructors and late threads may still write.
std::shared_ptr<LogOutput>& installedOutput() {
  static auto* output = [] {
    std::vector<ConfigProblem> none;
    return new std::shared_ptr<LogOutput>(
        std::make_shared<LogOutput>(*Configuration::parse("{}", "defaults", "", none)));
  }();
  return *output;
}

}  // namespace

void configureLog(const Configuration& configuration) {
  auto output = std::make_shared<LogOutput>(configuration);
  std::atomic_store(&installedOutput(), std::move(output));
  threshold.store(static_cast<int>(configuration.integer("log.level")), std::memory_order_relaxed);
}

std::string reopenLog() { return std::atomic_load(&installedOutput())->reopen(); }

void flushLog() { std::atomic_load(&installedOutput())->flush(); }

bool logEnabled(int level) noexcept { return level <= threshold.load(std::memory_order_relaxed); }

void writeLog(int level, const std::string& logger, const std::string& file,
              const std::string& function, int line, const std::string& text) noexcept {
  if (logEnabled(level)) writeUnconditionally(level, logger, {file, function, line}, text);
}

void writeUnconditionally(std::optional<int> level, std::string_view logger,
                          const LogSource& source, std::string_view text) noexcept {
  const int savedErrno = errno;
  try {
    LogMessage message;
    message.level = level;
    message.logger = logger;
    message.file = source.file;
    message.function = source.function;
    message.line = source.line;
    message.text = text;
    message.thread = ::gettid();
    std::atomic_load(&installedOutput())->write(message);
  } catch (...) {
    // Making the first output may fail for lack of memory; the message is dropped.
  }
  errno = savedErrno;
}

}  // namespace orma
