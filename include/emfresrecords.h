// The records of EMFResMgrI: plain values, every field public, the copy field by field. Order and
// widths of the fields are part of the binary interface.
//
//   std::list<Resource> elements;
//   EMFResMgrI::getAllManagedElements(elements);
//   for (const Resource& element : elements) std::cout << element.iid << ' ' << element.name;
//
// Texts are bytes in the agent's character set unless marked otherwise. Names in quotes are the
// members of the REST answer that a field comes from. Absent texts are empty, absent numbers 0.
// Nothing fails.
//
// Thread-safety: thread-compatible.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

// The type of a resource. Main types: 1 network element, 3 frame, 4 slot, 5 slot of a daughter
// card, 6 port, 20 card, 21 daughter card, 0 none of these. Sub types are the platform's.
struct ResTypeID {
  std::int64_t resMainTypeID = 0;
  std::int64_t resSubTypeID = 0;
};

// A resource by its distinguished name.
struct ResourceDn {
  std::string resDN;       // as the service names it, not converted
  std::int64_t resID = 0;  // never written
  std::string label;       // "name"
  ResTypeID type;          // main type by the kind of read; sub type from the answer
};

// A resource by its ids.
struct Resource {
  std::vector<std::int64_t> resIDs;  // resource ids along its path, outermost first
  std::int64_t iid = 0;              // the compatible id of the last of them
  std::string name;                  // "name"; "OSS" of the management system
  ResTypeID type;                    // main type by its FDN's last key; sub type 0 if no number
};

// A resource of the access network by its location; only `label` is written here.
struct ResourceEightLoc {
  std::int32_t levels[8] = {};     // the caller's own
  std::string fdn;                 // from the caller, UTF-8: what the label is asked for
  std::int64_t spareNumber = 0;    // the caller's own
  std::string label;               // "name", or made of the FDN, such as "Frame:1/Slot:2"
  std::int64_t resMainTypeID = 0;  // from the caller; logged where the kind has no label
  std::int64_t resSubTypeID = 0;   // the caller's own
};

// Where a resource stands.
struct LocationInfo_ {
  std::int64_t spareNumber = 0;  // never written
  std::string country;           // "country"
  std::string province;          // "province"
  std::string city;              // "city"
  std::string address;           // "address"
};

// Who keeps a resource.
struct MaintenanceInfo {
  std::int64_t iID = 0;   // "iID", a 32-bit number; 0, too, where it is no number
  std::string name;       // "name"
  std::string dept;       // "dept"
  std::string phoneNo;    // "phoneNo"
  std::string email;      // "email"
  std::string spareText;  // never written
};

// One stored attribute of a resource.
struct ResourceAttribute {
  std::int64_t spareNumber = 0;  // never written
  std::int64_t id = 0;           // the attribute's number; never 30 nor 60 to 63
  std::string value;             // as stored, converted
};

// One main resource type of the platform.
struct NbiResMainType {
  std::int32_t id = 0;  // "id"
  std::string name;     // "name"
};
