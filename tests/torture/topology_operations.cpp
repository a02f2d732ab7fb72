// EMFTopoI without what it takes from the caches, and EMFMOMgrI.
#include "device_objects.h"
#include "emfmominterface.h"
#include "emftopointerface.h"
#include "links.h"
#include "long_name.h"
#include "operation.h"
#include "platform.h"
#include "topology_records.h"

namespace emf::torture {
namespace {

using doubles::json;
using doubles::platform;

constexpr char kNodesPath[] = "/rest/topology/v3/tsnodes";
constexpr char kSubMapOutage[] = "1092092116";  // 0x411800D4

// --- Devices

void scriptDevices() {
  platform().text.characterSetSwitch(1);
  platform().rest.devices({test::deviceObject("NE=2", kLongName),
                           test::deviceObject("NE=2,FR=1", kLongName),
                           test::deviceObject("NE=3", kLongName)});
}

const std::list<Device> kDeviceBefore = {test::device(9, "before")};
const std::list<Device> kDevices = {test::device(9, "before"), test::device(2, kConverted),
                                    test::device(3, kConverted)};

const std::string kOtherName = "another name that takes memory";
const Device kLeftOver = test::device(77, "left over", 8, 9, "left over");

void scriptDatabase() {
  stDevProperty device;
  device.devId = 12;
  device.devType = 2;
  device.subType = 5;
  device.ipAddress = kOtherName;
  device.devName = kLongName;
  NodeStruct node;
  node.devId = 12;
  platform().database.properties({device});
  platform().database.versionName(kLongName);
  platform().database.location({kLongName, "floor 2"});
  platform().database.nodes({node}, 1);
}

const std::string kNodeId = "a node id that takes memory of its own";

// --- Nodes

std::string viewObject(int id) {
  return R"({"parentId":"102","nativeId":"NE=)" + std::to_string(id) +
         R"(","iconFile":"/a/router.png","exInfo":"NodeType=x;ProcID=7","label":")" + kLongName +
         R"(","ipAddr":"10.0.0.12","remark":")" + kLongName +
         R"(","nodeClass":"ne","posX":-3,"posY":44,"topoId":9})";
}

void scriptNodes() {
  platform().text.characterSetSwitch(1);
  platform().rest.topoViewAnswers(json(R"({"dataList":[)" + viewObject(12) + "," + viewObject(13) +
                                       R"(],"hasNext":true,"marker":"m2"})"));
  platform().rest.topoViewAnswers(json(R"({"dataList":[)" + viewObject(14) + "]}"));
}

Node nodeOf(int id, const std::string& icon) {
  Node node;
  node.parentSubMapId = "UTF-8>GBK:S102";
  node.nodeId = std::to_string(id);
  node.deviceId = id;
  node.iconName = "UTF-8>GBK:" + icon;
  node.nodeType = "UTF-8>GBK:x";
  node.label = node.remark = kConverted;
  node.ipAddr = "UTF-8>GBK:10.0.0.12";
  node.procId = 7;
  node.fixedCode = 2011;
  node.posX = -3;
  node.posY = 44;
  node.topoId = 9;
  return node;
}

const std::list<Node> kNodeBefore = {nodeOf(9, "before")};
const std::list<Node> kNodes = {nodeOf(9, "before"), nodeOf(12, "router"), nodeOf(13, "router"),
                                nodeOf(14, "router")};
const std::string kSubMapKey = "S5, a key that takes memory of its own";

SimNode keyOf(const std::string& nodeId) {
  SimNode key;
  key.nodeId = nodeId;
  return key;
}
const SimNode kNodeKey = keyOf("12");

// --- Submaps

std::string submapObject(const std::string& parent, const std::string& id,
                         const std::string& topoId) {
  return R"({"parentId":")" + parent + R"(","objId":")" + id + R"(","topoId":")" + topoId +
         R"(","label":")" + kLongName +
         R"(","iconFile":"/a/city.png","typeId":"200","topoClassId":"31",)"
         R"("exInfo":"a ProcID 12 b","posX":"-3","posY":"44"})";
}

void submapPage(const std::string& objects, bool isLast) {
  platform().rest.answers(kNodesPath, json(R"({"dataList":[)" + objects + R"(],"isTruncated":)" +
                                           (isLast ? "false}" : R"(true,"marker":"m2"})")));
}

// The children of submap 55 on two pages, the submap itself among them, and the id of the root.
void scriptSubMaps() {
  platform().text.characterSetSwitch(1);
  platform().rest.answersBy([](const Nimbola::RestReq& request, Json::Value& answer) {
    const std::string asked = request.params["conditions"][1]["simple"]["value"].asString();
    const bool isFirst = !request.params.isMember("marker");
    answer["dataList"] = Json::Value(Json::arrayValue);
    if (asked == "/") answer["dataList"].append(json(R"({"objId":"55"})"));
    if (asked == "55" && isFirst) {
      answer["dataList"].append(json(submapObject("55", "60", "9")));
      answer["dataList"].append(json(submapObject("55", "55", "101")));
      answer["isTruncated"] = true;
      answer["marker"] = "m2";
    }
    if (asked == "55" && !isFirst) {
      answer["dataList"].append(json(submapObject("102", "61", "9")));
    }
    return true;
  });
}

