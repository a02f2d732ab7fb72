// The property listing: the management system, every device, and behind each device its frames,
// in the order of device id and frame number, from any place on.
//
//   DeviceListing listing(database);
//   std::string json;
//   DevicePage page = listing.appendPage(DevicePosition{}, 1000, json);
//   // json: [{"nativeId":"OS=1",…},…]; go on from page.last while page.more
//
// Thread-safety: thread-compatible. Failure: SimError.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "sqlite.h"

namespace ormasim {

// A row of the listing: a device, or a frame of it. Device 1 is the management system; device 0
// is the place before the first row.
struct DevicePosition {
  std::int64_t device = 0;
  std::int64_t frame = -1;  // -1: the device itself
};

// The opaque text for a position, and back; nothing when it is none that was handed out.
std::string markerFor(const DevicePosition& position);
std::optional<DevicePosition> positionOf(const std::string& marker);

struct DevicePage {
  DevicePosition last;
  bool more = false;
};

class DeviceListing {
 public:
  explicit DeviceListing(Database& database);

  // Appends an array of at most `limit` rows behind `after`, read in one transaction.
  DevicePage appendPage(const DevicePosition& after, std::int64_t limit, std::string& out);

 private:
  Database& database_;
  Statement devices_;
  Statement frames_;
};

}  // namespace ormasim
