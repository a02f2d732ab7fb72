// The log service: present (filed under "LogSvcInterface"), absent or throwing; its log objects
// record every message. Log objects live until the process ends, as callers keep them.
//
//   platform().log.absent();
//   EXPECT_THAT(platform().log.lines(), IsEmpty());
//
// Thread-safety: the recording is thread-safe; what the service is like belongs to the test.
#pragma once

#include <mutex>
#include <ostream>
#include <string>
#include <vector>

#include "orma/log/log_service.h"

namespace emf::doubles {

struct LogLine {
  std::string log;   // "bundle/module/name"
  std::string call;  // "LogText", "LogFormat" or "LogAsn"
  std::string file;
  std::string function;
  int line = 0;
  int level = 0;  // 0 for LogAsn, which has none
  std::string text;
};
std::ostream& operator<<(std::ostream& out, const LogLine& line);

class LogDouble {
 public:
  void present();
  void absent();
  // Present, but every question for a log object throws std::runtime_error.
  void throwing();

  // Every message throws std::runtime_error instead of being recorded, until the reset.
  void linesThrow();

  std::vector<LogLine> lines() const;
  // The texts alone.
  std::vector<std::string> texts() const;
  // Every triple that a log object was asked for, as "bundle/module/name", in order.
  std::vector<std::string> lookups() const;
  // The interface that present() files.
  NS_LOG_SERVICE1::LogSvcInterface* service();
  // Nothing recorded, present.
  void reset();

  void record(LogLine line);
  NS_LOG_SERVICE1::LogObject* lookUp(const std::string& log);

 private:
  mutable std::mutex mutex_;
  std::vector<LogLine> lines_;
  std::vector<std::string> lookups_;
  bool throws_ = false;
  bool linesThrow_ = false;
};

}  // namespace emf::doubles
