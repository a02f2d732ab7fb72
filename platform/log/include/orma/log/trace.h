// Trace calls: each message carries the source file, function and line that the caller put into
// its thread's source record just before.
//
//   NS_CORBA::GetTss()->file = "emftopointerface";
//   NS_CORBA::GetTss()->function = "unknown";
//   NS_CORBA::GetTss()->line = __LINE__;
//   NS_CORBA::TaDebugWithPara(3, "found %d", count);
//
// Levels: 0 error, 1 information, 3 detail. A message above the configured threshold costs no
// formatting. Texts are data, never formats, unless the argument is named format.
//
// Thread-safety: thread-safe. Nothing is thrown; a message that cannot be written is dropped.
#pragma once

#include <string>

#include "orma/bundle/export.h"

namespace NS_CORBA {

struct SourceRecord {
  std::string file;
  std::string function;
  int line = 0;
};

// The thread-specific storage of the source record.
class ORMA_API SourceTss {
 public:
  // The calling thread's record, made at its first use; lives as long as the thread.
  SourceRecord* operator->() const;
};

ORMA_API SourceTss& GetTss();

ORMA_API void TaDebug(int level, const char* text);
ORMA_API void TaDebugWithPara(int level, const char* format, ...)
    __attribute__((format(printf, 2, 3)));
// Traced with no level: written whatever the threshold is.
ORMA_API void TaTrace(const char* format, ...) __attribute__((format(printf, 1, 2)));

}  // namespace NS_CORBA
