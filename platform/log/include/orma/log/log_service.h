// The log service: log objects by bundle, module and name, found through the interface slot
// "LogSvcInterface" or by walking the bundles.
//
// Thread-safety: thread-safe. A log object lives until the process ends: callers may keep it.
#pragma once

#include <string>

#include "orma/bundle/service_interface.h"

class AsnType;

namespace NS_LOG_SERVICE1 {

class ORMA_API LogObject {
 public:
  LogObject() = default;
  LogObject(const LogObject&) = delete;
  LogObject& operator=(const LogObject&) = delete;
  virtual ~LogObject();
  virtual void LogText(const std::string& file, const std::string& function, int line, int level,
                       const std::string& text) = 0;
  virtual void LogFormat(const std::string& file, const std::string& function, int line, int level,
                         const char* format, ...) __attribute__((format(printf, 6, 7))) = 0;
  // Writes the object's text form at detail level.
  virtual void LogAsn(const std::string& file, const std::string& function, int line,
                      const AsnType& object) = 0;
};

class ORMA_API LogSvcInterface : public NS_BUNDLEMGR1::ServiceInterface {
 public:
  ~LogSvcInterface() override;
  // One object for each triple, made at the first question. Never null.
  virtual LogObject* GetLog(const std::string& bundle, const std::string& module,
                            const std::string& name) = 0;
};

}  // namespace NS_LOG_SERVICE1
