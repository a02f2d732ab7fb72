// Nodes, submaps and links of the topology map.
#include <list>
#include <string>

#include "emftopointerface.h"
#include "operations.h"

namespace ormaagent {

namespace {

constexpr Column<Node> kNode[] = {
    {"parentSubMapId", fieldOf<&Node::parentSubMapId>},
    {"nodeId", fieldOf<&Node::nodeId>},
    {"deviceId", fieldOf<&Node::deviceId>},
    {"iconName", fieldOf<&Node::iconName>},
    {"nodeType", fieldOf<&Node::nodeType>},
    {"label", fieldOf<&Node::label>},
    {"ipAddr", fieldOf<&Node::ipAddr>},
    {"remark", fieldOf<&Node::remark>},
    {"procId", fieldOf<&Node::procId>},
    {"fixedCode", fieldOf<&Node::fixedCode>},
    {"zeroCode", fieldOf<&Node::zeroCode>},
    {"spareCode", fieldOf<&Node::spareCode>},
    {"nodeKind", fieldOf<&Node::nodeKind>},
    {"posX", fieldOf<&Node::posX>},
    {"posY", fieldOf<&Node::posY>},
    {"topoId", fieldOf<&Node::topoId>},
};

constexpr Column<SubMap> kSubMap[] = {
    {"parentSubMapId", fieldOf<&SubMap::parentSubMapId>},
    {"subMapId", fieldOf<&SubMap::subMapId>},
    {"spareNumber", fieldOf<&SubMap::spareNumber>},
    {"label", fieldOf<&SubMap::label>},
    {"iconName", fieldOf<&SubMap::iconName>},
    {"mapType", fieldOf<&SubMap::mapType>},
    {"zeroField1", fieldOf<&SubMap::zeroField1>},
    {"topoClassId", fieldOf<&SubMap::topoClassId>},
    {"spareField", fieldOf<&SubMap::spareField>},
    {"zeroField2", fieldOf<&SubMap::zeroField2>},
    {"procId", fieldOf<&SubMap::procId>},
    {"posX", fieldOf<&SubMap::posX>},
    {"posY", fieldOf<&SubMap::posY>},
    {"spareText1", fieldOf<&SubMap::spareText1>},
    {"spareText2", fieldOf<&SubMap::spareText2>},
};

constexpr Column<PhysicalLink> kPhysicalLink[] = {
    {"linkId", fieldOf<&PhysicalLink::linkId>},
    {"linkName", fieldOf<&PhysicalLink::linkName>},
    {"srcDeviceId", fieldOf<&PhysicalLink::srcDeviceId>},
    {"srcPortName", fieldOf<&PhysicalLink::srcPortName>},
    {"dstDeviceId", fieldOf<&PhysicalLink::dstDeviceId>},
    {"dstPortName", fieldOf<&PhysicalLink::dstPortName>},
    {"spareText", fieldOf<&PhysicalLink::spareText>},
    {"linkAttribute", fieldOf<&PhysicalLink::linkAttribute>},
    {"linkStatus", fieldOf<&PhysicalLink::linkStatus>},
    {"srcZero", fieldOf<&PhysicalLink::srcZero>},
    {"srcPortType", fieldOf<&PhysicalLink::srcPortType>},
    {"srcPortStatus", fieldOf<&PhysicalLink::srcPortStatus>},
    {"dstZero", fieldOf<&PhysicalLink::dstZero>},
    {"dstPortType", fieldOf<&PhysicalLink::dstPortType>},
    {"dstPortStatus", fieldOf<&PhysicalLink::dstPortStatus>},
    {"spareInt", fieldOf<&PhysicalLink::spareInt>},
};

template <class Record>
std::list<Record> oneIf(bool present, const Record& record) {
  return present ? std::list<Record>{record} : std::list<Record>{};
}

}  // namespace

Answer topoNodes(const Arguments& arguments) {
  std::list<Node> nodes;
  const std::int64_t result =
      EMFTopoI::getAllNodes(arguments.count() > 0 ? arguments.text(0) : "", nodes);
  return answerOf(result, kNode, nodes);
}

// The operation succeeds without a node as well; one that it filled has a fixed code.
Answer topoNode(const Arguments& arguments) {
  SimNode key;
  key.nodeId = arguments.text(0);
  Node node;
  const std::int32_t untouched = node.fixedCode;
  const std::int64_t result = EMFTopoI::getNode(key, node);
  return answerOf(result, kNode, oneIf(node.fixedCode != untouched, node));
}

Answer topoRootSubMaps(const Arguments&) {
  std::list<SubMap> subMaps;
  const std::int64_t result = EMFTopoI::getAllRootSubMaps(subMaps);
  return answerOf(result, kSubMap, subMaps);
}

Answer topoSubMaps(const Arguments& arguments) {
  std::list<SubMap> subMaps;
  const std::int64_t result = EMFTopoI::getAllSubMaps(arguments.text(0), subMaps);
  return answerOf(result, kSubMap, subMaps);
}

// The operation succeeds for an unknown key as well, with a submap whose own key is a bare "S".
Answer topoSubMap(const Arguments& arguments) {
  SubMap subMap;
  const std::int64_t result = EMFTopoI::getSubMap(arguments.text(0), subMap);
  return answerOf(result, kSubMap, oneIf(result == 0 && subMap.subMapId != "S", subMap));
}

Answer topoLinks(const Arguments&) {
  std::list<PhysicalLink> links;
  const std::int64_t result = EMFTopoI::getAllPhyLinks(links);
  return answerOf(result, kPhysicalLink, links);
}

Answer topoLink(const Arguments& arguments) {
  PhysicalLink link;
  const std::int64_t result = EMFTopoI::getPhyLink(arguments.text(0), link);
  return answerOf(result, kPhysicalLink, oneIf(result == 0, link));
}

}  // namespace ormaagent
