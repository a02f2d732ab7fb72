// What the subnet links read of the southbound interface's records.
//
// Thread-safety: thread-compatible values.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace emf {

struct SouthSubnet {
  std::string id;        // the subnet's key, as it stands
  std::string label;     // display name
  std::string parentId;  // key of the parent; a root names itself
};

struct SouthDevice {
  int deviceId = 0;
  std::string nativeId;                                        // "NE=" and a number
  std::string submapId;                                        // key of the containing subnet
  std::vector<std::pair<std::string, std::string>> asnKeyVal;  // "Origin" is read of it
};

}  // namespace emf