void scriptRoots() {
  platform().text.characterSetSwitch(1);
  submapPage(submapObject("55", "60", "101"), false);
  submapPage(submapObject("102", "102", "101"), true);
}

void scriptOneSubMap() {
  platform().text.characterSetSwitch(1);
  submapPage(submapObject("55", "60", "9"), true);
}

SubMap subMapOf(const std::string& parent, const std::string& key, int mapType) {
  SubMap map;
  map.parentSubMapId = parent;
  map.subMapId = key;
  map.label = kConverted;
  map.iconName = "UTF-8>GBK:/a/city.png";
  map.mapType = mapType;
  map.topoClassId = 31;
  map.procId = 12;
  map.posX = -3;
  map.posY = 44;
  return map;
}

const std::list<SubMap> kSubMapBefore = {subMapOf("S1", "S2", 0)};
const std::list<SubMap> kSubMaps = {subMapOf("S1", "S2", 0), subMapOf("S55", "SUTF-8>GBK:60", 1),
                                    subMapOf("ORMAP_PHY_SUBMAP", "SUTF-8>GBK:61", 1)};
const std::list<SubMap> kRoots = {subMapOf("S1", "S2", 0),
                                  subMapOf("ORMAP_PHY_SUBMAP", "ORMAP_PHY_SUBMAP", 101)};
const std::string kRootKey = "/";
const std::string kParentKey = "S55";
const std::string kOneKey = "S60";

// --- Links: more than one call's worth of ids

constexpr int kLinks = 2001;

doubles::TELinkInfo infoOf(const std::string& id) {
  return test::linkInfo(id, kLongName, test::portAt(12, 0, 3, 1, 5, test::kPhysicalType, kLongName),
                        test::portAt(14, 1, 2, -1, 9, test::kLogicalType, kLongName));
}

// Each call is answered by the first link that it asks for.
void scriptLinks() {
  platform().southbound.linkIds([](doubles::UniResIds& out) {
    doubles::TEUniResID id;
    id.uniResId = "IPLINK=204:1";
    id.resType = "IPLINK";
    id.extId.clear();
    out.assign(kLinks, id);
    out.back().uniResId = "IPLINK=204:2";
  });
  platform().southbound.linkInfos(
      [](const doubles::UniResIds& ids, std::vector<doubles::TELinkInfo>& out) {
        out.push_back(infoOf(ids.front().uniResId));
      });
  platform().southbound.portStates(doubles::state(1, 0));
}

PhysicalLink linkOf(const std::string& id, int sourceStatus, int destinationStatus) {
  PhysicalLink link;
  link.linkId = id;
  link.linkName = link.srcPortName = link.dstPortName = kLongName;
  link.srcDeviceId = "12";
  link.dstDeviceId = "14";
  link.linkAttribute = 6;
  link.srcPortType = test::kPhysicalType;
  link.dstPortType = test::kLogicalType;
  link.srcPortStatus = sourceStatus;
  link.dstPortStatus = destinationStatus;
  link.linkStatus = std::max(sourceStatus, destinationStatus);
  return link;
}

const std::list<PhysicalLink> kLinkBefore = {linkOf("before", 9, 9)};
const std::list<PhysicalLink> kLinksAfter = {linkOf("before", 9, 9), linkOf("204:1", 9, 9),
                                             linkOf("204:2", 9, 9)};

// A port whose state cannot be had counts as 0.
std::map<std::string, Texts> linksWithoutStates() {
  std::map<std::string, Texts> inPlaceOf;
  for (const char* id : {"204:1", "204:2"}) {
    inPlaceOf[textOf(linkOf(id, 9, 9))] = {textOf(linkOf(id, 0, 9)), textOf(linkOf(id, 9, 0)),
                                           textOf(linkOf(id, 0, 0))};
  }
  return inPlaceOf;
}

const PhysicalLink kLinkLeftOver = linkOf("left over", 7, 7);
const std::string kLinkId = "204:1";

template <class Call>
Operation idle(const char* name, Call call) {
  return {name, calling(scriptNothing, call), {"0", {}, {}}};
}

}  // namespace

