// The command serve: the services stay loaded until the process is told to end.
//
// Thread-safety: belongs to the main thread.
#pragma once

#include <chrono>

#include "command_deadline.h"
#include "service_host.h"

namespace ormaagent {

// Keeps SIGINT, SIGTERM and SIGHUP for serve. Threads inherit it, so it comes before the first
// thread.
void holdSignals();

// Opens the endpoint for health and metrics, if one is configured, starts the services, writes the
// line "ready" to standard error, waits for SIGINT or SIGTERM and stops the services. SIGHUP opens
// the log anew. A second signal while the services stop ends the process at once. Gives the exit
// status; throws HostFailure when the endpoint cannot be opened.
// Both the start and the stop have `limit`; `deadline` is set for the start already.
int serve(ServiceHost& host, CommandDeadline& deadline, std::chrono::seconds limit);

}  // namespace ormaagent
