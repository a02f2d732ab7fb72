// Devices as the REST service lists them and as the plug-in hands them out.
#pragma once

#include <ostream>
#include <string>
#include <tuple>
#include <vector>

#include "emftoporecords.h"
#include "platform_test.h"

namespace emf::test {

inline Json::Value deviceObject(const std::string& nativeId, const std::string& name,
                                int typeId = 0x00020005, const std::string& ip = "10.0.0.1") {
  Json::Value object;
  object["nativeId"] = nativeId;
  object["typeId"] = typeId;
  object["ipAddress"] = ip;
  object["name"] = name;
  return object;
}

inline Device device(long id, const std::string& name, int mainType = 2, int subType = 5,
                     const std::string& ip = "10.0.0.1") {
  Device made;
  made.id = id;
  made.mainType = mainType;
  made.subType = subType;
  made.ipAddress = ip;
  made.name = name;
  return made;
}

}  // namespace emf::test

inline bool operator==(const Device& a, const Device& b) {
  return std::tie(a.id, a.mainType, a.subType, a.ipAddress, a.name) ==
         std::tie(b.id, b.mainType, b.subType, b.ipAddress, b.name);
}

inline std::ostream& operator<<(std::ostream& out, const Device& device) {
  return out << "device " << device.id << " (" << device.mainType << '/' << device.subType << ") "
             << device.ipAddress << " \"" << device.name << '"';
}
