// What the compiler dumps the virtual tables of.
#include "corbaemfinterface.h"
#include "emfalmrecords.h"
#include "emftoporecords.h"
#include "orma/bundle/log_proxy.h"
#include "orma/bundle/service_interface.h"
#include "ormaemfsvc.h"
