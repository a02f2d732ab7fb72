#include <json/value.h>

#include <string>
#include <utility>

#include "emfglobal.h"
#include "emftopointerface.h"
#include "orma/rest/rest_client.h"
#include "paginators.h"
#include "resourcenames.h"
#include "restquery.h"
#include "submapbufmgr.h"
#include "topologyjson.h"
#include "watchedcall.h"

namespace {

constexpr char kSourceName[] = "emftopointerface";
constexpr char kRootKey[] = "ORMAP_PHY_SUBMAP";
constexpr char kRootObjectId[] = "102";  // the root, as its children's "parentId" names it
constexpr std::int32_t kRootTopoId = 101;
constexpr std::int64_t kTopologyFailed = 0x411800D4;

Nimbola::SimpleExp equal(const char* name, Json::Value value) {
  return {name, std::move(value), Nimbola::OPERATOR_EQUAL, true};
}

Nimbola::RestReq requestFor(Nimbola::SimpleConditions conditions) {
  Nimbola::TsNodesQuery query;
  query.conditions = std::move(conditions);
  return query.ToRestReq();
}

Nimbola::MarkerPaginator pagesOf(Nimbola::SimpleConditions conditions) {
  Nimbola::MarkerPaginator pages(requestFor(std::move(conditions)));
  pages.listKey = "dataList";
  pages.limit = 200;
  return pages;
}

// Turns a submap key into the object id that the service knows. Any first character is taken
// away, meant so; an empty key throws std::out_of_range.
void GetOBJID(const std::string& subMapId, std::string& objId) {
  if (subMapId != "/") {
    objId = subMapId.substr(1);
    return;
  }
  Json::Value response;
  if (!Nimbola::SendRestReq(requestFor({equal("nodeClass", "subnet"), equal("nativeId", "/")}),
                            response)) {
    EMF_LOG(GetDomainLog(), kSourceName, LogFormat, 1,
            "[NBIHTTPProxy::GetOBJID]:call rest interface failed!");
  }
  if (response.isObject() && response["dataList"].isArray()) {
    objId = getStringOrEmpty(response["dataList"][0], "objId");
  }
}

std::int32_t mapTypeOf(const Json::Value& object) {
  const std::int32_t typeId = emf::leadingNumber(getStringOrEmpty(object, "typeId"));
  return typeId == 200 ? 1 : typeId;
}

std::string parentKeyOf(const std::string& parentId) {
  return parentId == kRootObjectId ? kRootKey : "S" + parentId;
}

void fillTexts(const Json::Value& object, SubMap& subMap) {
  subMap.label = ToNorthCharset(getStringOrEmpty(object, "label").c_str());
  subMap.iconName = ToNorthCharset(getStringOrEmpty(object, "iconFile").c_str());
}

void fillNumbers(const Json::Value& object, SubMap& subMap) {
  subMap.zeroField1 = 0;
  subMap.zeroField2 = 0;
  subMap.topoClassId = emf::leadingNumber(getStringOrEmpty(object, "topoClassId"));
  const std::string procId = getProcIdText(getStringOrEmpty(object, "exInfo"));
  if (!procId.empty()) subMap.procId = emf::leadingNumber(procId);
  subMap.posX = emf::leadingNumber(getStringOrEmpty(object, "posX"));
  subMap.posY = emf::leadingNumber(getStringOrEmpty(object, "posY"));
}

void fillCommon(const Json::Value& object, SubMap& subMap) {
  fillTexts(object, subMap);
  fillNumbers(object, subMap);
}

std::int32_t topoIdOf(const Json::Value& object) {
  return emf::leadingNumber(getStringOrEmpty(object, "topoId"));
}

SubMap rootOf(const Json::Value& object) {
  SubMap root;
  root.parentSubMapId = kRootKey;
  root.subMapId = kRootKey;
  fillCommon(object, root);
  root.mapType = topoIdOf(object);
  return root;
}

// Appends the object's record, unless it is the root, which the service lists as its own child.
void appendChild(const Json::Value& object, std::list<SubMap>& out) {
  std::string parentId;
  std::string objId;
  const bool hasParent = getStringMember(object, "parentId", parentId);
  const bool hasId = getStringMember(object, "objId", objId);
  if (hasParent && hasId && parentId == objId) return;
  SubMap child;
  child.parentSubMapId = parentKeyOf(parentId);
  child.subMapId = "S" + ToNorthCharset(objId.c_str());
  child.mapType = mapTypeOf(object);
  fillCommon(object, child);
  out.push_back(std::move(child));
}

void fillSubMap(const Json::Value& object, SubMap& out) {
  std::string parentId;
  std::string objId;
  const bool hasParent = getStringMember(object, "parentId", parentId);
  const bool hasId = getStringMember(object, "objId", objId);
  out.parentSubMapId = parentKeyOf(parentId);
  fillTexts(object, out);
  // The topology id counts, and is read, only where the submap is its own parent.
  if (hasParent && hasId && parentId == objId && topoIdOf(object) == kRootTopoId) {
    out.subMapId = kRootKey;
    out.mapType = kRootTopoId;
  } else {
    out.subMapId = "S" + ToNorthCharset(objId.c_str());
    out.mapType = mapTypeOf(object);
  }
  fillNumbers(object, out);
}

}  // namespace

