#include "devicelinks.h"

namespace emf {

void addDeviceLinks(const DeviceList& devices,
                    const std::map<std::string, std::string>& subnetLinks,
                    std::map<unsigned long, std::string>& deviceLinks, LinkTraces& traces) {
  for (std::size_t index = 0; index < devices.size(); ++index) {
    const std::string nativeId = devices.nativeId(index);
    if (!isRealElement(nativeId)) {
      traces.notRealElement(nativeId);
      continue;
    }
    if (!devices.origin(index, traces)) {
      traces.notOriginElement(nativeId);
      continue;
    }
    const std::string parentKey = devices.parentKey(index);
    const auto parent = subnetLinks.find(parentKey);
    if (parent == subnetLinks.end()) {
      traces.missingParent(nativeId, devices.number(index), parentKey);
      continue;
    }
    deviceLinks[devices.number(index)] = parent->second;
  }
}

}  // namespace emf
