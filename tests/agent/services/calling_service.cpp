// A service that calls the plug-in, as the agent's own do: once, when it starts.
#include <ace/Service_Object.h>

#include "emftopointerface.h"
#include "orma/bundle/service_object_base.h"

namespace {

class CallingService : public NS_BUNDLEMGR1::ServiceObjectBase {
 public:
  CallingService() : ServiceObjectBase("calling", "calling") {}
  int init(int, ACE_TCHAR*[]) override {
    Device device;
    return EMFTopoI::getDevice(12, device) == 0 ? 0 : -1;
  }
  int ExitSvc() override { return 0; }
  NS_BUNDLEMGR1::ServiceInterface* CreateInterface() override { return nullptr; }
};

void destroy(void* service) { delete static_cast<ACE_Service_Object*>(service); }

}  // namespace

extern "C" __attribute__((visibility("default"))) ACE_Service_Object* makeCalling(
    void (**deleter)(void*)) {
  *deleter = destroy;
  return new CallingService;
}
