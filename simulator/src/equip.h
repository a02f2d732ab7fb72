// Equips the first elements of an inventory whose elements and links are there already: a shelf
// for each, attributes, an address and keepers. The same elements, links and seed give the same
// equipment on every machine.
//
//   equipInventory(database, writer, {200, 7});
//
// Thread-safety: thread-compatible. Failure: SimError. The caller holds the transaction.
#pragma once

#include <cstdint>

#include "inventory_writer.h"
#include "sqlite.h"

namespace ormasim {

// A shelf is a few hundred rows, so that a large network has only some by default.
constexpr std::uint64_t kDefaultEquipped = 200;

struct EquipOptions {
  std::uint64_t elements = kDefaultEquipped;  // the first so many, by device id
  std::uint64_t seed = 1;
};

// Adds the main types and keepers, too.
void equipInventory(Database& database, InventoryWriter& writer, const EquipOptions& options);

}  // namespace ormasim
