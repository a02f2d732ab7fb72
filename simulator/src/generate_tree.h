// The subnets of a generated network, each made when its first element comes.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "generate_tables.h"
#include "inventory_writer.h"
#include "random.h"

namespace ormasim {

// A place for elements: one site, with the names that lead to it.
struct Site {
  std::string subnetId;
  const City* city = nullptr;
  std::string label;
  std::int64_t posX = 0;
  std::int64_t posY = 0;
};

// Thread-safety: thread-compatible. Failure: SimError.
class SubnetTree {
 public:
  // A small network has few cities, so that each holds more than a handful of elements.
  SubnetTree(InventoryWriter& writer, Random& random, std::uint64_t elements);

  // Opens the next site, with the subnets above it that are not there yet.
  Site openSite();

 private:
  struct Place {
    std::string subnetId;
    std::int64_t posX = 0;
    std::int64_t posY = 0;
  };

  const Place& place(const std::string& key, const std::string& label, const std::string& parentId,
                     int level, std::int64_t posX, std::int64_t posY);

  InventoryWriter& writer_;
  Random& random_;
  std::vector<const City*> cities_;
  std::map<std::string, Place> places_;
  std::uint64_t sitesOpened_ = 0;
};

}  // namespace ormasim
