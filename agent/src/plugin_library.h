// The plug-in as the commands need it: its service running, out of the library whose classes this
// program calls. Two copies of the library in one process would keep two of everything.
//
//   std::string fault = pluginFault(host);
//   if (!fault.empty()) return refuse(fault);
//
// Thread-safety: thread-compatible. Failure is the text.
#pragma once

#include <string>

#include "service_host.h"

namespace ormaagent {

// What keeps the commands from running, in words; empty when nothing does.
std::string pluginFault(const ServiceHost& host);

}  // namespace ormaagent
