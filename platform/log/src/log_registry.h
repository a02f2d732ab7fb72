// Every log object that was ever handed out, by bundle, module and name.
//
// Thread-safety: thread-safe. Lives until the process ends, whatever becomes of the log service.
#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <tuple>

#include "orma/log/log_service.h"

namespace NS_LOG_SERVICE1 {

class LogRegistry : public LogSvcInterface {
 public:
  static LogRegistry& instance();

  std::string GetIFName() override;
  int IsValid() override;
  LogObject* GetLog(const std::string& bundle, const std::string& module,
                    const std::string& name) override;

 private:
  std::mutex mutex_;  // guards objects_
  std::map<std::tuple<std::string, std::string, std::string>, std::unique_ptr<LogObject>> objects_;
};

}  // namespace NS_LOG_SERVICE1
