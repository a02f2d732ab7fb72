#include "resource_tree.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace ormaagent {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

using Path = std::vector<std::int64_t>;

Resource resource(const std::string& name, Path path) {
  Resource made;
  made.name = name;
  made.resIDs = std::move(path);
  return made;
}

std::vector<std::pair<std::string, std::size_t>> shape(const std::list<Resource>& resources) {
  std::vector<std::pair<std::string, std::size_t>> rows;
  for (const ResourceNode& node : treeOf(resources)) {
    rows.emplace_back(node.resource.name, node.depth);
  }
  return rows;
}

TEST(ResourceTree, EachResourceIsFollowedByWhatIsBelow) {
  EXPECT_THAT(
      shape({resource("ne", {2}), resource("frame 1", {2, 10}), resource("frame 2", {2, 20}),
             resource("slot 1", {2, 10, 11}), resource("slot 3", {2, 20, 21}),
             resource("slot 2", {2, 10, 12}), resource("port", {2, 10, 11, 99})}),
      ElementsAre(Pair("ne", 0), Pair("frame 1", 1), Pair("slot 1", 2), Pair("port", 3),
                  Pair("slot 2", 2), Pair("frame 2", 1), Pair("slot 3", 2)));
}

TEST(ResourceTree, ResourceLiesBelowTheNearestOfItsPath) {
  EXPECT_THAT(shape({resource("ne", {2}), resource("port", {2, 10, 11, 99}),
                     resource("slot", {2, 10, 11})}),
              ElementsAre(Pair("ne", 0), Pair("slot", 1), Pair("port", 2)));
}

TEST(ResourceTree, ResourceWithNothingAboveIsARoot) {
  EXPECT_THAT(shape({resource("port", {2, 10}), resource("other", {3}), resource("nowhere", {})}),
              ElementsAre(Pair("port", 0), Pair("other", 0), Pair("nowhere", 0)));
}

TEST(ResourceTree, FirstOfTwoWithOnePathHasWhatLiesBelow) {
  EXPECT_THAT(shape({resource("a", {2}), resource("b", {2}), resource("below", {2, 3})}),
              ElementsAre(Pair("a", 0), Pair("below", 1), Pair("b", 0)));
}

TEST(ResourceTree, NothingGivesNothing) { EXPECT_THAT(shape({}), IsEmpty()); }

}  // namespace
}  // namespace ormaagent
