#include "log_proxies.h"

#include <cstdarg>
#include <cstring>
#include <optional>
#include <string_view>
#include <utility>

#include "formatted_text.h"
#include "log_write.h"
#include "orma/log/log_sink.h"

namespace NS_LOG_SERVICE1 {

namespace {

// The source of the thread's next message, by plain data: it can be written while the thread's
// objects are being destroyed. A source set on one proxy does not speak for another.
struct ProxySource {
  const void* proxy;
  int line;
  char file[64];  // a longer name is cut
};

thread_local ProxySource currentSource = {nullptr, 0, ""};

class SinkLogProxy : public NS_BUNDLEMGR1::DefaultLogProxy {
 public:
  explicit SinkLogProxy(std::string key) : key_(std::move(key)) {}

  void Print(int level, const char* text) override {
    if (orma::logEnabled(level)) write(level, orma::orNull(text));
  }

  // Has no level, so it is written whatever the threshold is.
  void PrintFormat(const char* format, ...) override __attribute__((format(printf, 2, 3))) {
    std::va_list arguments;
    va_start(arguments, format);
    const orma::FormattedText text(format, arguments);
    va_end(arguments);
    write(std::nullopt, text.view());
  }

  void SetSource(const char* file, int line) override {
    currentSource.proxy = this;
    currentSource.line = line;
    const std::string_view name = orma::orNull(file);
    currentSource.file[name.copy(currentSource.file, sizeof currentSource.file - 1)] = '\0';
  }

  void SetBundle(const char* bundleName) override {
    const std::lock_guard lock(mutex_);
    bundle_ = orma::orNull(bundleName);
  }

  void SetModule(const char* moduleName) override {
    const std::lock_guard lock(mutex_);
    module_ = orma::orNull(moduleName);
  }

  std::string GetProxyName() override { return "SinkLogProxy"; }

 private:
  std::string logger() {
    const std::lock_guard lock(mutex_);
    return bundle_.empty() && module_.empty() ? key_ : bundle_ + "/" + module_;
  }

  void write(std::optional<int> level, std::string_view text) {
    orma::LogSource source;
    if (currentSource.proxy == this) source = {currentSource.file, "", currentSource.line};
    orma::writeUnconditionally(level, logger(), source, text);
  }

  const std::string key_;
  std::mutex mutex_;  // guards bundle_ and module_
  std::string bundle_;
  std::string module_;
};

}  // namespace

SinkLogProxies& SinkLogProxies::instance() {
  static auto* proxies = new SinkLogProxies;
  return *proxies;
}

NS_BUNDLEMGR1::LogProxy* SinkLogProxies::CreateLogProxy(const char* key) {
  const std::lock_guard lock(mutex_);
  auto& proxy = proxies_[orma::orNull(key)];
  if (!proxy) proxy = std::make_unique<SinkLogProxy>(orma::orNull(key));
  return proxy.get();
}

}  // namespace NS_LOG_SERVICE1
