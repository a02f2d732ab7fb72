// The service object of the library: what the bundle manager gets from the factory and drives
// through init, ExitSvc and fini.
//
// Thread-safety: thread-compatible; the bundle manager calls it from one thread at a time.
#pragma once

#include <ace/Service_Object.h>

#include "emfexport.h"
#include "orma/bundle/service_object_base.h"

namespace NS_ORMACORBA {

class ii_ormaiac_emf : public NS_BUNDLEMGR1::ServiceObjectBase {
 public:
  ii_ormaiac_emf();
  ~ii_ormaiac_emf() override;

  // Stops the subnet-link task and waits for its thread: up to 1800 seconds and one refresh.
  // Returns the result of waiting.
  int ExitSvc() override;
  // Replaces the interface pointer by a further interface; the old one stays filed and is not
  // freed. Meant as it stands: the interface has no state.
  NS_BUNDLEMGR1::ServiceInterface* CreateInterface() override;
  // Releases the task object and the database engine. Always 0. ExitSvc must come first while a
  // task runs. The error table and the caches live until the process ends.
  int fini() override;
  // Loads the error table and, with "IsReportSubnet" not 0, starts the subnet-link task. The
  // arguments are ignored. 0, or -1 when a start-up step refuses.
  int init(int argc, ACE_TCHAR* argv[]) override;
};

}  // namespace NS_ORMACORBA

// The library's one entry. Stores the function that frees the object in `deleter`, unless null.
extern "C" EMF_API ACE_Service_Object* _make_ii_ormaiac_emf(
    ACE_Service_Object_Exterminator* deleter);
