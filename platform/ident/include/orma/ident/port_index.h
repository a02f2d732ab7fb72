// The coordinates of a port.
//
// Thread-safety: thread-compatible value.
#pragma once

#include <cstdint>
#include <string>

#include "orma/bundle/export.h"

namespace NS_DOMAIN {

struct PortIndex {
  std::int32_t rackID = 0;  // filled and read by the conversions only
  std::int32_t chassisID = -1;
  std::int32_t neID = -1;  // -1: no port
  std::int32_t shelfID = -1;
  std::int32_t slotID = -1;
  std::int32_t subSlotID = -1;
  std::int32_t portID = -1;
  std::int32_t domainType = 0;
  std::int32_t type = 0;
  std::string portName;
  std::uint8_t logicalFlag = 0;  // filled and read by the conversions only
  std::uint8_t reservedFlag = 0;
  std::int32_t layerRate = 0;
  std::int32_t cachedStatus = -1;
};

}  // namespace NS_DOMAIN

namespace NS_UTIL {

class ORMA_API ResIDUtil {
 public:
  // The resource id of a port, under the key "LP" when `logical`, else "PP"; see docs/ident.md.
  static void PortIndex2ResID(const NS_DOMAIN::PortIndex& port, std::string& resourceId,
                              bool logical);
  // Fills the coordinates from a resource id; what the id does not name stays as it is.
  static void ResID2PortIndex(const std::string& resourceId, NS_DOMAIN::PortIndex& port);
};

}  // namespace NS_UTIL
