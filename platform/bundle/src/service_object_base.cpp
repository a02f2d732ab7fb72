#include "orma/bundle/service_object_base.h"

namespace NS_BUNDLEMGR1 {

ServiceObjectBase::ServiceObjectBase(const char* bundleName, const char* serviceName)
    : m_bundleName(bundleName), m_serviceName(serviceName) {}

// The interface is RemoveInterface's to free: it may still be filed while the object goes.
ServiceObjectBase::~ServiceObjectBase() = default;

int ServiceObjectBase::UnRegistSvc() { return 0; }

std::string ServiceObjectBase::GetName() { return m_serviceName; }

ServiceInterface* ServiceObjectBase::GetInterface() { return m_interface; }

void ServiceObjectBase::RemoveInterface() {
  delete m_interface;
  m_interface = nullptr;
}

int ServiceObjectBase::fini() { return 0; }

int ServiceObjectBase::init(int, ACE_TCHAR**) { return 0; }

}  // namespace NS_BUNDLEMGR1
