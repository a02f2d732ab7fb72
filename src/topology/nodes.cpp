#include <json/value.h>

#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

#include "emftopointerface.h"
#include "resourcenames.h"
#include "submapbufmgr.h"
#include "topologyjson.h"
#include "watchedcall.h"

namespace {

// The "parentId" that denotes the physical root.
constexpr char kPhysicalRoot[] = "102";
constexpr std::int32_t kFixedCode = 2011;
constexpr std::int32_t kGroupKind = 255;     // a subnet or a container
constexpr std::int32_t kMainNodeKind = 254;  // a main network element

constexpr char kProcIdWord[] = "ProcID";
constexpr char kNodeTypeWord[] = "NodeType";
constexpr std::size_t kBehindProcId = sizeof kProcIdWord;      // the word and one separator
constexpr std::size_t kBehindNodeType = sizeof kNodeTypeWord;  // the same

// The filter document; "caseSensitive" is a text here, meant so.
Json::Value filterOf(const char* name, const char* comparison, Json::Value value) {
  Json::Value filter(Json::objectValue);
  filter["logOp"] = "and";
  Json::Value& simple = filter["simple"];
  simple["name"] = name;
  simple["operator"] = comparison;
  simple["caseSensitive"] = "false";
  simple["value"] = std::move(value);
  return filter;
}

std::vector<Json::Value> topologyView(const Json::Value& filter) {
  std::vector<Json::Value> objects;
  if (SubmapBufMgr* buffers = SubmapBufMgr::Instance()) buffers->QueryTopoView(filter, objects);
  return objects;
}

// The file name without path and extension; the whole text when it lacks either.
std::string bareIconName(const std::string& iconFile) {
  const std::size_t slash = iconFile.rfind('/');
  if (slash == std::string::npos) return iconFile;
  const std::size_t dot = iconFile.rfind('.');
  if (dot == std::string::npos || dot < slash) return iconFile;
  return iconFile.substr(slash + 1, dot - slash - 1);
}

void fillIdentity(const Json::Value& object, Node& node) {
  node.parentSubMapId = ToNorthCharset(("S" + object["parentId"].asString()).c_str());
  const std::string nativeId = object["nativeId"].asString();
  const std::size_t equals = nativeId.find('=');
  if (equals == std::string::npos) {
    node.nodeId = ToNorthCharset(nativeId.c_str());
    return;
  }
  node.nodeId = nativeId.substr(equals + 1);  // unconverted, meant so
  node.deviceId = emf::leadingNumber(node.nodeId);
}

// "…NodeType?value?ProcID?number…": each "?" is one separator character. Throws std::out_of_range
// when a word ends the text. A "NodeType" behind "ProcID" makes the length wrap, and the value runs
// to the end of the text: meant so.
void fillFromExInfo(const std::string& exInfo, Node& node) {
  const std::size_t procId = exInfo.find(kProcIdWord);
  if (procId == std::string::npos) {
    node.procId = 0;
    return;
  }
  node.procId = emf::leadingNumber(exInfo.substr(procId + kBehindProcId));
  const std::size_t nodeType = exInfo.find(kNodeTypeWord);
  if (nodeType == std::string::npos) return;
  const std::size_t start = nodeType + kBehindNodeType;
  node.nodeType = ToNorthCharset(exInfo.substr(start, procId - 1 - start).c_str());
}

std::int32_t nodeKindOf(const std::string& nodeClass, const std::string& exInfo) {
  if (nodeClass == "subnet" || nodeClass == "container") return kGroupKind;
  const bool mainNode = nodeClass == "ne" && exInfo.find("MainNode") != std::string::npos;
  return mainNode ? kMainNodeKind : 0;
}

void fillNode(const Json::Value& object, const std::string& iconName, Node& node) {
  fillIdentity(object, node);
  node.iconName = ToNorthCharset(iconName.c_str());
  const std::string exInfo = object["exInfo"].asString();
  fillFromExInfo(exInfo, node);
  node.label = ToNorthCharset(object["label"].asString().c_str());
  node.ipAddr = ToNorthCharset(object["ipAddr"].asString().c_str());
  node.fixedCode = kFixedCode;
  node.zeroCode = 0;
  node.nodeKind = nodeKindOf(object["nodeClass"].asString(), exInfo);
  node.posX = object["posX"].asInt();
  node.posY = object["posY"].asInt();
  node.topoId = object["topoId"].asInt();
  node.remark = ToNorthCharset(object["remark"].asString().c_str());
}

}  // namespace

// The submap is not looked at: the answer is always the physical root's, meant so.
std::int64_t EMFTopoI::getAllNodes(const std::string&, std::list<Node>& out) {
  const emf::WatchedCall call("EMFTopoI::getAllNodes");
  Json::Value classes(Json::arrayValue);
  classes.append("ne");
  classes.append("container");
  for (const Json::Value& object : topologyView(filterOf("nodeClass", "in", std::move(classes)))) {
    if (object["parentId"].asString() != kPhysicalRoot) continue;
    Node node;
    fillNode(object, bareIconName(object["iconFile"].asString()), node);
    out.push_back(std::move(node));
  }
  return 0;
}

std::int64_t EMFTopoI::getNode(const SimNode& key, Node& out) {
  const emf::WatchedCall call("EMFTopoI::getNode");
  const std::string nativeId = (key.nodeId == "1" ? "OS=" : "NE=") + key.nodeId;
  const std::vector<Json::Value> objects = topologyView(filterOf("nativeId", "equal", nativeId));
  // The icon's whole path here, unlike getAllNodes: meant so.
  if (!objects.empty()) fillNode(objects[0], objects[0]["iconFile"].asString(), out);
  return 0;
}
