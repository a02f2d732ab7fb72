// Links and ports as the southbound interface tells them.
#pragma once

#include <string>

#include "orma/ident/port_index.h"
#include "platform_test.h"
#include "topology_records.h"

namespace emf::test {

constexpr std::int32_t kPhysicalType = 0x10002;
constexpr std::int32_t kLogicalType = 0x10001;

inline NS_DOMAIN::PortIndex portAt(int element, int shelf, int slot, int subSlot, int port,
                                   std::int32_t type = kPhysicalType,
                                   const std::string& name = "GE-1") {
  NS_DOMAIN::PortIndex index;
  index.neID = element;
  index.shelfID = shelf;
  index.slotID = slot;
  index.subSlotID = subSlot;
  index.portID = port;
  index.type = type;
  index.portName = name;
  return index;
}

inline std::string resourceId(const NS_DOMAIN::PortIndex& port, bool logical = false) {
  std::string id;
  NS_UTIL::ResIDUtil::PortIndex2ResID(port, id, logical);
  return id;
}

inline emf::doubles::TELinkInfo linkInfo(const std::string& id, const std::string& name,
                                         const NS_DOMAIN::PortIndex& source,
                                         const NS_DOMAIN::PortIndex& destination) {
  return {id, name, 6, resourceId(source), resourceId(destination)};
}

// A script of GetLinkInfo that gives these links, whatever is asked for.
inline emf::doubles::SouthboundDouble::LinkInfoScript gives(
    std::vector<emf::doubles::TELinkInfo> links) {
  return [links = std::move(links)](const emf::doubles::UniResIds&,
                                    std::vector<emf::doubles::TELinkInfo>& out) { out = links; };
}

}  // namespace emf::test
