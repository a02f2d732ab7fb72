// The command serve: the services stay loaded until the process is told to end.
//
// Thread-safety: belongs to the main thread.
#pragma once

#include "service_host.h"

namespace ormaagent {

// Keeps SIGINT and SIGTERM for serve. Threads inherit it, so it comes before the first thread.
void holdStopSignals();

// Starts the services, writes the line "ready" to standard error, waits for SIGINT or SIGTERM and
// stops the services. A second signal while they stop ends the process at once. Gives the exit
// status.
int serve(ServiceHost& host);

}  // namespace ormaagent
