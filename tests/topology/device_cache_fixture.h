// A device cache that no test has used before.
#pragma once

#include "device_objects.h"
#include "deviceinfo.h"

namespace emf::test {

constexpr char kSetEntering[] = "DeviceInfo:: setDeviceMap entering!";
constexpr char kSetOuting[] = "DeviceInfo:: setDeviceMap outing!";
constexpr char kByIdEntering[] = "DeviceInfo:: getDeviceByID entering!";
constexpr char kByIdOuting[] = "DeviceInfo:: getDeviceByID outing!";
constexpr char kByIdUpdating[] = "Updating the deviceMap ";
constexpr char kByNameUpdating[] = "Are updating the deviceMap ";

class DeviceCacheTest : public emf::doubles::PlatformTest {
 protected:
  DeviceCacheTest() { DeviceInfo::Destroy(); }
  ~DeviceCacheTest() override { DeviceInfo::Destroy(); }

  static DeviceInfo& cache() { return *DeviceInfo::Instance(); }
  static void network(std::vector<Json::Value> objects) {
    emf::doubles::platform().rest.devices(std::move(objects));
  }
  // Fills the cache and forgets what was recorded on the way.
  static void fill(std::vector<Json::Value> objects) {
    network(std::move(objects));
    cache().setDeviceMap();
    forget();
  }
  static void forget() {
    emf::doubles::platform().log.reset();
    emf::doubles::platform().journal.reset();
    reads_ = emf::doubles::platform().rest.deviceReads();
  }
  // Device reads since the last forget().
  static int reads() { return emf::doubles::platform().rest.deviceReads() - reads_; }

  static inline int reads_ = 0;
  const Device untouched_ = device(77, "left over", 8, 9, "left over");
  Device found_ = untouched_;
  std::list<Device> named_ = {untouched_};
};

}  // namespace emf::test
