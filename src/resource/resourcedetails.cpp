// Where a resource stands, who keeps it, and its stored attributes.
#include <json/value.h>

#include <cstdlib>
#include <string>
#include <utility>

#include "emfglobal.h"
#include "emfresinterface.h"
#include "jsontext.h"
#include "orma/dao/emf_comm_db_engine.h"
#include "orma/ident/resource_ids.h"
#include "orma/rest/nbi_http_proxy.h"
#include "resourcenames.h"
#include "watchedcall.h"

namespace {

constexpr char kSourceName[] = "emfresinterface";
constexpr std::int64_t kFailure = -1;
constexpr int kWithAttributes = 1;

bool hasMember(const Json::Value& object, const char* key) {
  return object.isObject() && object.isMember(key);
}

// Asks for the place of a resource, or for its place and its keepers; false, and logged, when there
// is no answer.
bool readDetails(std::int64_t iid, bool withMaintenance, Json::Value& answer) {
  Json::Value document(Json::objectValue);
  document["nativeIds"].append(MakeNeFdn(NS_UTIL::compat::IID2ResID(iid)));
  document["needMaintenanceInfo"] = withMaintenance;
  if (NS_UTIL::NBIHTTPProxy::QueryLocalInfoAndMaintenInfo(answer, emf::styledText(document))) {
    return true;
  }
  EMF_LOG(GetDomainLog(), kSourceName, LogFormat, 1,
          "[NBIHTTPProxy::QueryLocalInfoAndMaintenInfo]:call rest interface failed!");
  return false;
}

// The first element of the answer's list of that name, null in an empty list; nothing when there is
// no list.
const Json::Value* firstOf(const Json::Value& answer, const char* listKey) {
  if (!hasMember(answer, listKey) || !answer[listKey].isArray()) return nullptr;
  return &answer[listKey][0];
}

// The member in the northbound character set; empty if the object lacks it.
std::string northText(const Json::Value& object, const char* key) {
  const std::string text = hasMember(object, key) ? object[key].asString() : std::string();
  return text.empty() ? std::string() : ToNorthCharset(text.c_str());
}

// A decimal number at the start of the text, cut to 32 bits; 0 when there is none.
std::int32_t numberOf(const std::string& text) {
  return static_cast<std::int32_t>(std::strtol(text.c_str(), nullptr, 10));
}

// Attributes that the northbound side does not see.
bool isHidden(int attribute) { return attribute == 30 || (attribute >= 60 && attribute <= 63); }

}  // namespace

std::int64_t EMFResMgrI::getResourceLocation(std::int64_t iid, LocationInfo_& info) {
  emf::WatchedCall call("EMFResMgrI::getResourceLocation");
  Json::Value answer;
  if (!readDetails(iid, false, answer)) return call.result(kFailure);
  const Json::Value* location = firstOf(answer, "locationInfo");
  if (location == nullptr || !hasMember(*location, "devMTInfo")) return call.result(kFailure);
  const Json::Value& place = (*location)["devMTInfo"];
  LocationInfo_ found = info;  // whole or not at all: a member of a wrong type throws
  found.country = northText(place, "country");
  found.province = northText(place, "province");
  found.city = northText(place, "city");
  found.address = northText(place, "address");
  info = std::move(found);
  return 0;
}

// Of several keepers only the first is taken, and of none one without a name: meant so.
std::int64_t EMFResMgrI::getResourceMaintenances(std::int64_t iid,
                                                 std::list<MaintenanceInfo>& out) {
  emf::WatchedCall call("EMFResMgrI::getResourceMaintenances");
  Json::Value answer;
  if (!readDetails(iid, true, answer)) return call.result(kFailure);
  const Json::Value* keeper = firstOf(answer, "maintenanceInfo");
  if (keeper == nullptr) return call.result(kFailure);
  MaintenanceInfo record;
  record.iID = numberOf(northText(*keeper, "iID"));
  record.name = northText(*keeper, "name");
  record.dept = northText(*keeper, "dept");
  record.phoneNo = northText(*keeper, "phoneNo");
  record.email = northText(*keeper, "email");
  out.push_back(std::move(record));
  return 0;
}

std::int64_t EMFResMgrI::getResourceAttributes(std::int64_t iid,
                                               std::list<ResourceAttribute>& out) {
  emf::WatchedCall call("EMFResMgrI::getResourceAttributes");
  const std::list<int> iids = {static_cast<int>(iid)};
  std::map<int, _SResProperty> resources;
  CEmfCommDBEngine& engine = *CEmfCommDBEngine::Instance(CEmfCommDBEngine::GetModuleName());
  if (engine.GetResByIID(iids, {}, resources, kWithAttributes) < 1 || resources.empty()) {
    return call.result(kFailure);
  }
  for (const auto& [number, value] : resources.begin()->second.attributes) {
    if (isHidden(number)) continue;
    ResourceAttribute attribute;
    attribute.id = number;
    attribute.value = ToNorthCharset(value.c_str());
    out.push_back(std::move(attribute));
  }
  return 0;
}
