// Where the nodes of a picture stand: at their map positions, spread evenly as far as the paper
// needs, on a grid in which no two cover each other.
//
//   std::vector<Spot> spots = layOut({{0, 0}, {120, 40}});
//
// Thread-safety: immutable. Nothing fails: any positions, also equal ones, have a layout.
#pragma once

#include <cstdint>
#include <vector>

namespace ormaagent {

struct MapPosition {
  std::int32_t x = 0;  // to the right
  std::int32_t y = 0;  // downwards
};

// The middle of a node, in points from the lower left corner.
struct Spot {
  double x = 0;  // to the right
  double y = 0;  // upwards
};

// A cell of the grid, in points: the most room that a node may take.
constexpr double kCellWidth = 130;
constexpr double kCellHeight = 45;

// One spot for each position. A node whose cell is taken already goes to the next free one.
std::vector<Spot> layOut(const std::vector<MapPosition>& positions);

}  // namespace ormaagent
