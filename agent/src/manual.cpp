#include "manual.h"

#include "command_line.h"

namespace ormaagent {

const usage::Manual& manual() {
  static const usage::Manual text{
      "queries a telecommunications network",
      {"It loads the services that its configuration names, calls one operation of the plug-in and "
       "writes the answer to standard output. Messages and the log go to standard error.",
       "An argument that begins with '-' and is no number goes behind '--'. Options stand before "
       "or behind the command."},
      {{"0", "the operation succeeded"},
       {"1", "it reported failure"},
       {"2", "usage or configuration"},
       {"3", "an exception left the operation"},
       {"4", "its time was over (--timeout)"}},
      {"ormaagent --config agent.json topo devices", "ormaagent --format json cache name core-1",
       "ormaagent error-text 0x411800CC", "ormaagent serve"},
      {"'ormaagent COMMAND --help' tells more about a command; an argument that begins with '-' "
       "goes behind '--'."},
      {{"ORMAAGENT_CONFIG", "The configuration file, where --config names none."},
       {"NOTIFY_SOCKET",
        "Where serve reports that it is ready, alive or stopping, as systemd sets it."},
       {"WATCHDOG_USEC", "How often serve has to report that it is alive, as systemd sets it."}},
      {{"./ormaagent.json", "The configuration, where nothing else names one."},
       {"/etc/ormaagent/ormaagent.json", "The configuration of the system's service."}},
      {"ormaagent.json(5)", "ormasim(1)"},
      {{"--format", formatWords()}}};
  return text;
}

}  // namespace ormaagent
