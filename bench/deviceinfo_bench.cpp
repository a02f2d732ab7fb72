// A hit in the device cache, with the log service loaded at its default threshold, against the
// least that such a lookup can do: a find in a std::map and a copy under a std::shared_mutex.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <list>
#include <map>
#include <mutex>
#include <shared_mutex>
#include <stdexcept>

#include "deviceinfo.h"
#include "emftopointerface.h"
#include "orma/bundle/bundle_mgr.h"
#include "orma/bundle/configuration.h"
#include "paired.h"
#include "simulated_network.h"

namespace {

constexpr int kDevices = 10000;
constexpr long kFirstId = 2;
constexpr int kLookupsOfATurn = 10000;

// Ids of the network in an order that no cache of the processor foresees.
class Ids {
 public:
  long next() {
    state_ = state_ * 6364136223846793005U + 1442695040888963407U;
    return kFirstId + static_cast<long>((state_ >> 33) % kDevices);
  }

 private:
  std::uint64_t state_ = 1;
};

class PlainCache {
 public:
  explicit PlainCache(const std::list<Device>& devices) {
    for (const Device& device : devices) devices_.emplace(device.id, device);
  }

  bool find(long id, Device& out) const {
    const std::shared_lock<std::shared_mutex> lock(mutex_);
    const auto entry = devices_.find(id);
    if (entry == devices_.end()) return false;
    out = entry->second;
    return true;
  }

 private:
  mutable std::shared_mutex mutex_;
  std::map<long, Device> devices_;
};

// Both caches, filled from one network. The services stay loaded until the program ends, as in an
// agent; the network is needed no more once the caches are full.
struct Caches {
  Caches() : plain(fill()) {}

  static Caches& instance() {
    static Caches caches;
    return caches;
  }

  PlainCache plain;

 private:
  static PlainCache fill() {
    const SimulatedNetwork network(kDevices);
    const auto report =
        NS_BUNDLEMGR1::BundleMgr::Instance()->Start(*orma::Configuration::current());
    if (!report.failures.empty()) throw std::runtime_error(report.failures.front().reason);
    std::list<Device> devices;
    EMFTopoI::getAllDevices(devices);
    if (devices.size() != kDevices || DeviceInfo::Instance()->setDeviceMap() != 1) {
      throw std::runtime_error("the network could not be read");
    }
    return PlainCache(devices);
  }
};

void lookUp(Ids& ids, Device& device) {
  benchmark::DoNotOptimize(DeviceInfo::Instance()->getDeviceByID(ids.next(), device));
}

void lookUpPlain(Ids& ids, Device& device) {
  benchmark::DoNotOptimize(Caches::instance().plain.find(ids.next(), device));
}

// The figure to hold: `ratio`, ours to plain, over turns of many lookups.
void cacheHitAgainstMap(benchmark::State& state) {
  Caches::instance();
  Ids ids;
  Ids plainIds;
  Device device;
  comparePaired(
      state,
      [&] {
        for (int i = 0; i < kLookupsOfATurn; ++i) lookUp(ids, device);
      },
      [&] {
        for (int i = 0; i < kLookupsOfATurn; ++i) lookUpPlain(plainIds, device);
      });
}
BENCHMARK(cacheHitAgainstMap)->UseManualTime()->Unit(benchmark::kMicrosecond);

void cacheHit(benchmark::State& state) {
  Caches::instance();
  Ids ids;
  Device device;
  for (auto _ : state) lookUp(ids, device);
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(cacheHit)->ThreadRange(1, 2)->UseRealTime();

void mapHit(benchmark::State& state) {
  Caches::instance();
  Ids ids;
  Device device;
  for (auto _ : state) lookUpPlain(ids, device);
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(mapHit)->ThreadRange(1, 2)->UseRealTime();

}  // namespace
