#include "alarmcodes.h"

#include <cstddef>

namespace emf {

namespace {

// Each table begins with code 1.
constexpr const char* kClasses[] = {
    "communicationsAlarm",   "environmentalAlarm",   "equipmentAlarm",
    "qualityofServiceAlarm", "processingErrorAlarm",
};

constexpr const char* kFunctions[] = {
    "power",    "environment", "signal",        "relay",   "hardware",
    "software", "run",         "communication", "service", "processerror",
};

// 5 and 6 are severities that the northbound interface does not have.
constexpr std::int32_t kSeverities[] = {1, 2, 3, 4, 0, 0};

template <typename Entry, std::size_t count>
Entry entryOf(const Entry (&table)[count], std::int32_t code, Entry other) {
  const std::uint32_t index = static_cast<std::uint32_t>(code) - 1U;  // 0 and below go past the end
  return index < count ? table[index] : other;
}

constexpr const char* kUnknown = "unknown";

}  // namespace

const char* alarmClassText(std::int32_t code) { return entryOf(kClasses, code, kUnknown); }

const char* alarmFunctionText(std::int32_t code) { return entryOf(kFunctions, code, kUnknown); }

std::int32_t northSeverity(std::int32_t code) { return entryOf(kSeverities, code, 0); }

}  // namespace emf
