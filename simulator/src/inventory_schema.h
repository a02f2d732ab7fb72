// The statements that make an empty inventory: docs/inventory.sql, taken in at build time.
#pragma once

namespace ormasim {

extern const char* const kInventorySchema;

// Objects of which others speak by number.
constexpr char kRootObjectId[] = "102";
constexpr int kRootTopoId = 101;

}  // namespace ormasim
