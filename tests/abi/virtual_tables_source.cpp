// What the compiler dumps the virtual tables of.
#include "corbaemfinterface.h"
#include "emfalmrecords.h"
#include "emfresrecords.h"
#include "emftoporecords.h"
#include "orma/access/prdu_res_info_convert.h"
#include "orma/bundle/log_proxy.h"
#include "orma/bundle/service_interface.h"
#include "ormaemfsvc.h"
