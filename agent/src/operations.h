// The functions behind the commands: each calls one operation of the plug-in and gives its result
// and its records, empty unless it succeeded.
//
// Thread-safety: thread-safe, as the operations are. They block as the operations do and let their
// exceptions pass.
#pragma once

#include "answer.h"
#include "arguments.h"

namespace ormaagent {

Answer topoDevices(const Arguments& arguments);
Answer topoDevice(const Arguments& arguments);
Answer topoVersion(const Arguments& arguments);
Answer topoLocation(const Arguments& arguments);
Answer topoDeviceOfNode(const Arguments& arguments);
Answer cacheDevice(const Arguments& arguments);
Answer cacheName(const Arguments& arguments);
Answer resFdn(const Arguments& arguments);
// Throws ServiceMissing when no service offers error texts.
Answer errorText(const Arguments& arguments);

}  // namespace ormaagent
