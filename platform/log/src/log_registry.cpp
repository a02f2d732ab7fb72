#include "log_registry.h"

#include <cstdarg>
#include <exception>
#include <sstream>
#include <utility>

#include "formatted_text.h"
#include "log_write.h"
#include "orma/asn1/asn_type.h"
#include "orma/log/log_sink.h"

namespace NS_LOG_SERVICE1 {

namespace {

constexpr int kDetailLevel = 3;

std::string printed(const AsnType& object) {
  try {
    std::ostringstream out;
    object.Print(out);
    return out.str();
  } catch (const std::exception& failure) {
    return std::string("an object that cannot be printed: ") + failure.what();
  } catch (...) {
    return "an object that cannot be printed";
  }
}

class SinkLogObject : public LogObject {
 public:
  explicit SinkLogObject(std::string logger) : logger_(std::move(logger)) {}

  void LogText(const std::string& file, const std::string& function, int line, int level,
               const std::string& text) override {
    orma::writeLog(level, logger_, file, function, line, text);
  }

  void LogFormat(const std::string& file, const std::string& function, int line, int level,
                 const char* format, ...) override __attribute__((format(printf, 6, 7))) {
    if (!orma::logEnabled(level)) return;
    std::va_list arguments;
    va_start(arguments, format);
    const orma::FormattedText text(format, arguments);
    va_end(arguments);
    orma::writeUnconditionally(level, logger_, {file, function, line}, text.view());
  }

  void LogAsn(const std::string& file, const std::string& function, int line,
              const AsnType& object) override {
    if (!orma::logEnabled(kDetailLevel)) return;
    orma::writeUnconditionally(kDetailLevel, logger_, {file, function, line}, printed(object));
  }

 private:
  const std::string logger_;
};

}  // namespace

LogObject::~LogObject() = default;

LogSvcInterface::~LogSvcInterface() = default;

LogRegistry& LogRegistry::instance() {
  static auto* registry = new LogRegistry;
  return *registry;
}

std::string LogRegistry::GetIFName() { return "LogSvcInterface"; }

int LogRegistry::IsValid() { return 1; }

LogObject* LogRegistry::GetLog(const std::string& bundle, const std::string& module,
                               const std::string& name) {
  const std::lock_guard lock(mutex_);
  auto& object = objects_[{bundle, module, name}];
  if (!object) object = std::make_unique<SinkLogObject>(bundle + "/" + module + "/" + name);
  return object.get();
}

}  // namespace NS_LOG_SERVICE1