const std::vector<Operation>& topologyOperations() {
  static const std::vector<Operation> rows = {
      {"EMFTopoI::getAllDevices",
       calling(scriptDevices, kDeviceBefore,
               [](auto& out) { return EMFTopoI::getAllDevices(out); }),
       {"0", textsOf(kDevices), {}},
       Left::kStart,
       {{"device listing", {"0", kNoMemory}}},
       {},
       {},
       1},
      {"EMFTopoI::getDevice",
       calling(scriptDatabase, kLeftOver, [](auto& out) { return EMFTopoI::getDevice(12, out); }),
       {"0", textsOf(test::device(12, kLongName, 2, 5, kOtherName)), {}},
       Left::kWhole,
       {{"database read", {"1092092090", kNoMemory}}},
       {},
       {{textOf(test::device(12, kLongName, 2, 5, kOtherName)), textsOf(kLeftOver)}},
       1},
      {"EMFTopoI::getVersionOfDev",
       calling(scriptDatabase, std::string("left over"),
               [](auto& out) { return EMFTopoI::getVersionOfDev(12, out); }),
       {"0", {kLongName}, {}},
       Left::kWhole,
       {{"database read", {"1092092108", kNoMemory}}},
       {},
       {{kLongName, {"left over"}}},
       1},
      {"EMFTopoI::getLocationOfDev",
       calling(scriptDatabase, std::string("left over"),
               [](auto& out) { return EMFTopoI::getLocationOfDev(12, out); }),
       {"0", {kLongName + "  floor 2  "}, {}},
       Left::kWhole,
       {{"database read", {"1092092108", kNoMemory}}},
       {},
       {{kLongName + "  floor 2  ", {"left over"}}},
       1},
      {"EMFTopoI::getDeviceIDbyNodeID",
       calling(scriptDatabase, long{77},
               [](auto& out) { return EMFTopoI::getDeviceIDbyNodeID(kNodeId, out); }),
       {"0", {"12"}, {}},
       Left::kWhole,
       {{"database read", {"-1", kNoMemory}}},
       {},
       {{"12", {"77"}}},
       1},
      {"EMFTopoI::getAllNodes",
       calling(scriptNodes, kNodeBefore,
               [](auto& out) { return EMFTopoI::getAllNodes(kSubMapKey, out); }),
       {"0", textsOf(kNodes), {}},
       Left::kStart,
       {{"topology view", {"0", "0", "0", kNoMemory}}, {"mutex", {"0"}}},
       {},
       {},
       1},
      {"EMFTopoI::getNode",
       calling(scriptNodes, nodeOf(9, "before"),
               [](auto& out) { return EMFTopoI::getNode(kNodeKey, out); }),
       {"0", textsOf(nodeOf(12, "/a/router.png")), {}},
       Left::kAnything,
       {{"topology view", {"0", "0", "0", kNoMemory}}, {"mutex", {"0"}}}},
      {"EMFTopoI::getAllRootSubMaps",
       calling(scriptRoots, kSubMapBefore,
               [](auto& out) { return EMFTopoI::getAllRootSubMaps(out); }),
       {"0", textsOf(kRoots), {}},
       Left::kStart,
       {{"REST request", {"-1", "0", "-1", kNoMemory}}},
       {},
       {},
       1},
      {"EMFTopoI::getAllSubMaps",
       calling(scriptSubMaps, kSubMapBefore,
               [](auto& out) { return EMFTopoI::getAllSubMaps(kParentKey, out); }),
       {"0", textsOf(kSubMaps), {}},
       Left::kStart,
       {{"REST request", {kSubMapOutage, "-1", kSubMapOutage, kNoMemory}}},
       {},
       {},
       1},
      // Without the root's id the children of no one are asked for, of whom there are none.
      {"EMFTopoI::getAllSubMaps of the root",
       calling(scriptSubMaps, kSubMapBefore,
               [](auto& out) { return EMFTopoI::getAllSubMaps(kRootKey, out); }),
       {"0", textsOf(kSubMaps), {}},
       Left::kStart,
       {{"REST request", {"0|1092092116", "0|-1", "0|1092092116", kNoMemory}}},
       {},
       {},
       1},
      {"EMFTopoI::getSubMap",
       calling(scriptOneSubMap, subMapOf("before", "before", 0),
               [](auto& out) { return EMFTopoI::getSubMap(kOneKey, out); }),
       {"0", textsOf(subMapOf("S55", "SUTF-8>GBK:60", 1)), {}},
       Left::kAnything,
       {{"REST request", {kSubMapOutage, "-1", "-1", kNoMemory}}}},
      {"EMFTopoI::getPhyLink",
       calling(scriptLinks, kLinkLeftOver,
               [](auto& out) { return EMFTopoI::getPhyLink(kLinkId, out); }),
       {"0", textsOf(linkOf("204:1", 9, 9)), {}},
       Left::kAnything,
       {{"link infos", {"6105", "1092091957"}}, {"port status", {"0", "0"}}},
       {"0", "1092091957"}},
      {"EMFTopoI::getAllPhyLinks",
       calling(scriptLinks, kLinkBefore, [](auto& out) { return EMFTopoI::getAllPhyLinks(out); }),
       {"0", textsOf(kLinksAfter), {}},
       Left::kSome,
       {{"link ids", {"6105", "1092091957"}},
        {"link infos", {"0", "0"}},
        {"port status", {"0", "0"}}},
       {"0", "1092091957"},
       linksWithoutStates(),
       1},
      idle("EMFMOMgrI::setUserLabel", [] { return EMFMOMgrI::setUserLabel(); }),
      idle("EMFMOMgrI::setOwner", [] { return EMFMOMgrI::setOwner(); }),
      idle("EMFMOMgrI::insertRecord", [] { return EMFMOMgrI::insertRecord(); }),
      idle("EMFMOMgrI::deleteRecord", [] { return EMFMOMgrI::deleteRecord(); }),
  };
  return rows;
}

}  // namespace emf::torture
