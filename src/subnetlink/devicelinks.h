// The links of a list of devices: each real origin element gets the link of the subnet it is in.
//
// Thread-safety: thread-compatible. What reading the list raises goes through; `deviceLinks` then
// holds the devices before.
#pragma once

#include <map>
#include <string>

#include "devicelist.h"
#include "linktraces.h"

namespace emf {

// Replaces `deviceLinks` by an entry for each device that passes, by device number; of two with one
// number the last counts. Each that does not pass is traced.
void rebuildDeviceLinks(const DeviceList& devices,
                        const std::map<std::string, std::string>& subnetLinks,
                        std::map<unsigned long, std::string>& deviceLinks, LinkTraces& traces);

}  // namespace emf
