#include "submap_tree.h"

#include <list>
#include <set>
#include <utility>

#include "emftopointerface.h"

namespace ormaagent {

namespace {

// The key by which a node's children are asked for: the root is known to the service by "/" only.
std::string askedKey(const SubMapNode& node) {
  return node.depth == 0 ? "/" : node.subMap.subMapId;
}

std::string pathBelow(const std::string& path, const std::string& label) {
  return path.empty() ? label : path + "/" + label;
}

class TreeReader {
 public:
  SubMapTree read() {
    std::list<SubMap> roots;
    note(EMFTopoI::getAllRootSubMaps(roots));
    for (auto root = roots.rbegin(); root != roots.rend(); ++root) {
      open_.push_back({*root, 0, root->label, 0});
    }
    while (!open_.empty()) {
      SubMapNode node = std::move(open_.back());
      open_.pop_back();
      if (seen_.insert(node.subMap.subMapId).second) {
        visit(std::move(node));
      } else {
        ++tree_.repeated;
      }
    }
    return std::move(tree_);
  }

 private:
  void visit(SubMapNode node) {
    std::list<SubMap> children;
    if (node.depth < SubMapTree::kMaxDepth) {
      note(EMFTopoI::getAllSubMaps(askedKey(node), children));
    } else {
      ++tree_.cut;
    }
    node.children = children.size();
    // The last one pushed is the next one read.
    for (auto child = children.rbegin(); child != children.rend(); ++child) {
      open_.push_back({*child, node.depth + 1, pathBelow(node.path, child->label), 0});
    }
    tree_.nodes.push_back(std::move(node));
  }

  void note(std::int64_t result) {
    if (tree_.result == 0) tree_.result = result;
  }

  SubMapTree tree_;
  std::vector<SubMapNode> open_;
  std::set<std::string> seen_;
};

}  // namespace

SubMapTree readSubMapTree() { return TreeReader().read(); }

}  // namespace ormaagent
