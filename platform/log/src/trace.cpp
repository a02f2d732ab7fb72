#include "orma/log/trace.h"

#include <cstdarg>
#include <optional>
#include <utility>

#include "formatted_text.h"
#include "log_write.h"
#include "orma/log/log_sink.h"

namespace NS_CORBA {

namespace {

// A bare pointer, because it can still be read while the thread's objects are being destroyed.
thread_local SourceRecord* currentRecord = nullptr;

// A trace from a destructor that runs later yet makes a record that nobody frees.
struct RecordOwner {
  ~RecordOwner() { delete std::exchange(currentRecord, nullptr); }
};

SourceRecord* makeRecord() {
  static thread_local RecordOwner owner;
  static_cast<void>(owner);
  currentRecord = new SourceRecord;
  return currentRecord;
}

void write(std::optional<int> level, std::string_view text) {
  const SourceRecord& source = *GetTss().operator->();
  orma::writeUnconditionally(level, "", {source.file, source.function, source.line}, text);
}

}  // namespace

SourceRecord* SourceTss::operator->() const {
  SourceRecord* record = currentRecord;
  return __builtin_expect(record != nullptr, 1) ? record : makeRecord();
}

SourceTss& GetTss() {
  static SourceTss storage;
  return storage;
}

void TaDebug(int level, const char* text) {
  if (orma::logEnabled(level)) write(level, orma::orNull(text));
}

void TaDebugWithPara(int level, const char* format, ...) {
  if (!orma::logEnabled(level)) return;
  std::va_list arguments;
  va_start(arguments, format);
  const orma::FormattedText text(format, arguments);
  va_end(arguments);
  write(level, text.view());
}

void TaTrace(const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  const orma::FormattedText text(format, arguments);
  va_end(arguments);
  write(std::nullopt, text.view());
}

}  // namespace NS_CORBA
