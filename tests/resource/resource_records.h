// Whole records of the resource queries, compared and printed.
#pragma once

#include <ostream>
#include <string>
#include <tuple>
#include <vector>

#include "emfresrecords.h"

inline auto fieldsOf(const ResTypeID& type) {
  return std::tie(type.resMainTypeID, type.resSubTypeID);
}

inline auto fieldsOf(const ResourceDn& record) {
  return std::tie(record.resDN, record.resID, record.label, record.type);
}

inline auto fieldsOf(const Resource& record) {
  return std::tie(record.resIDs, record.iid, record.name, record.type);
}

inline auto fieldsOf(const LocationInfo_& info) {
  return std::tie(info.spareNumber, info.country, info.province, info.city, info.address);
}

inline auto fieldsOf(const MaintenanceInfo& info) {
  return std::tie(info.iID, info.name, info.dept, info.phoneNo, info.email, info.spareText);
}

inline auto fieldsOf(const ResourceAttribute& attribute) {
  return std::tie(attribute.spareNumber, attribute.id, attribute.value);
}

inline auto fieldsOf(const NbiResMainType& type) { return std::tie(type.id, type.name); }

inline std::ostream& operator<<(std::ostream& out, const std::vector<std::int64_t>& ids) {
  for (const std::int64_t id : ids) out << '/' << id;
  return out;
}

#include "record_fields.h"
