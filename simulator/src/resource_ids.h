// Resource ids as the platform makes them from names (docs/ident.md).
//
//   resourceIdOf("NE=2");        // 2
//   resourceIdOf("NE=2,FR=1");   // 5253907868763091724
//
// Thread-safety: thread-safe; no state. The names are the simulator's own, so none is malformed.
#pragma once

#include <cstdint>
#include <string_view>

namespace ormasim {

std::int64_t resourceIdOf(std::string_view nativeId);
// The lower 32 bits, as the signed number by which the platform asks for attributes.
std::int64_t shortIdOf(std::int64_t resourceId);

}  // namespace ormasim
