// The refreshes of the subnet names, which the plug-in's task makes between long sleeps: here it is
// woken.
//
// Thread-safety: thread-safe, but one wakes at a time. Nothing fails.
#pragma once

#include <chrono>
#include <cstdint>

namespace soak {

// How many have ended in this process.
std::uint64_t refreshes();
// Waits for so many; whether they came in time.
bool awaitRefreshes(std::uint64_t count, std::chrono::seconds longest);
// Has the task refresh once more, and waits for the end of that.
bool refreshNow(std::chrono::seconds longest);
// How often the device cache was filled.
std::uint64_t deviceCacheFillings();

}  // namespace soak
