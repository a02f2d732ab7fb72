// Ports of links, each at the next free place of its device.
//
//   PortMaker ports(writer);
//   row.portA = ports.add(deviceA, 0x10002, 1, 1);
//
// Thread-safety: thread-compatible. Failure: SimError.
#pragma once

#include <cstdint>
#include <vector>

#include "inventory_writer.h"

namespace ormasim {

class PortMaker {
 public:
  explicit PortMaker(InventoryWriter& writer) : writer_(writer) {}

  // The id of the new port.
  std::int64_t add(std::int64_t deviceId, std::int64_t type, std::int64_t stateA,
                   std::int64_t stateB);

 private:
  InventoryWriter& writer_;
  std::int64_t lastPortId_ = 0;
  std::vector<std::int64_t> portsOf_;  // by device id
};

}  // namespace ormasim
