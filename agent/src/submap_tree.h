// The submaps of the network as a tree, asked from the plug-in level by level.
//
//   SubMapTree tree = readSubMapTree();
//   for (const SubMapNode& node : tree.nodes) show(node.depth, node.subMap.label);
//
// Thread-safety: thread-safe. Failure is `result`, the first one that was not 0, beside the part
// of the tree that could be read. Exceptions of the operations pass.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "emftoporecords.h"

namespace ormaagent {

struct SubMapNode {
  SubMap subMap;
  std::size_t depth = 0;  // 0: a root
  std::string path;       // the labels from the root on, as the names of subnets are formed
  std::size_t children = 0;
};

struct SubMapTree {
  static constexpr std::size_t kMaxDepth = 200;

  std::int64_t result = 0;
  std::vector<SubMapNode> nodes;  // each followed by what is below it
  std::size_t repeated = 0;       // met a second time, as in a cycle, and left out
  std::size_t cut = 0;            // at kMaxDepth: what is below them was not asked for
};

SubMapTree readSubMapTree();

}  // namespace ormaagent
