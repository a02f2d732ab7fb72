// The serve command: the stand-in platform on loopback, until SIGTERM or SIGINT.
#pragma once

#include <cstdint>
#include <string>

namespace ormasim {

struct ServeOptions {
  std::string databaseFile;
  int httpPort = 0;
  std::string faultsFile;       // empty: no faults
  std::string agentConfigFile;  // empty: none is written
  std::string token;            // empty: none is asked for
  int faultPort = 0;
  std::int64_t frameItems = 1000;  // alarms in a frame of the fault server
  bool explicitTagging = false;    // of the fault server's messages
  int cursorSeconds = 60;          // how long a walk may rest between two pages
};

// Writes the agent's configuration, then one line of JSON with the ports on standard output, and
// returns after a signal. Failure: SimError.
void serve(const ServeOptions& options);

}  // namespace ormasim
