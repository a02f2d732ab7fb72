#include "emfglobal.h"

#include <atomic>
#include <memory>

#include "orma/bundle/bundle_mgr.h"
#include "serviceifref.h"

namespace {

using NS_BUNDLEMGR1::LogProxy;
using NS_LOG_SERVICE1::LogObject;
using NS_LOG_SERVICE1::LogSvcInterface;

struct LogName {
  const char* bundle;
  const char* module;
  const char* name;
};

constexpr LogName kEmfLog = {"ii_orma_corbaagent_bundle", "ii_ormacorba_emf", "debug"};
constexpr LogName kDomainLog = {"ii_domain_bundle", "ii_domain_model", "debug"};
constexpr LogName kAsnLog = {"onbi", "asn", "debug"};

struct ProxyName {
  const char* key;  // bundle and module run together
  const char* bundle;
  const char* module;
};

constexpr ProxyName kBaseProxy = {"ii_base_bundleii_base_log", "ii_base_bundle", "ii_base_log"};
constexpr ProxyName kCorbaProxy = {"ii_orma_corbaagent_bundleii_ormacorba_emf",
                                   "ii_orma_corbaagent_bundle", "ii_ormacorba_emf"};

// Two threads may both look up; the log service gives one object for a name, so either may store.
LogObject* cachedLog(std::atomic<LogObject*>& cache, const LogName& name) {
  if (LogObject* log = cache.load(std::memory_order_acquire)) return log;
  try {
    ServiceIFRef<LogSvcInterface> reference;
    if (LogSvcInterface* service = reference.Get(nullptr)) {
      cache.store(service->GetLog(name.bundle, name.module, name.name), std::memory_order_release);
    }
  } catch (...) {
    // Without a log service there is nowhere to report to; the next message tries again.
    cache.store(nullptr, std::memory_order_release);
  }
  return cache.load(std::memory_order_acquire);
}

LogProxy* cachedProxy(std::atomic<LogProxy*>& cache, const ProxyName& name) {
  if (LogProxy* proxy = cache.load(std::memory_order_acquire)) return proxy;
  LogProxy* made = nullptr;
  if (auto* factory = NS_BUNDLEMGR1::BundleMgr::Instance()->GetLogProxyFactory()) {
    made = factory->CreateLogProxy(name.key);
  }
  std::unique_ptr<LogProxy> fallback;
  if (made != nullptr) {
    made->SetBundle(name.bundle);
    made->SetModule(name.module);
  } else {
    fallback = std::make_unique<NS_BUNDLEMGR1::DefaultLogProxy>();
    made = fallback.get();
  }
  LogProxy* stored = nullptr;
  if (!cache.compare_exchange_strong(stored, made, std::memory_order_acq_rel)) return stored;
  fallback.release();  // lives until the process ends
  return made;
}

}  // namespace

LogObject* GetEmfLog() {
  static std::atomic<LogObject*> cache{nullptr};
  return cachedLog(cache, kEmfLog);
}

LogObject* GetDomainLog() {
  static std::atomic<LogObject*> cache{nullptr};
  return cachedLog(cache, kDomainLog);
}

void TraceAsn(const std::string& file, const std::string& function, int line,
              const AsnType& object) {
  static std::atomic<LogObject*> cache{nullptr};
  if (LogObject* log = cachedLog(cache, kAsnLog)) log->LogAsn(file, function, line, object);
}

LogProxy* GetBaseLogProxy() {
  static std::atomic<LogProxy*> cache{nullptr};
  return cachedProxy(cache, kBaseProxy);
}

LogProxy* GetCorbaLogProxy() {
  static std::atomic<LogProxy*> cache{nullptr};
  return cachedProxy(cache, kCorbaProxy);
}
