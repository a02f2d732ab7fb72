#include "containedresources.h"

#include <json/value.h>

#include <algorithm>
#include <utility>

#include "emfresinterface.h"
#include "jsontext.h"
#include "orma/ident/resource_ids.h"
#include "orma/rest/rest_client.h"
#include "paginators.h"
#include "resourcenames.h"
#include "restquery.h"
#include "watchedcall.h"

namespace {

using Ids = std::vector<std::int64_t>;

constexpr char kPath[] = "/rest/resource/v3/instances/objects";
constexpr std::uint32_t kPageLimit = 1000;

// The query as a JSON string: the quotes around it belong to the value, meant so.
std::string queryTextOf(std::int64_t elementId) {
  const Json::Value query("g.V('" + MakeNeFdn(elementId) +
                          "').hasLabel('FixedNetworkElement').out('Has')");
  std::string quoted = emf::styledText(query);
  quoted.pop_back();  // the line end
  return quoted;
}

Nimbola::QueryIdPaginator pagesOf(std::int64_t elementId) {
  Nimbola::RestReq request = NS_UTIL::MakeRestReq();
  request.url = kPath;
  request.method = Nimbola::kMethodBody;
  request.body = Json::Value(Json::objectValue);  // as it is, without Json2PostData
  request.body["query-text"] = queryTextOf(elementId);
  request.mode = Nimbola::kInstanceMode;
  Nimbola::QueryIdPaginator pages(request);
  pages.listKey = "objList";
  pages.limit = kPageLimit;
  return pages;
}

std::string fdnOf(const Json::Value& object) {
  const Json::Value& nativeId = object["nativeId"];
  return (nativeId.isNull() ? object["slotNativeId"] : nativeId).asString();
}

bool startsWith(const Ids& path, const Ids& start) {
  return start.size() <= path.size() && std::equal(start.begin(), start.end(), path.begin());
}

// Which resources a query wants.
struct Wanted {
  const Ids& ids;
  bool byType;
  std::int64_t mainType;
  std::int64_t subType;
};

void appendIfWanted(const Wanted& wanted, const Json::Value& object, std::list<Resource>& out) {
  const std::string fdn = fdnOf(object);
  const Nimbola::MainType mainType = Nimbola::GetMainTypeFromFDN(fdn);
  // Read of every object, also of one that is not wanted: meant so.
  const std::int64_t subType = Nimbola::GetResSubTypeFromObj(object, mainType);
  if (mainType != wanted.mainType) return;
  if (wanted.byType && subType != wanted.subType) return;
  const std::string name = object["name"].asString();
  Resource resource;
  resource.resIDs = resid_compat::ExtractResIdsFromFDN(fdn);
  // By type, resources of the whole element are wanted, meant so.
  if (!wanted.byType && !startsWith(resource.resIDs, wanted.ids)) return;
  resource.iid = NS_UTIL::compat::ResID2IID(resid_compat::ResDN2ResID(fdn));
  resource.name = ToNorthCharset(name.c_str());
  resource.type.resMainTypeID = mainType;
  resource.type.resSubTypeID = subType;
  out.push_back(std::move(resource));
}

}  // namespace

std::int64_t QueryContainedResources(const Ids& ids, std::list<Resource>& out, bool byType,
                                     std::int64_t mainType, std::int64_t subType) {
  if (ids.empty()) return 1;
  const Wanted wanted{ids, byType, mainType, subType};
  Nimbola::QueryIdPaginator pages = pagesOf(ids.front());
  while (pages.hasMore) {
    Json::Value page;
    if (!pages.NextPage(page)) return -1;
    for (const Json::Value& object : page) appendIfWanted(wanted, object, out);
  }
  return 0;
}

std::int64_t EMFResMgrI::getContainedResourceByMainType(const Ids& ids, std::int64_t mainType,
                                                        std::list<Resource>& out) {
  emf::WatchedCall call("EMFResMgrI::getContainedResourceByMainType");
  return call.result(QueryContainedResources(ids, out, false, mainType, 0));
}

std::int64_t EMFResMgrI::getContainedResourceByType(const Ids& ids, ResTypeID type,
                                                    std::list<Resource>& out) {
  emf::WatchedCall call("EMFResMgrI::getContainedResourceByType");
  return call.result(
      QueryContainedResources(ids, out, true, type.resMainTypeID, type.resSubTypeID));
}
