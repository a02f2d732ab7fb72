// The picture of the network.
#include <cerrno>
#include <fstream>
#include <list>
#include <set>
#include <string>
#include <system_error>

#include "emftopointerface.h"
#include "exit_status.h"
#include "graphviz.h"
#include "host_failure.h"
#include "message.h"
#include "network_picture.h"
#include "operations.h"

namespace ormaagent {

namespace {

struct Drawing {
  std::string file;
  std::uint64_t nodes, links, subMaps;
};

constexpr Column<Drawing> kDrawing[] = {
    {"file", [](const Drawing& row) -> Value { return row.file; }},
    {"nodes", [](const Drawing& row) -> Value { return row.nodes; }},
    {"links", [](const Drawing& row) -> Value { return row.links; }},
    {"subMaps", [](const Drawing& row) -> Value { return row.subMaps; }},
};

// Every device that is on the topology map.
void addNodes(NetworkPicture& picture) {
  std::list<Device> devices;
  EMFTopoI::getAllDevices(devices);
  for (const Device& device : devices) {
    SimNode key;
    key.nodeId = std::to_string(device.id);
    Node node;
    EMFTopoI::getNode(key, node);
    if (node.nodeId != key.nodeId) continue;
    picture.nodes.push_back({device.id, node.label, {node.posX, node.posY}, node.parentSubMapId});
  }
  const std::size_t missing = devices.size() - picture.nodes.size();
  if (missing > 0) tell(std::to_string(missing) + " devices are not on the topology map");
}

// The submaps that hold a node. The root, whose key reads otherwise, holds everything and gets no
// box.
void addBoxes(NetworkPicture& picture) {
  std::set<std::string> keys;
  for (const PictureNode& node : picture.nodes) keys.insert(node.subMapId);
  for (const std::string& key : keys) {
    SubMap subMap;
    if (EMFTopoI::getSubMap(key, subMap) == 0 && subMap.subMapId == key) {
      picture.boxes.push_back({key, subMap.label});
    }
  }
}

// Those between nodes of the picture.
std::int64_t addLinks(NetworkPicture& picture) {
  std::set<std::string> ids;
  for (const PictureNode& node : picture.nodes) ids.insert(std::to_string(node.deviceId));
  std::list<PhysicalLink> links;
  const std::int64_t result = EMFTopoI::getAllPhyLinks(links);
  for (const PhysicalLink& link : links) {
    if (ids.count(link.srcDeviceId) == 0 || ids.count(link.dstDeviceId) == 0) continue;
    picture.links.push_back({link.linkName, link.srcDeviceId, link.dstDeviceId, link.linkStatus});
  }
  const std::size_t missing = links.size() - picture.links.size();
  if (missing > 0) tell(std::to_string(missing) + " links lack an end on the topology map");
  return result;
}

void writeFile(const std::string& file, const std::string& contents) {
  std::ofstream out(file, std::ios::binary | std::ios::trunc);
  out << contents;
  out.close();
  if (!out) throw HostFailure(kExitFailed, file + ": " + std::generic_category().message(errno));
}

bool isSvg(const std::string& file) { return file.compare(file.size() - 4, 4, ".svg") == 0; }

}  // namespace

// The result is that of reading the links, the one part that can report failure.
Answer topoDraw(const Arguments& arguments) {
  const std::string& file = arguments.option("--out");
  NetworkPicture picture;
  addNodes(picture);
  addBoxes(picture);
  const std::int64_t result = addLinks(picture);
  const std::string dot = dotText(picture);
  writeFile(file, isSvg(file) ? drawSvg(dot) : dot);
  return answerOf(
      result, kDrawing,
      std::list<Drawing>{{file, picture.nodes.size(), picture.links.size(), picture.boxes.size()}});
}

}  // namespace ormaagent
