// A made-up carrier network of any size, the same for the same seed on every machine.
//
//   generateInventory(database, {200, 7});
//
// Regions, countries, cities, districts and sites make the subnet tree; every site holds network
// elements, joined by links into one connected graph, and the first elements are equipped. Texts
// are in several scripts.
//
// Thread-safety: thread-compatible. Failure: SimError.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "equip.h"
#include "sqlite.h"

namespace ormasim {

constexpr std::uint64_t kMaxElements = 10'000'000;

struct GenerateOptions {
  std::uint64_t elements = 0;
  std::uint64_t seed = 1;
  std::uint64_t equipped = kDefaultEquipped;           // the first so many get shelves
  std::optional<std::uint64_t> alarms = std::nullopt;  // none: as many as are usual
  std::uint64_t definitions = 0;                       // at least so many kinds of alarms
};

// Fills an inventory that has its tables and no rows; the caller holds the transaction.
void generateInventory(Database& database, const GenerateOptions& options);

// Makes the file whole or not at all. An existing one is replaced only with `replace`.
void generateFile(const std::string& file, const GenerateOptions& options, bool replace);

}  // namespace ormasim
