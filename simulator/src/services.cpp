#include "services.h"

namespace ormasim {
namespace {

constexpr Service kServices[] = {
    {"/rest/resource/v2/dev-properties", "GET", answerDevProperties},
    {"/rest/topology/v3/tsnodes", "GET", answerTsNodes},
    {"/rest/topology/v3/subnet-view", "POST", answerSubnetView},
    {"/rest/resource/v2/port-properties", "POST", answerPortProperties},
    {"/rest/resource/v2/slot-properties", "POST", answerSlotProperties},
    {"/rest/resource/v2/card-properties", "POST", answerCardProperties},
    {"/rest/resource/v2/frame-properties", "POST", answerFrameProperties},
    {"/rest/resource/v2/ne-properties", "POST", answerElementProperties},
    {"/rest/resource/v2/location-maintenance", "POST", answerLocation},
    {"/rest/resource/v2/metadatas/main-resource-type", "POST", answerMainTypes},
    {"/rest/resource/v3/instances/objects", "POST", answerGraphQuery},
    {"/rest/resource/v3/instances/objects/FixedNetworkElement", "POST", answerElements},
    {"/rest/resource/v3/instances/objects/FixedNetworkElement", "GET", answerElementsByParameters},
    {"/rest/resource/v3/instances/objects/FixedNetworkFrame/actions/query", "POST", answerFrames},
    {"/rest/resource/v3/instances/objects/FixedNetworkCard/actions/query", "POST", answerCards},
    {"/rest/fault/v1/alarm-definitions", "POST", answerAlarmDefinitions},
    {"/rest/fault/v1/alarm-reasons", "POST", answerAlarmReasons},
    {"/rest/fault/v1/redefined-alarms", "POST", answerRedefinedAlarms},
};

}  // namespace

std::vector<const Service*> servicesAt(const std::string& path) {
  std::vector<const Service*> found;
  for (const Service& service : kServices) {
    if (path == service.path) found.push_back(&service);
  }
  return found;
}

std::vector<std::string> servicePaths() {
  std::vector<std::string> paths;
  for (const Service& service : kServices) {
    if (paths.empty() || paths.back() != service.path) paths.emplace_back(service.path);
  }
  return paths;
}

}  // namespace ormasim
