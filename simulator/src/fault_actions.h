// The fault actions, before and after the service has answered.
#pragma once

#include <httplib.h>

#include "connection.h"
#include "fault_script.h"

namespace ormasim {

// True when the fault takes the place of the service; the response is then complete.
bool actBeforeAnswer(const Fault& fault, Connection& connection, httplib::Response& response);
// Spoils the answer that the service has given.
void actOnAnswer(const Fault& fault, httplib::Response& response);

}  // namespace ormasim
