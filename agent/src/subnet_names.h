// The subnet names of devices, which the plug-in reads in the background once its service runs.
//
//   if (!subnetNamesKept()) tell(kSubnetNamesOff);
//   const auto names = awaitSubnetNames({12, 13}, Await::kAll, std::chrono::seconds(5));
//
// Thread-safety: thread-safe. Nothing fails: a device without a name has an empty one.
#pragma once

#include <chrono>
#include <string>
#include <vector>

namespace ormaagent {

// For people, when no names are kept.
extern const char kSubnetNamesOff[];

// Whether the configuration has the plug-in keep them.
bool subnetNamesKept();

enum class Await {
  kAll,  // until every device has a name
  kAny,  // until one has: the names of all come at once
};

// The name of each device, in their order. Blocks until what was waited for is there or the time is
// over; asks once, and does not wait, where no names are kept.
std::vector<std::string> awaitSubnetNames(const std::vector<unsigned long>& devices, Await what,
                                          std::chrono::seconds longest);

}  // namespace ormaagent
