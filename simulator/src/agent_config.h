// A configuration with which ormaagent reaches this simulator.
//
// Failure: SimError.
#pragma once

#include <string>

namespace ormasim {

struct AgentConfigSettings {
  std::string file;
  std::string databaseFile;
  int httpPort = 0;
  int faultPort = 0;
  bool explicitTagging = false;
  std::string token;  // empty: none; else it goes into FILE.token, readable by its owner only
};

void writeAgentConfig(const AgentConfigSettings& settings);

}  // namespace ormasim
