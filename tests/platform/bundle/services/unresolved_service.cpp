// A library that cannot be loaded whole: it calls what no library has.
#include <ace/Service_Object.h>

#include "orma/bundle/export.h"

extern "C" ACE_Service_Object* function_that_nobody_has();

extern "C" ORMA_API ACE_Service_Object* make_unresolved(void (**)(void*)) {
  return function_that_nobody_has();
}
