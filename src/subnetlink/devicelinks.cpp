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

// Replaces the entries of a map in place: from one refresh to the next most devices stay what they
// were, and then nothing is freed, allocated or written. Entries from `old_` on are still those of
// the refresh before; what is left of them in the end goes.
class LinkWriter {
 public:
  explicit LinkWriter(DeviceLinks& links) : links_(links), old_(links.begin()) {}
  LinkWriter(const LinkWriter&) = delete;
  LinkWriter& operator=(const LinkWriter&) = delete;
  ~LinkWriter() { links_.erase(old_, links_.end()); }

  void write(unsigned long number, std::string_view link) {
    // Devices mostly come in the order of their numbers.
    while (old_ != links_.end() && old_->first < number) old_ = links_.erase(old_);
    const bool kept = old_ != links_.end() && old_->first == number;
    const auto entry = kept ? old_++ : links_.try_emplace(old_, number);
    if (entry->second != link) entry->second = link;
  }

 private:
  DeviceLinks& links_;
  DeviceLinks::iterator old_;
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
