// A library that gives itself out as the plug-in. FAKE_VERSION is its interface version; without
// one it has none, as plug-ins of old. Its factory must never be called where the version is wrong.
#include <ace/Service_Object.h>

#include <cstdlib>

#include "emfinterfaceversion.h"

#ifdef FAKE_VERSION
const int ii_ormaiac_emf_interface_version = FAKE_VERSION;
#endif

extern "C" EMF_API ACE_Service_Object* _make_ii_ormaiac_emf(ACE_Service_Object_Exterminator*) {
  std::abort();
}
