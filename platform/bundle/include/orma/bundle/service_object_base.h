// The base of every service that a bundle library offers: what its factory returns.
//
// The order of the virtual operations is part of the binary interface: those of ACE, then the ones
// below in this order, fini and init last.
//
// Thread-safety: thread-compatible; the bundle manager drives one service from one thread at a
// time. GetName and GetInterface may be called from any thread between init and fini.
#pragma once

#include <ace/Service_Object.h>

#include <string>

#include "orma/bundle/service_interface.h"

namespace NS_BUNDLEMGR1 {

class ORMA_API ServiceObjectBase : public ACE_Service_Object {
 public:
  ServiceObjectBase(const char* bundleName, const char* serviceName);
  ~ServiceObjectBase() override;

  // Called before the service is unloaded; the base does nothing and returns 0.
  virtual int UnRegistSvc();
  // The service name, as given to the constructor.
  virtual std::string GetName();
  // Asks the service to end its work and waits for it; 0 for success.
  virtual int ExitSvc() = 0;
  // The interface that this service offers, or null.
  virtual ServiceInterface* GetInterface();
  // Makes the interface anew and returns it; the object owns it.
  virtual ServiceInterface* CreateInterface() = 0;
  // Deletes the interface, if there is one, and clears the pointer.
  virtual void RemoveInterface();
  int fini() override;
  int init(int argc, ACE_TCHAR* argv[]) override;

  const std::string& bundleName() const { return m_bundleName; }

 protected:
  // Owned; freed by RemoveInterface. A derived class may set it.
  ServiceInterface* m_interface = nullptr;

 private:
  std::string m_bundleName;
  std::string m_serviceName;
};

}  // namespace NS_BUNDLEMGR1
