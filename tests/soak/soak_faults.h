// The fault script of a soak: faults that lose answers or parts of them, and such as no reader can
// take for an answer. None that forges records: what came over the wire would be right to hand out.
//
// Thread-safety: thread-safe. Nothing fails.
#pragma once

#include <string>

#include "soak_options.h"

namespace soak {

std::string faultScript(const SoakOptions& options);

}  // namespace soak
