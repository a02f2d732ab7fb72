// The records of EMFResMgrI: plain values, every field public, the copy field by field. Order and
// widths of the fields are part of the binary interface.
//
//   std::list<Resource> elements;
//   EMFResMgrI::getAllManagedElements(elements);
//   for (const Resource& element : elements) std::cout << element.iid << ' ' << element.name;
//
// Texts are bytes in the agent's character set unless marked otherwise. Absent texts are empty,
// absent numbers 0.
//
// Thread-safety: thread-compatible. Nothing fails.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

// The type of a resource. Main types: 1 network element, 3 frame, 4 slot, 5 slot of a daughter
// card, 6 port, 20 card, 21 daughter card. Sub types are the platform's.
struct ResTypeID {
  std::int64_t resMainTypeID = 0;
  std::int64_t resSubTypeID = 0;
};

// A resource by its distinguished name.
struct ResourceDn {
  std::string resDN;       // as the service names it, not converted
  std::int64_t resID = 0;  // never written
  std::string label;
  ResTypeID type;
};

// A resource by its ids.
struct Resource {
  std::vector<std::int64_t> resIDs;  // resource ids along its path, outermost first
  std::int64_t iid = 0;              // the compatible id
  std::string name;
  ResTypeID type;
};

// A resource of the access network by its location; only `label` is written here.
struct ResourceEightLoc {
  std::int32_t levels[8] = {};  // the caller's own
  std::string fdn;              // UTF-8: what the label is asked for
  std::int64_t spareNumber = 0;
  std::string label;
  std::int64_t resMainTypeID = 0;
  std::int64_t resSubTypeID = 0;
};

// Where a resource stands.
struct LocationInfo_ {
  std::int64_t spareNumber = 0;  // never written
  std::string country;
  std::string province;
  std::string city;
  std::string address;
};

// Who keeps a resource.
struct MaintenanceInfo {
  std::int64_t iID = 0;  // a 32-bit number
  std::string name;
  std::string dept;
  std::string phoneNo;
  std::string email;
  std::string spareText;  // never written
};

// One stored attribute of a resource.
struct ResourceAttribute {
  std::int64_t spareNumber = 0;  // never written
  std::int64_t id = 0;           // the attribute's number
  std::string value;
};

// One main resource type of the platform.
struct NbiResMainType {
  std::int32_t id = 0;
  std::string name;
};
