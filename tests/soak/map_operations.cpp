// Nodes, submaps and links of the topology map.
#include <algorithm>
#include <list>

#include "emftopointerface.h"
#include "operation.h"

namespace soak {

namespace {

constexpr std::int64_t kTopologyFailed = 0x411800D4;
const std::string kTopologyFailure = "result " + std::to_string(kTopologyFailed);

Verdict getAllNodes(Context& context) {
  std::list<Node> nodes;
  Expected expected(0, context.network.rootNodes);
  expected.orElse("result 0", Part::kBeginning).orSpoilt(Part::kBeginning);
  return context.check([&] { return EMFTopoI::getAllNodes("", nodes); },
                       [&] { return rowsOf(nodes); }, expected);
}

// The operation succeeds without a node as well; one that it filled has a fixed code. What it
// throws at leaves a node half filled, which is nobody's record.
Verdict askNode(Context& context, const std::string& id, Rows row, bool isThere) {
  SimNode key;
  key.nodeId = id;
  std::list<Node> found;
  Expected expected(0, std::move(row));
  if (isThere) expected.orElse("result 0", Part::kNothing).orSpoilt(Part::kNothing);
  const auto call = [&] {
    Node node;
    const std::int64_t result = EMFTopoI::getNode(key, node);
    if (node.fixedCode != 0) found.push_back(node);
    return result;
  };
  return context.check(
      call, [&] { return rowsOf(found); }, expected);
}

Verdict getNode(Context& context) {
  if (context.oneIn(20)) return askNode(context, "90000000", {}, false);
  const Element& element = context.pick(context.network.elements);
  return askNode(context, element.nodeId, {element.node}, true);
}

Verdict getAllRootSubMaps(Context& context) {
  std::list<SubMap> roots;
  Expected expected(0, context.network.roots);
  expected.orElse("result -1", Part::kNothing);
  return context.check([&] { return EMFTopoI::getAllRootSubMaps(roots); },
                       [&] { return rowsOf(roots); }, expected);
}

Verdict getAllSubMaps(Context& context) {
  const auto& subMaps = context.network.subMaps;
  const bool byRoot = context.oneIn(10);
  const SubMapFacts& parent = byRoot ? subMaps.front() : context.pick(subMaps);
  std::list<SubMap> children;
  Expected expected(0, parent.children);
  expected.orElse(kTopologyFailure, Part::kBeginning);
  // The root's own id is asked for first; without it nothing is found.
  if (byRoot) expected.orElse("result 0", Part::kNothing);
  return context.check([&] { return EMFTopoI::getAllSubMaps(byRoot ? "/" : parent.key, children); },
                       [&] { return rowsOf(children); }, expected);
}

Verdict getSubMap(Context& context) {
  const SubMapFacts& facts = context.pick(context.network.subMaps);
  std::list<SubMap> found;
  Expected expected(0, Rows{facts.row});
  expected.orElse(kTopologyFailure, Part::kNothing);
  const auto call = [&] {
    SubMap subMap;
    const std::int64_t result = EMFTopoI::getSubMap(facts.key, subMap);
    if (result == 0) found.push_back(subMap);
    return result;
  };
  return context.check(
      call, [&] { return rowsOf(found); }, expected);
}

// States are read through a list that all threads share: one that another thread has replaced
// meanwhile reads as 0.
bool isState(std::int64_t state, std::int64_t expected, Context& context) {
  if (state == 0 && expected != 0) ++context.statesTaken;
  return state == expected || state == 0;
}

Verdict judgeLink(const PhysicalLink& link, Context& context) {
  const auto facts = context.network.linkById.find(link.linkId);
  if (facts == context.network.linkById.end()) return wrong("no link has the id " + link.linkId);
  const LinkFacts& expected = *facts->second;
  if (rowOf(link) != expected.row) {
    return wrong("expected \"" + expected.row + "\", got \"" + rowOf(link) + "\"");
  }
  const bool states = isState(link.srcPortStatus, expected.srcStatus, context) &&
                      isState(link.dstPortStatus, expected.dstStatus, context) &&
                      link.linkStatus == std::max(link.srcPortStatus, link.dstPortStatus);
  if (states) return {};
  return wrong("link " + link.linkId + ": expected states " + std::to_string(expected.srcStatus) +
               " and " + std::to_string(expected.dstStatus) + ", got " +
               joined(link.srcPortStatus, link.dstPortStatus, link.linkStatus));
}

Verdict getPhyLink(Context& context) {
  const LinkFacts& facts = context.pick(context.network.links);
  PhysicalLink link;
  if (context.oneIn(20)) {
    return context.check([&] { return EMFTopoI::getPhyLink("204:90000000", link); },
                         [] { return Rows{}; }, Expected(kTopologyFailed, Rows{}));
  }
  const Answer answer = ask([&] { return EMFTopoI::getPhyLink(facts.id, link); });
  if (answer.how() != "result 0") return wrong("expected result 0, got " + answer.how());
  if (link.linkId != facts.id) return wrong("expected " + facts.id + ", got " + link.linkId);
  return judgeLink(link, context);
}

Verdict getAllPhyLinks(Context& context) {
  std::list<PhysicalLink> links;
  const Answer answer = ask([&] { return EMFTopoI::getAllPhyLinks(links); });
  const auto& expected = context.network.links;
  if (answer.how() != "result 0" || links.size() != expected.size()) {
    return wrong("expected result 0 with " + std::to_string(expected.size()) + " links, got " +
                 answer.how() + " with " + std::to_string(links.size()));
  }
  Rows ids;
  for (const PhysicalLink& link : links) {
    const Verdict verdict = judgeLink(link, context);
    if (verdict.kind == Verdict::kWrong) return verdict;
    ids.push_back(link.linkId);
  }
  std::sort(ids.begin(), ids.end());
  const auto twice = std::adjacent_find(ids.begin(), ids.end());
  return twice == ids.end() ? Verdict{} : wrong("link " + *twice + " comes twice");
}

}  // namespace

void addMapOperations(std::vector<Operation>& all) {
  all.insert(all.end(), {{"EMFTopoI::getAllNodes", 1, getAllNodes},
                         {"EMFTopoI::getNode", 5, getNode},
                         {"EMFTopoI::getAllRootSubMaps", 5, getAllRootSubMaps},
                         {"EMFTopoI::getAllSubMaps", 10, getAllSubMaps},
                         {"EMFTopoI::getSubMap", 10, getSubMap},
                         {"EMFTopoI::getPhyLink", 20, getPhyLink},
                         {"EMFTopoI::getAllPhyLinks", 1, getAllPhyLinks}});
}

}  // namespace soak
