// The resources of one element as a tree, put together from their paths of ids.
//
//   for (const ResourceNode& node : treeOf(resources)) show(node.depth, node.resource.name);
//
// Thread-safety: thread-safe on distinct resources. Nothing fails.
#pragma once

#include <cstddef>
#include <list>
#include <vector>

#include "emfresrecords.h"

namespace ormaagent {

struct ResourceNode {
  Resource resource;
  std::size_t depth = 0;  // 0: nothing above it is there
};

// Each resource, followed by what is below it. One lies below the nearest that its path leads
// through; neighbours keep their order. Of two with one path the first has what lies below.
std::vector<ResourceNode> treeOf(const std::list<Resource>& resources);

}  // namespace ormaagent
