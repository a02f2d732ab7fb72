// The operations that read elements, their contents, places and types.
#include "emfresinterface.h"
#include "orma/ident/resource_ids.h"
#include "rest_operation_groups.h"

namespace emf::faults {
namespace {

std::string objList(const std::string& objects, const std::string& marker) {
  return R"({"objList":[)" + objects + R"(],"isTruncated":)" + (marker.empty() ? "false" : "true") +
         R"(,"marker":")" + marker + R"("})";
}

// The record of that resource; how names become ids is not what is tested here.
std::string resourceText(const std::string& fdn, const std::string& name, const std::string& type) {
  std::string path;
  for (const std::int64_t id : resid_compat::ExtractResIdsFromFDN(fdn)) {
    path += '/' + std::to_string(id);
  }
  const std::int64_t iid = NS_UTIL::compat::ResID2IID(resid_compat::ResDN2ResID(fdn));
  return path + '|' + std::to_string(iid) + '|' + name + '|' + type;
}

void addManagedElements(std::vector<RestOperation>& all) {
  const auto element = [](const std::string& id) {
    return R"({"name":"core-)" + id + R"(","nativeId":"NE=)" + id + R"(","neType":131077})";
  };
  RestOperation elements{
      "EMFResMgrI::getAllManagedElements",
      "objList",
      {"0", "1092092090", "1092092090", ""},
      {{objList(element("12"), "i12"), {resourceText("NE=12", "core-12", "1|131077")}},
       {objList(element("13"), ""), {resourceText("NE=13", "core-13", "1|131077")}}},
      [] { return appended(std::list<Resource>(1), EMFResMgrI::getAllManagedElements); }};
  for (Exchange& exchange : elements.exchanges) {
    exchange.failureLine = "EMFResMgrI::getAllManagedElements  failed!";
  }
  elements.before = {earlier<Resource>()};
  elements.front = {"/1|2|OSS|1|0"};
  elements.throws = {kLogicError};
  all.push_back(elements);
}

RestOperation contents(const std::string& name,
                       std::function<std::int64_t(std::list<Resource>&)> call) {
  const auto page = [](const std::string& number, const std::string& queryId) {
    return R"({"objList":[{"nativeId":"NE=12,FR=)" + number + R"(","name":"Frame )" + number +
           R"(","frameType":"5008"}],"queryId":")" + queryId + R"("})";
  };
  RestOperation operation{
      "EMFResMgrI::" + name,
      "objList",
      {"0", "-1", "-1", ""},
      {{page("0", "q1"), {resourceText("NE=12,FR=0", "Frame 0", "3|5008")}},
       {page("1", ""), {resourceText("NE=12,FR=1", "Frame 1", "3|5008")}}},
      [call = std::move(call)] { return appended(std::list<Resource>(1), call); }};
  operation.before = {earlier<Resource>()};
  operation.throws = {kLogicError};
  return operation;
}

void addContents(std::vector<RestOperation>& all) {
  all.push_back(contents("getContainedResourceByMainType", [](std::list<Resource>& out) {
    return EMFResMgrI::getContainedResourceByMainType({12}, 3, out);
  }));
  all.push_back(contents("getContainedResourceByType", [](std::list<Resource>& out) {
    return EMFResMgrI::getContainedResourceByType({12}, {3, 5008}, out);
  }));
}

constexpr char kDetailsFailed[] =
    "[NBIHTTPProxy::QueryLocalInfoAndMaintenInfo]:call rest interface failed!";

void addDetails(std::vector<RestOperation>& all) {
  RestOperation location{"EMFResMgrI::getResourceLocation",
                         "locationInfo",
                         {"0", "-1", "-1", "-1"},
                         {{R"({"locationInfo":[{"nativeId":"NE=12","devMTInfo":{"country":"c",)"
                           R"("province":"p","city":"t","address":"a"}}],"maintenanceInfo":[]})",
                           {"0|c|p|t|a"},
                           false,
                           {},
                           kDetailsFailed}},
                         [] {
                           return written(LocationInfo_{7, "old", "", "", ""},
                                          [](LocationInfo_& out) {
                                            out.spareNumber = 0;
                                            return EMFResMgrI::getResourceLocation(12, out);
                                          });
                         }};
  location.before = {"0|old|||"};
  location.replaces = true;
  location.throws = {kLogicError};
  all.push_back(location);
  RestOperation keepers{"EMFResMgrI::getResourceMaintenances",
                        "maintenanceInfo",
                        {"0", "-1", "-1", "-1"},
                        {{R"({"locationInfo":[],"maintenanceInfo":[{"iID":"4","name":"n",)"
                          R"("dept":"d","phoneNo":"1","email":"e"}]})",
                          {"4|n|d|1|e|"},
                          false,
                          {},
                          kDetailsFailed}},
                        [] {
                          return appended(std::list<MaintenanceInfo>(1),
                                          [](std::list<MaintenanceInfo>& out) {
                                            return EMFResMgrI::getResourceMaintenances(12, out);
                                          });
                        }};
  keepers.before = {earlier<MaintenanceInfo>()};
  keepers.throws = {kLogicError};
  all.push_back(keepers);
}

void addMainTypes(std::vector<RestOperation>& all) {
  RestOperation types{
      "EMFResMgrI::getResMainType",
      "mainResTypes",
      {"0", "-1", "-1", ""},
      {{R"({"mainResTypes":[{"id":1,"name":"Element"}],"isTruncated":true,"marker":"m1"})",
        {"1|Element"}},
       {R"({"mainResTypes":[{"id":3,"name":"Frame"}],"isTruncated":false,"marker":""})",
        {"3|Frame"}}},
      [] { return appended(std::list<NbiResMainType>(1), EMFResMgrI::getResMainType); }};
  types.before = {earlier<NbiResMainType>()};
  types.allOrNone = true;
  types.throws = {kLogicError};
  all.push_back(types);
}

}  // namespace

void addResourceOperations(std::vector<RestOperation>& all) {
  addManagedElements(all);
  addContents(all);
  addDetails(all);
  addMainTypes(all);
}

}  // namespace emf::faults
