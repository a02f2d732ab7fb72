// Broken-down times as texts.
//
// Thread-safety: immutable. Nothing fails.
#pragma once

#include <ctime>

#include "answer.h"

namespace ormaagent {

// "2026-11-21T08:30:00Z", or no value when the members are no date and time of the years 0 to 9999.
Value utcTime(const std::tm& time);

}  // namespace ormaagent
