#include "trace_double.h"

#include <utility>

#include "orma/log/trace.h"
#include "platform.h"
#include "printf_text.h"

namespace emf::doubles {

std::ostream& operator<<(std::ostream& out, const TraceLine& line) {
  return out << line.call << '(' << line.level << ") " << line.file << ':' << line.line << ' '
             << line.function << " \"" << line.text << '"';
}

std::vector<TraceLine> TraceDouble::lines() const {
  std::lock_guard lock(mutex_);
  return lines_;
}

std::vector<std::string> TraceDouble::texts() const {
  std::lock_guard lock(mutex_);
  std::vector<std::string> texts;
  for (const TraceLine& line : lines_) texts.push_back(line.text);
  return texts;
}

void TraceDouble::reset() {
  std::lock_guard lock(mutex_);
  lines_.clear();
}

void TraceDouble::record(TraceLine line) {
  platform().journal.note("trace: " + line.text);
  std::lock_guard lock(mutex_);
  lines_.push_back(std::move(line));
}

namespace {

void recordTrace(const char* call, int level, std::string text) {
  const NS_CORBA::SourceRecord& source = *NS_CORBA::GetTss().operator->();
  platform().trace.record(
      {call, level, source.file, source.function, source.line, std::move(text)});
}

}  // namespace
}  // namespace emf::doubles

namespace NS_CORBA {

SourceRecord* SourceTss::operator->() const {
  thread_local SourceRecord record;
  return &record;
}

SourceTss& GetTss() {
  static SourceTss storage;
  return storage;
}

void TaDebug(int level, const char* text) { emf::doubles::recordTrace("TaDebug", level, text); }

void TaDebugWithPara(int level, const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  emf::doubles::recordTrace("TaDebugWithPara", level, emf::doubles::printfText(format, arguments));
  va_end(arguments);
}

void TaTrace(const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  emf::doubles::recordTrace("TaTrace", 0, emf::doubles::printfText(format, arguments));
  va_end(arguments);
}

}  // namespace NS_CORBA
