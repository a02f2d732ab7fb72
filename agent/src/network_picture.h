// A network as Graphviz's DOT text: nodes at their positions, links coloured by status, submaps as
// boxes around their nodes. Made for `neato -n2`, which keeps the positions.
//
//   NetworkPicture picture;
//   picture.nodes.push_back({12, "core-12", {100, 50}, "S1000"});
//   std::string text = dotText(picture);
//
// Thread-safety: thread-compatible. Nothing fails: every text has a form, and a link to a node that
// is not there is left out.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "picture_layout.h"

namespace ormaagent {

struct PictureNode {
  std::int64_t deviceId = 0;
  std::string label;
  MapPosition position;
  std::string subMapId;  // without a box of that key the node stands in none
};

struct PictureLink {
  std::string label;
  std::string source;  // device ids, decimal
  std::string destination;
  std::int32_t status = 0;
};

struct PictureBox {
  std::string subMapId;
  std::string label;
};

struct NetworkPicture {
  std::vector<PictureNode> nodes;
  std::vector<PictureLink> links;
  std::vector<PictureBox> boxes;
};

// What shows a link of that status.
const char* linkColour(std::int32_t status);

std::string dotText(const NetworkPicture& picture);

}  // namespace ormaagent
