// Every network element.
#include <json/value.h>

#include "emfglobal.h"
#include "emfresinterface.h"
#include "orma/ident/resource_ids.h"
#include "orma/rest/rest_client.h"
#include "paginators.h"
#include "resourcenames.h"
#include "restquery.h"
#include "watchedcall.h"

namespace {

constexpr char kSourceName[] = "emfresinterface";
constexpr char kPath[] = "/rest/resource/v3/instances/objects/FixedNetworkElement";
constexpr std::uint32_t kPageLimit = 1000;
constexpr std::int64_t kReadFailed = 0x411800BA;
constexpr Nimbola::MainType kElementType = Nimbola::MAIN_TYPE_NETWORK_ELEMENT;

Nimbola::MarkerPaginator elementPages() {
  Nimbola::ResourceV3InstancesObjectsQuery query;
  query.contentSelector = {"name", "nativeId", Nimbola::GetResSubTypeFieldName(kElementType)};
  Nimbola::MarkerPaginator pages(query.ToRestReq(kPath));
  pages.listKey = "objList";
  pages.limit = kPageLimit;
  return pages;
}

Resource elementOf(const Json::Value& object) {
  const std::string nativeId = object["nativeId"].asString();
  const char* name = object["name"].asCString();
  Resource element;
  const std::int64_t id = resid_compat::ResDN2ResID(nativeId);
  element.resIDs.push_back(id);
  element.iid = NS_UTIL::compat::ResID2IID(id);
  element.name = ToNorthCharset(name);
  element.type.resMainTypeID = kElementType;
  element.type.resSubTypeID = Nimbola::GetResSubTypeFromObj(object, kElementType);
  return element;
}

// The management system itself. Ids and name are fixed, the name in no character set but ASCII.
Resource managementSystem() {
  Resource system;
  system.resIDs.push_back(1);
  system.iid = 2;
  system.name = "OSS";
  system.type.resMainTypeID = kElementType;
  return system;
}

}  // namespace

std::int64_t EMFResMgrI::getAllManagedElements(std::list<Resource>& out) {
  emf::WatchedCall call("EMFResMgrI::getAllManagedElements");
  EMF_TRACE(kSourceName, TaTrace("EMFResMgrI::getAllManagedElements enter"));
  Nimbola::MarkerPaginator pages = elementPages();
  while (pages.hasMore) {
    Json::Value page;
    if (!pages.NextPage(page)) {
      EMF_TRACE(kSourceName, TaTrace(" EMFResMgrI::getAllManagedElements failed"));
      EMF_TRACE(kSourceName, TaDebugWithPara(3, "EMFResMgrI::getAllManagedElements  failed!"));
      return call.result(kReadFailed);
    }
    for (Json::Value& object : page) {
      out.push_back(elementOf(object));
      Json::Value().swap(object);  // freed while the processor's caches still hold it
    }
  }
  out.push_front(managementSystem());
  return 0;
}
