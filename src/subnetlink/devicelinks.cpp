#include "devicelinks.h"

#include <string_view>
#include <utility>

#include "textindex.h"

namespace emf {
namespace {

using DeviceLinks = std::map<unsigned long, std::string>;
using LinkIndex = TextIndex<std::string_view>;

LinkIndex indexOf(const std::map<std::string, std::string>& links) {
  LinkIndex index(links.size());
  for (const auto& entry : links) index.insert(entry.first, entry.second);
  return index;
}

// Fills a map that it has emptied, from the entries that were in it: to free them all and allocate
// them anew would cost as much as the rest of a refresh.
class LinkWriter {
 public:
  explicit LinkWriter(DeviceLinks& links) : links_(links), last_(links.end()) { old_.swap(links); }

  void write(unsigned long number, std::string_view link) {
    // Devices mostly come in the order of their numbers.
    if (old_.empty()) {
      last_ = links_.emplace_hint(last_, number, std::string());
    } else {
      DeviceLinks::node_type entry = old_.extract(old_.begin());
      entry.key() = number;
      last_ = links_.insert(last_, std::move(entry));
    }
    last_->second = link;
  }

 private:
  DeviceLinks& links_;
  DeviceLinks old_;
  DeviceLinks::iterator last_;
};

}  // namespace

void rebuildDeviceLinks(const DeviceList& devices,
                        const std::map<std::string, std::string>& subnetLinks,
                        std::map<unsigned long, std::string>& deviceLinks, LinkTraces& traces) {
  const LinkIndex links = indexOf(subnetLinks);
  LinkWriter writer(deviceLinks);
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
    const std::string_view* const link = links.find(parentKey);
    if (link == nullptr) {
      traces.missingParent(nativeId, devices.number(index, nativeId), parentKey);
      continue;
    }
    writer.write(devices.number(index, nativeId), *link);
  }
}

}  // namespace emf
