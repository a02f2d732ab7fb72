#include "log_double.h"

#include <map>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <utility>

#include "orma/asn1/asn_type.h"
#include "orma/bundle/interface_slot.h"
#include "outage.h"
#include "platform.h"
#include "printf_text.h"

namespace NS_LOG_SERVICE1 {
LogObject::~LogObject() = default;
LogSvcInterface::~LogSvcInterface() = default;
}  // namespace NS_LOG_SERVICE1

namespace emf::doubles {
namespace {

constexpr char kInterfaceName[] = "LogSvcInterface";

class RecordingLog : public NS_LOG_SERVICE1::LogObject {
 public:
  explicit RecordingLog(std::string name) : name_(std::move(name)) {}

  void LogText(const std::string& file, const std::string& function, int line, int level,
               const std::string& text) override {
    platform().log.record({name_, "LogText", file, function, line, level, text});
  }

  void LogFormat(const std::string& file, const std::string& function, int line, int level,
                 const char* format, ...) override __attribute__((format(printf, 6, 7))) {
    va_list arguments;
    va_start(arguments, format);
    platform().log.record(
        {name_, "LogFormat", file, function, line, level, printfText(format, arguments)});
    va_end(arguments);
  }

  void LogAsn(const std::string& file, const std::string& function, int line,
              const AsnType& object) override {
    std::ostringstream text;
    object.Print(text);
    platform().log.record({name_, "LogAsn", file, function, line, 0, text.str()});
  }

 private:
  std::string name_;
};

class ServiceDouble : public NS_LOG_SERVICE1::LogSvcInterface {
 public:
  std::string GetIFName() override { return "LogServiceDouble"; }
  int IsValid() override { return 1; }
  NS_LOG_SERVICE1::LogObject* GetLog(const std::string& bundle, const std::string& module,
                                     const std::string& name) override {
    return platform().log.lookUp(bundle + "/" + module + "/" + name);
  }
};

// One object for each name, kept beyond every test.
NS_LOG_SERVICE1::LogObject* objectNamed(const std::string& log) {
  static auto& objects = *new std::map<std::string, std::unique_ptr<RecordingLog>>;
  auto& object = objects[log];
  if (!object) object = std::make_unique<RecordingLog>(log);
  return object.get();
}

}  // namespace

std::ostream& operator<<(std::ostream& out, const LogLine& line) {
  return out << line.log << ' ' << line.call << '(' << line.level << ") " << line.file << ':'
             << line.line << ' ' << line.function << " \"" << line.text << '"';
}

NS_LOG_SERVICE1::LogSvcInterface* LogDouble::service() {
  static auto& service = *new ServiceDouble;
  return &service;
}

void LogDouble::present() {
  absent();
  NS_BUNDLEMGR1::CheckIFBuf(kInterfaceName)->push_back(service());
}

void LogDouble::absent() {
  auto* slot = NS_BUNDLEMGR1::CheckIFBuf(kInterfaceName);
  for (auto* filed : slot->snapshot()) slot->remove(filed);
  std::lock_guard lock(mutex_);
  throws_ = false;
}

void LogDouble::throwing() {
  present();
  std::lock_guard lock(mutex_);
  throws_ = true;
}

void LogDouble::linesThrow() {
  std::lock_guard lock(mutex_);
  linesThrow_ = true;
}

std::vector<LogLine> LogDouble::lines() const {
  std::lock_guard lock(mutex_);
  return lines_;
}

std::vector<std::string> LogDouble::texts() const {
  std::lock_guard lock(mutex_);
  std::vector<std::string> texts;
  for (const LogLine& line : lines_) texts.push_back(line.text);
  return texts;
}

std::vector<std::string> LogDouble::lookups() const {
  std::lock_guard lock(mutex_);
  return lookups_;
}

void LogDouble::reset() {
  present();
  std::lock_guard lock(mutex_);
  lines_.clear();
  lookups_.clear();
  linesThrow_ = false;
}

void LogDouble::record(LogLine line) {
  platform().journal.note("log: " + line.text);
  std::lock_guard lock(mutex_);
  if (linesThrow_) throw std::runtime_error("the log object refuses");
  lines_.push_back(std::move(line));
}

NS_LOG_SERVICE1::LogObject* LogDouble::lookUp(const std::string& log) {
  std::lock_guard lock(mutex_);
  lookups_.push_back(log);
  const int way = outage("log lookup", 2);
  if (throws_ || way == 0) throw std::runtime_error("the log service refuses");
  if (way == 1) return nullptr;
  return objectNamed(log);
}

}  // namespace emf::doubles
