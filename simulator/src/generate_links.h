// The links of a generated network: every element to the head of its site, every head to an
// earlier head, and some across, so that the graph is connected.
#pragma once

#include <cstdint>
#include <vector>

#include "inventory_writer.h"
#include "port_maker.h"
#include "random.h"

namespace ormasim {

// Thread-safety: thread-compatible. Failure: SimError.
class LinkMaker {
 public:
  LinkMaker(InventoryWriter& writer, Random& random)
      : writer_(writer), random_(random), ports_(writer) {}

  // Links a device, which comes in the order of ids, to those before it.
  void addDevice(std::int64_t id, bool siteHead);
  // Links between any two devices, one for every fifth.
  void addCrossLinks();

 private:
  void link(std::int64_t a, std::int64_t z);
  std::int64_t addPort(std::int64_t deviceId, std::int64_t type);

  InventoryWriter& writer_;
  Random& random_;
  PortMaker ports_;
  std::vector<std::int64_t> heads_;
  std::int64_t firstDevice_ = 0;
  std::uint32_t devices_ = 0;
  std::int64_t lastLinkId_ = 0;
};

}  // namespace ormasim
