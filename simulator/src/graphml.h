// One GraphML file, read and checked.
//
//   Network network = readGraphml("nets/example.graphml");
//
// Failure: SimError "FILE:LINE: reason" for anything malformed; nothing is guessed.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace ormasim {

struct GraphNode {
  std::string id;
  std::string label;    // empty when it has none
  std::string country;  // empty when it names none
  std::int64_t posX = 0;
  std::int64_t posY = 0;
};

// Indexes into the nodes.
struct GraphEdge {
  std::size_t source = 0;
  std::size_t target = 0;
};

struct Network {
  std::string stem;  // of the file's name
  std::vector<GraphNode> nodes;
  std::vector<GraphEdge> edges;
};

Network readGraphml(const std::string& file);

}  // namespace ormasim
