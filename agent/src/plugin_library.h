// The plug-in as the commands need it: its service running, out of the library whose classes this
// program calls. Two copies of the library in one process would keep two of everything.
//
//   std::string fault = pluginFault(host);
//   if (!fault.empty()) return refuse(fault);
//
// Thread-safety: thread-compatible. Failure is the text.
#pragma once

#include <string>

#include "orma/bundle/bundle_mgr.h"
#include "service_host.h"

namespace ormaagent {

// A LibraryCheck: what keeps the library of the plug-in's service from being used, because it has
// another interface version than the one that this program was built for, or none. Other services
// have nothing to fear.
std::string interfaceFault(const orma::ConfiguredService& service,
                           const std::function<void*(const char* name)>& symbol);

// What keeps the commands from running, in words; empty when nothing does.
std::string pluginFault(const ServiceHost& host);

}  // namespace ormaagent
