// A service of another bundle that offers whatever interface a test gives it.
#pragma once

#include <string>

#include "orma/bundle/service_object_base.h"
#include "orma/log/log_service.h"

namespace emf::test {

class FakeService : public NS_BUNDLEMGR1::ServiceObjectBase {
 public:
  explicit FakeService(NS_BUNDLEMGR1::ServiceInterface* offered)
      : ServiceObjectBase("fake_bundle", "fake_service") {
    m_interface = offered;
  }
  int ExitSvc() override { return 0; }
  NS_BUNDLEMGR1::ServiceInterface* CreateInterface() override { return m_interface; }
};

// A log service that can be told from others.
class FakeLogService : public NS_LOG_SERVICE1::LogSvcInterface {
 public:
  std::string GetIFName() override { return "FakeLogService"; }
  int IsValid() override { return 1; }
  NS_LOG_SERVICE1::LogObject* GetLog(const std::string&, const std::string&,
                                     const std::string&) override {
    return nullptr;
  }
};

// An interface that is no log service.
class OtherInterface : public NS_BUNDLEMGR1::ServiceInterface {
 public:
  std::string GetIFName() override { return "OtherInterface"; }
  int IsValid() override { return 1; }
};

}  // namespace emf::test