// A failed read is -1 here and 0x411800D4 in the two operations below; a page that is no array is
// 0 here and -1 there. Meant so.
std::int64_t EMFTopoI::getAllRootSubMaps(std::list<SubMap>& out) {
  emf::WatchedCall call("EMFTopoI::getAllRootSubMaps");
  Nimbola::MarkerPaginator pages = pagesOf({equal("topoId", kRootTopoId)});
  while (pages.hasMore) {
    Json::Value page;
    if (!pages.NextPage(page)) {
      EMF_TRACE(kSourceName,
                TaDebugWithPara(3, "[EMFTopoI::getAllRootSubMaps] call rest interface failed!"));
      return call.result(-1);
    }
    if (!page.isArray()) return 0;
    for (const Json::Value& object : page) {
      if (getStringOrEmpty(object, "objId") != getStringOrEmpty(object, "parentId")) continue;
      out.push_back(rootOf(object));
      return 0;
    }
  }
  EMF_TRACE(kSourceName,
            TaDebugWithPara(3, "[EMFTopoI::getAllRootSubMaps] There isn't RootSubmaps"));
  return 0;
}

std::int64_t EMFTopoI::getAllSubMaps(const std::string& subMapId, std::list<SubMap>& out) {
  emf::WatchedCall call("EMFTopoI::getAllSubMaps");
  std::string objId;
  GetOBJID(subMapId, objId);
  Nimbola::MarkerPaginator pages =
      pagesOf({equal("nodeClass", "subnet"), equal("parentId", objId)});
  while (pages.hasMore) {
    Json::Value page;
    if (!pages.NextPage(page)) {
      EMF_LOG(GetDomainLog(), kSourceName, LogFormat, 1,
              "[NBIHTTPProxy::getAllSubMaps]:call rest interface failed!");
      return call.result(kTopologyFailed);
    }
    if (!page.isArray()) return call.result(-1);
    for (const Json::Value& object : page) appendChild(object, out);
  }
  return 0;
}

std::int64_t EMFTopoI::getSubMap(const std::string& subMapId, SubMap& out) {
  emf::WatchedCall call("EMFTopoI::getSubMap");
  std::string objId;
  GetOBJID(subMapId, objId);
  Json::Value response;
  if (!Nimbola::SendRestReq(requestFor({equal("nodeClass", "subnet"), equal("objId", objId)}),
                            response)) {
    EMF_LOG(GetDomainLog(), kSourceName, LogFormat, 1,
            "[NBIHTTPProxy::getSubMap]:call rest interface failed!");
    return call.result(kTopologyFailed);
  }
  if (!response.isObject() || !response["dataList"].isArray()) return call.result(-1);
  // An empty array is not guarded against: its element 0 reads as an empty object. Meant so.
  fillSubMap(response["dataList"][0], out);
  return 0;
}

void EMFTopoI::getSubmapName(std::string& out, const unsigned long& deviceId) {
  const emf::WatchedCall call("EMFTopoI::getSubmapName");
  if (SubmapBufMgr* buffers = SubmapBufMgr::Instance()) {
    buffers->GetSubmapName(out, deviceId);
  } else {
    out.clear();
  }
}
