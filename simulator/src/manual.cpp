#include "manual.h"

namespace ormasim {

const usage::Manual& manual() {
  static const usage::Manual text{
      "stand-in network for the northbound agent",
      {"It makes networks, or reads them from GraphML files, keeps one in an SQLite database and "
       "serves it as the platform's services on 127.0.0.1. When it serves, it prints one line of "
       "JSON that holds the ports once it is ready, and ends on SIGINT or SIGTERM."},
      {{"0", "done"}, {"1", "failed"}, {"2", "wrong command line"}},
      {"ormasim generate --elements 200 --seed 7 --db net.db",
       "ormasim import nets/*.graphml --db net.db",
       "ormasim serve --db net.db --http-port 8080 --agent-config agent.json",
       "ormasim serve --db net.db --faults faults.json",
       "ormasim raise --db net.db --count 20 --device 2",
       "ormasim raise --db net.db --rate 1000 --keep 20000",
       "ormasim status --db net.db --port 2/0/1/0/3 --states 0,0"},
      {},
      {},
      {},
      {"ormaagent(1)", "ormaagent.json(5)"},
      {}};
  return text;
}

}  // namespace ormasim
