#include "resource_tree.h"

#include <map>
#include <utility>

namespace ormaagent {

namespace {

using Path = std::vector<std::int64_t>;

constexpr std::size_t kNone = static_cast<std::size_t>(-1);

// The first resource of each path.
std::map<Path, std::size_t> indexByPath(const std::vector<const Resource*>& resources) {
  std::map<Path, std::size_t> index;
  for (std::size_t i = 0; i < resources.size(); ++i) index.emplace(resources[i]->resIDs, i);
  return index;
}

std::size_t parentOf(const Resource& resource, const std::map<Path, std::size_t>& index) {
  Path path = resource.resIDs;
  while (path.size() > 1) {
    path.pop_back();
    const auto found = index.find(path);
    if (found != index.end()) return found->second;
  }
  return kNone;
}

}  // namespace

std::vector<ResourceNode> treeOf(const std::list<Resource>& resources) {
  std::vector<const Resource*> all;
  for (const Resource& resource : resources) all.push_back(&resource);
  const auto index = indexByPath(all);
  std::vector<std::vector<std::size_t>> children(all.size());
  // What is still to be visited, with its depth; the last one is next.
  std::vector<std::pair<std::size_t, std::size_t>> open;
  for (std::size_t i = all.size(); i-- > 0;) {
    const std::size_t parent = parentOf(*all[i], index);
    if (parent == kNone) {
      open.emplace_back(i, 0);
    } else {
      children[parent].push_back(i);
    }
  }
  std::vector<ResourceNode> tree;
  while (!open.empty()) {
    const auto [i, depth] = open.back();
    open.pop_back();
    tree.push_back({*all[i], depth});
    for (const std::size_t child : children[i]) open.emplace_back(child, depth + 1);
  }
  return tree;
}

}  // namespace ormaagent
