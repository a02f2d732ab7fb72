#include "orma/log/log_service.h"

#include "log_proxies.h"
#include "log_registry.h"
#include "orma/bundle/bundle_mgr.h"
#include "orma/log/log_sink.h"

namespace NS_LOG_SERVICE1 {

namespace {

class LogService : public NS_BUNDLEMGR1::ServiceObjectBase {
 public:
  LogService() : ServiceObjectBase("ii_log_bundle", "ii_log_service") {}

  int ExitSvc() override { return 0; }

  // The same registry each time: callers that found it may use it after the service has gone, so
  // it is nobody's to delete.
  NS_BUNDLEMGR1::ServiceInterface* CreateInterface() override {
    m_interface = &LogRegistry::instance();
    return m_interface;
  }

  void RemoveInterface() override { m_interface = nullptr; }

  int fini() override {
    NS_BUNDLEMGR1::BundleMgr::Instance()->SetLogProxyFactory(nullptr);
    orma::flushLog();
    return 0;
  }

  int init(int, ACE_TCHAR**) override {
    NS_BUNDLEMGR1::BundleMgr::Instance()->SetLogProxyFactory(&SinkLogProxies::instance());
    return 0;
  }
};

void destroyLogService(void* service) { delete static_cast<ACE_Service_Object*>(service); }

}  // namespace

}  // namespace NS_LOG_SERVICE1

extern "C" ORMA_API ACE_Service_Object* _make_orma_log_service(void (**deleter)(void*)) {
  if (deleter != nullptr) *deleter = NS_LOG_SERVICE1::destroyLogService;
  auto* service = new NS_LOG_SERVICE1::LogService;
  service->CreateInterface();
  return service;
}
