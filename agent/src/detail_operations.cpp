// Where a resource stands, who keeps it, its attributes, and the types of resources.
#include <list>
#include <map>
#include <string>

#include "emfresinterface.h"
#include "operations.h"

namespace ormaagent {

namespace {

struct PlaceOf {
  std::int64_t iid;
  LocationInfo_ info;
};

constexpr Column<PlaceOf> kPlace[] = {
    {"iid", [](const PlaceOf& row) -> Value { return row.iid; }},
    {"country", [](const PlaceOf& row) -> Value { return row.info.country; }},
    {"province", [](const PlaceOf& row) -> Value { return row.info.province; }},
    {"city", [](const PlaceOf& row) -> Value { return row.info.city; }},
    {"address", [](const PlaceOf& row) -> Value { return row.info.address; }},
};

constexpr Column<MaintenanceInfo> kMaintenance[] = {
    {"iID", fieldOf<&MaintenanceInfo::iID>},
    {"name", fieldOf<&MaintenanceInfo::name>},
    {"dept", fieldOf<&MaintenanceInfo::dept>},
    {"phoneNo", fieldOf<&MaintenanceInfo::phoneNo>},
    {"email", fieldOf<&MaintenanceInfo::email>},
    {"spareText", fieldOf<&MaintenanceInfo::spareText>},
};

constexpr Column<ResourceAttribute> kAttribute[] = {
    {"spareNumber", fieldOf<&ResourceAttribute::spareNumber>},
    {"id", fieldOf<&ResourceAttribute::id>},
    {"value", fieldOf<&ResourceAttribute::value>},
};

constexpr Column<NbiResMainType> kMainType[] = {
    {"id", fieldOf<&NbiResMainType::id>},
    {"name", fieldOf<&NbiResMainType::name>},
};

using AccessType = std::map<int, std::string>::value_type;

constexpr Column<AccessType> kAccessType[] = {
    {"type", [](const AccessType& row) -> Value { return std::int64_t{row.first}; }},
    {"text", [](const AccessType& row) -> Value { return row.second; }},
};

}  // namespace

Answer resLocation(const Arguments& arguments) {
  PlaceOf place{arguments.number<std::int64_t>(0), {}};
  const std::int64_t result = EMFResMgrI::getResourceLocation(place.iid, place.info);
  return answerOf(result, kPlace, result == 0 ? std::list<PlaceOf>{place} : std::list<PlaceOf>{});
}

Answer resMaintenance(const Arguments& arguments) {
  std::list<MaintenanceInfo> keepers;
  const std::int64_t result =
      EMFResMgrI::getResourceMaintenances(arguments.number<std::int64_t>(0), keepers);
  return answerOf(result, kMaintenance, keepers);
}

Answer resAttributes(const Arguments& arguments) {
  std::list<ResourceAttribute> attributes;
  const std::int64_t result =
      EMFResMgrI::getResourceAttributes(arguments.number<std::int64_t>(0), attributes);
  return answerOf(result, kAttribute, attributes);
}

Answer resMainTypes(const Arguments&) {
  std::list<NbiResMainType> types;
  const std::int64_t result = EMFResMgrI::getResMainType(types);
  return answerOf(result, kMainType, types);
}

Answer resAccessTypes(const Arguments&) {
  std::map<int, std::string> types;
  const std::int64_t result = EMFResMgrI::getAccessNETypeList(types);
  return answerOf(result, kAccessType, types);
}

}  // namespace ormaagent
