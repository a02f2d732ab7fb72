// Submaps as a tree, and the names of subnets.
#include <algorithm>
#include <list>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "emftopointerface.h"
#include "message.h"
#include "operations.h"
#include "submap_tree.h"
#include "subnet_names.h"

namespace ormaagent {

namespace {

struct NamedDevice {
  std::uint64_t id;
  std::string name;
};

constexpr Column<NamedDevice> kNamedDevice[] = {
    {"id", [](const NamedDevice& row) -> Value { return row.id; }},
    {"name", [](const NamedDevice& row) -> Value { return row.name; }},
};

constexpr Column<SubMapNode> kSubMapNode[] = {
    {"label", [](const SubMapNode& node) -> Value { return node.subMap.label; }},
    {"subMapId", [](const SubMapNode& node) -> Value { return node.subMap.subMapId; }},
    {"parentSubMapId", [](const SubMapNode& node) -> Value { return node.subMap.parentSubMapId; }},
    {"subMaps", [](const SubMapNode& node) -> Value { return std::uint64_t{node.children}; }},
};

std::chrono::seconds waitOf(const Arguments& arguments) {
  return std::chrono::seconds(arguments.numberOption<std::int64_t>("--wait"));
}

// How many devices have each subnet name.
std::map<std::string, std::uint64_t> countByName(std::chrono::seconds longest) {
  std::list<Device> devices;
  EMFTopoI::getAllDevices(devices);
  std::vector<unsigned long> ids;
  for (const Device& device : devices) ids.push_back(static_cast<unsigned long>(device.id));
  std::map<std::string, std::uint64_t> counts;
  for (const std::string& name : awaitSubnetNames(ids, Await::kAny, longest)) {
    if (!name.empty()) ++counts[name];
  }
  if (counts.empty()) tell("no device has a subnet name: --wait SECONDS waits for them longer");
  return counts;
}

// The names are all there is to tell subnets apart by, so the first one of a name has the devices.
void addDeviceCounts(const SubMapTree& tree, std::chrono::seconds longest, Answer& answer) {
  auto counts = countByName(longest);
  std::map<std::string, int> namesakes;
  answer.fields.emplace_back("devices");
  for (std::size_t i = 0; i < tree.nodes.size(); ++i) {
    std::uint64_t& count = counts[tree.nodes[i].path];
    answer.records[i].emplace_back(std::exchange(count, 0));
    ++namesakes[tree.nodes[i].path];
  }
  const auto shared = std::count_if(namesakes.begin(), namesakes.end(),
                                    [](const auto& entry) { return entry.second > 1; });
  if (shared > 0) {
    tell(std::to_string(shared) +
         " subnet names belong to several submaps; their devices are counted at the first");
  }
}

void tellWhatIsMissing(const SubMapTree& tree) {
  if (tree.repeated > 0) {
    tell(std::to_string(tree.repeated) + " submaps were met again and left out: a cycle");
  }
  if (tree.cut > 0) {
    tell("what is below " + std::to_string(tree.cut) + " submaps at depth " +
         std::to_string(SubMapTree::kMaxDepth) + " was not asked for");
  }
}

}  // namespace

// The operation has no result: the number of devices without a name stands in for it.
Answer topoSubMapName(const Arguments& arguments) {
  if (!subnetNamesKept()) tell(kSubnetNamesOff);
  std::vector<unsigned long> ids;
  for (std::size_t i = 0; i < arguments.count(); ++i) {
    ids.push_back(arguments.number<unsigned long>(i));
  }
  const auto names = awaitSubnetNames(ids, Await::kAll, waitOf(arguments));
  std::vector<NamedDevice> rows;
  for (std::size_t i = 0; i < ids.size(); ++i) rows.push_back({ids[i], names[i]});
  return answerOf(std::count(names.begin(), names.end(), std::string()), kNamedDevice, rows);
}

Answer topoTree(const Arguments& arguments) {
  const SubMapTree tree = readSubMapTree();
  Answer answer = answerOf(tree.result, kSubMapNode, tree.nodes);
  for (const SubMapNode& node : tree.nodes) answer.depths.push_back(node.depth);
  if (subnetNamesKept()) {
    addDeviceCounts(tree, waitOf(arguments), answer);
  } else {
    tell(std::string("devices are not counted: ") + kSubnetNamesOff);
  }
  tellWhatIsMissing(tree);
  return answer;
}

}  // namespace ormaagent
