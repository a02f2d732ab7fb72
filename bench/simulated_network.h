// A generated network, served by ormasim on loopback, with the agent's configuration for it
// installed in this process.
//
//   const SimulatedNetwork network(100000);
//   network.url("/rest/resource/v2/dev-properties")
//
// Thread-safety: thread-compatible. The constructor throws std::runtime_error, with what the
// simulator said, when the network cannot be had.
#pragma once

#include <memory>
#include <string>

#include "process.h"

class SimulatedNetwork {
 public:
  // `changes` are SQL statements that the inventory goes through before it is served.
  explicit SimulatedNetwork(int elements, const std::string& changes = std::string());
  SimulatedNetwork(const SimulatedNetwork&) = delete;
  SimulatedNetwork& operator=(const SimulatedNetwork&) = delete;
  // Stops the simulator and removes its files.
  ~SimulatedNetwork();

  // Installs this network's configuration again, after that of another one.
  void select() const;
  std::string url(const std::string& path) const;

 private:
  void start(int elements, const std::string& changes);
  std::string configurationFile() const { return directory_ + "/agent.json"; }

  std::string directory_;
  std::unique_ptr<ormasim::testing::Process> simulator_;
};
