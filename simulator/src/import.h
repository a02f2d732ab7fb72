// Networks from GraphML files, as one inventory.
//
//   importFiles({"a.graphml", "b.graphml"}, "net.db");
//
// A database that exists gets the new contents in one transaction, in place of the old; one that
// does not is made. Failure: SimError, and the database is what it was.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "equip.h"

namespace ormasim {

struct ImportSummary {
  std::size_t networks = 0;
  std::size_t elements = 0;
  std::size_t links = 0;
  bool replaced = false;  // an inventory was there before
};

// The first `equipped` elements get shelves.
ImportSummary importFiles(const std::vector<std::string>& files, const std::string& database,
                          std::uint64_t equipped = kDefaultEquipped);

}  // namespace ormasim
