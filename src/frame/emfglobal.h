// Diagnostics of the whole plug-in: the trace call form, the cached log objects and log proxies.
//
//   EMF_TRACE(kSourceName, TaDebugWithPara(3, "found %d", count));
//   EMF_LOG(GetDomainLog(), kSourceName, LogFormat, 1, "call to %s failed", path);
//   EMF_PRINT(GetBaseLogProxy(), kSourceName, 1, "started");
//
// A message is dropped, without a failure, when the platform has no log service.
//
// Thread-safety: thread-safe.
#pragma once

#include <string>

#include "orma/bundle/log_proxy.h"
#include "orma/log/log_service.h"
#include "orma/log/trace.h"

class AsnType;

namespace emf {

// The function name in every message of this library.
constexpr char kUnknownFunction[] = "unknown";

// Fills the calling thread's source record.
inline void setTraceSource(const char* sourceName, int line) {
  NS_CORBA::SourceRecord& source = *NS_CORBA::GetTss().operator->();
  source.file = sourceName;
  source.function = kUnknownFunction;
  source.line = line;
}

}  // namespace emf

// The trace call form: source record first, then the call, so that the message carries the line
// where it is written.
#define EMF_TRACE(sourceName, call)              \
  do {                                           \
    ::emf::setTraceSource(sourceName, __LINE__); \
    ::NS_CORBA::call;                            \
  } while (false)

// The log object form, for LogText and LogFormat; silent without a log object.
#define EMF_LOG(logObject, sourceName, operation, ...)                               \
  do {                                                                               \
    if (::NS_LOG_SERVICE1::LogObject* emfLog = (logObject)) {                        \
      emfLog->operation(sourceName, ::emf::kUnknownFunction, __LINE__, __VA_ARGS__); \
    }                                                                                \
  } while (false)

// The log proxy form: two calls.
#define EMF_PRINT(proxy, sourceName, level, text)  \
  do {                                             \
    ::NS_BUNDLEMGR1::LogProxy* emfProxy = (proxy); \
    emfProxy->SetSource(sourceName, __LINE__);     \
    emfProxy->Print(level, text);                  \
  } while (false)

// The log object for this library's own failures, or null while there is no log service.
NS_LOG_SERVICE1::LogObject* GetEmfLog();
// The log object for the REST failure lines, or null while there is no log service.
NS_LOG_SERVICE1::LogObject* GetDomainLog();

// Dumps an ASN.1 object into the log of ASN.1 traffic.
void TraceAsn(const std::string& file, const std::string& function, int line,
              const AsnType& object);

// The proxy of the start-up messages; never null.
NS_BUNDLEMGR1::LogProxy* GetBaseLogProxy();
// The proxy of this library's messages before a log object can be had; never null.
NS_BUNDLEMGR1::LogProxy* GetCorbaLogProxy();
