// The northbound words of alarm codes. The words are fixed, whatever the language of the process.
//
// Thread-safety: immutable.
#pragma once

#include <cstdint>

namespace emf {

// "unknown" for a code without a word.
const char* alarmClassText(std::int32_t code);
const char* alarmFunctionText(std::int32_t code);

// The severity as the northbound interface numbers it: 1 to 4 stay, any other is 0.
std::int32_t northSeverity(std::int32_t code);

}  // namespace emf
