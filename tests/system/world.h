// A network to ask about: an inventory of 50 elements, ormasim serving it, and the agent's
// configuration for it, in a directory of their own.
//
//   class Queries : public World {};
//   TEST_F(Queries, …) { Outcome outcome = agent({"topo", "device", "12"}); }
//
// Thread-safety: thread-compatible. Failure: exceptions, which end the test.
#pragma once

#include <gtest/gtest.h>
#include <json/value.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "inventory.h"
#include "process.h"
#include "temp_directory.h"

namespace systemtest {

class World : public testing::Test {
 protected:
  World();

  // Starts ormasim, which writes the agent's configuration, with further options.
  void serve(const std::vector<std::string>& options = {});
  // The same with a fault script.
  void serveWithFaults(const std::string& script);
  // Kills ormasim: its port is closed, the configuration stays.
  void killSimulator() { simulator_.reset(); }
  // Changes the agent's configuration.
  void configure(const std::function<void(Json::Value&)>& change);

  // Runs ormaagent to its end.
  Outcome agent(const std::vector<std::string>& words, ProcessSetup setup = {});
  // Starts ormaagent.
  std::unique_ptr<Process> startAgent(const std::vector<std::string>& words,
                                      ProcessSetup setup = {});

  std::filesystem::path file(const std::string& name) const { return directory_.path() / name; }

  emf::doubles::TempDirectory directory_;
  std::filesystem::path database_ = file("net.db");
  std::filesystem::path configuration_ = file("agent.json");

 private:
  std::unique_ptr<Process> simulator_;
};

// One service of the library of scripted services, for a configuration's "bundles".
Json::Value scriptedService(const std::string& factory);

}  // namespace systemtest
