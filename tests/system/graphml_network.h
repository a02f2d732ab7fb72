// A network as its GraphML file tells it, read here without the simulator's code: what the agent is
// to say about it once the file has been imported.
//
//   const GraphmlNetwork network = readGraphml(file);
//   EXPECT_EQ(network.devices[0].name, "Bern");
//
// Thread-safety: thread-compatible. Failure: std::runtime_error.
#pragma once

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace systemtest {

struct GraphmlDevice {
  int id;  // from 2 on, in the order of the file
  std::string name;
  std::string country;  // empty: none
  int posX, posY;
};

struct GraphmlNetwork {
  std::string name;  // the file's stem
  std::vector<GraphmlDevice> devices;
  std::vector<std::string> countries;      // in the order in which they first come
  std::vector<std::pair<int, int>> links;  // device ids, in the order of the file
};

GraphmlNetwork readGraphml(const std::filesystem::path& file);

}  // namespace systemtest
