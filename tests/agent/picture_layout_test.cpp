#include "picture_layout.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

namespace ormaagent {
namespace {

// Whether the cells around two spots are apart.
bool apart(const Spot& a, const Spot& b) {
  return std::abs(a.x - b.x) >= kCellWidth || std::abs(a.y - b.y) >= kCellHeight;
}

void expectApart(const std::vector<Spot>& spots) {
  for (std::size_t i = 0; i < spots.size(); ++i) {
    for (std::size_t j = 0; j < i; ++j) ASSERT_TRUE(apart(spots[i], spots[j])) << i << ' ' << j;
  }
}

TEST(PictureLayout, NothingHasNoSpots) { EXPECT_TRUE(layOut({}).empty()); }

TEST(PictureLayout, DirectionsAreThoseOfTheMap) {
  const auto spots = layOut({{0, 0}, {1000, 0}, {0, 1000}});
  EXPECT_GT(spots[1].x, spots[0].x);
  EXPECT_EQ(spots[1].y, spots[0].y);
  EXPECT_LT(spots[2].y, spots[0].y) << "downwards on the map is downwards on paper";
  EXPECT_EQ(spots[2].x, spots[0].x);
}

TEST(PictureLayout, NodesOfOneSpotStandSideBySide) {
  const std::vector<MapPosition> same(500, MapPosition{7, -7});
  const auto spots = layOut(same);
  expectApart(spots);
  for (const Spot& spot : spots) {  // 23 cells squared hold them
    EXPECT_LE(std::abs(spot.x - spots[0].x), 12 * kCellWidth);
    EXPECT_LE(std::abs(spot.y - spots[0].y), 12 * kCellHeight);
  }
}

TEST(PictureLayout, ScatteredNodesStayNearTheirPlaceAndApart) {
  std::mt19937 random(7);
  std::uniform_int_distribution<std::int32_t> anywhere(0, 3600);
  std::vector<MapPosition> positions;
  for (int i = 0; i < 1000; ++i) positions.push_back({anywhere(random), anywhere(random)});
  const auto spots = layOut(positions);
  expectApart(spots);
  // Two positions far apart keep their order.
  for (std::size_t i = 1; i < spots.size(); ++i) {
    if (positions[i].x - positions[i - 1].x > 500) {
      EXPECT_GT(spots[i].x, spots[i - 1].x);
    }
    if (positions[i].y - positions[i - 1].y > 500) {
      EXPECT_LT(spots[i].y, spots[i - 1].y);
    }
  }
}

TEST(PictureLayout, ALineAndTheWholeRangeOfNumbersHaveALayout) {
  expectApart(layOut({{0, 5}, {1, 5}, {2, 5}, {3, 5}}));
  constexpr auto kLeast = std::numeric_limits<std::int32_t>::min();
  constexpr auto kMost = std::numeric_limits<std::int32_t>::max();
  expectApart(layOut({{kLeast, kLeast}, {kMost, kMost}, {0, 0}}));
}

}  // namespace
}  // namespace ormaagent
