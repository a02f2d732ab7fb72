#include "picture_layout.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <utility>

namespace ormaagent {

namespace {

using Cell = std::pair<std::int64_t, std::int64_t>;  // column, row

// Cells for each node, so that most nodes find their own one free.
constexpr double kCellsPerNode = 4;

// What of the map is used.
struct Extent {
  double left, top, width, height;
};

Extent extentOf(const std::vector<MapPosition>& positions) {
  const auto byX = [](const auto& a, const auto& b) { return a.x < b.x; };
  const auto byY = [](const auto& a, const auto& b) { return a.y < b.y; };
  const auto [left, right] = std::minmax_element(positions.begin(), positions.end(), byX);
  const auto [top, bottom] = std::minmax_element(positions.begin(), positions.end(), byY);
  return {double(left->x), double(top->y), double(right->x) - left->x, double(bottom->y) - top->y};
}

// Points for one map unit, the same in both directions. Nodes in a line have no area: a side of
// the map counts as at least a tenth of the other.
double scaleFor(const Extent& extent, std::size_t nodes) {
  const double longest = std::max({extent.width, extent.height, 1.0});
  const double width = std::max(extent.width, longest / 10);
  const double height = std::max(extent.height, longest / 10);
  const double room = kCellsPerNode * static_cast<double>(nodes) * kCellWidth * kCellHeight;
  return std::sqrt(room / (width * height));
}

// The nth cell of a square spiral around 0, 0.
Cell spiral(std::int64_t n) {
  if (n == 0) return {0, 0};
  const auto ring = static_cast<std::int64_t>((std::sqrt(static_cast<double>(n)) + 1) / 2);
  const std::int64_t at = n - (2 * ring - 1) * (2 * ring - 1);
  const std::int64_t side = at / (2 * ring);
  const std::int64_t along = at % (2 * ring) - ring;
  switch (side) {
    case 0:
      return {ring, along};
    case 1:
      return {-along, ring};
    case 2:
      return {-ring, -along};
    default:
      return {along, -ring};
  }
}

class Grid {
 public:
  // The free cell that is next to `wanted`.
  Cell take(const Cell& wanted) {
    std::int64_t& turn = turns_[wanted];
    for (;;) {
      const Cell step = spiral(turn++);
      const Cell cell = {wanted.first + step.first, wanted.second + step.second};
      if (taken_.insert(cell).second) return cell;
    }
  }

 private:
  std::set<Cell> taken_;
  std::map<Cell, std::int64_t> turns_;  // how far around a cell everything is taken
};

}  // namespace

std::vector<Spot> layOut(const std::vector<MapPosition>& positions) {
  std::vector<Spot> spots;
  if (positions.empty()) return spots;
  const Extent extent = extentOf(positions);
  const double scale = scaleFor(extent, positions.size());
  Grid grid;
  for (const MapPosition& position : positions) {
    const double x = (position.x - extent.left) * scale;
    const double y = (extent.top + extent.height - position.y) * scale;
    const auto [column, row] =
        grid.take({std::llround(x / kCellWidth), std::llround(y / kCellHeight)});
    spots.push_back(
        {static_cast<double>(column) * kCellWidth, static_cast<double>(row) * kCellHeight});
  }
  return spots;
}

}  // namespace ormaagent
