#include <atomic>
#include <thread>

#include "device_cache_fixture.h"

namespace emf::test {
namespace {

using emf::doubles::platform;

constexpr int kThreads = 8;
constexpr int kRounds = 300;
constexpr int kDevices = 50;

class DeviceCacheThreads : public DeviceCacheTest {
 protected:
  // Every read gives the whole network in one of two generations, or nothing: an outage.
  static void changingNetwork() {
    platform().rest.duringDeviceRead([] {
      static std::atomic<int> generation{0};
      const int current = generation++;
      if (current % 5 == 4) return platform().rest.devicesFail();
      platform().rest.devices(objectsOf(current % 2));
    });
  }
  static std::vector<Json::Value> objectsOf(int generation) {
    std::vector<Json::Value> objects;
    for (int id = 2; id < 2 + kDevices; ++id) {
      objects.push_back(
          deviceObject("NE=" + std::to_string(id), nameOf(generation), generation * 65536 + id));
    }
    return objects;
  }
  static std::string nameOf(int generation) { return generation == 0 ? "even" : "odd"; }
};

// A record's fields come from one generation, and a name finds all of a generation or nothing.
bool isWhole(const Device& found) {
  return (found.mainType == 0 && found.name == "even") ||
         (found.mainType == 1 && found.name == "odd");
}

TEST_F(DeviceCacheThreads, LookupsRefreshesAndOutagesNeverShowAPart) {
  changingNetwork();
  std::atomic<int> torn{0};
  std::atomic<int> hits{0};
  std::vector<std::thread> threads;
  for (int number = 0; number < kThreads; ++number) {
    threads.emplace_back([number, &torn, &hits] {
      for (int round = 0; round < kRounds; ++round) {
        const int turn = (number + round) % 8;
        if (turn == 0) {
          cache().setDeviceMap();
        } else if (turn == 1) {
          Device found;
          cache().getDeviceByID(1000000 + round, found);
        } else if (turn == 2) {
          std::list<Device> named;
          cache().getDeviceByName(nameOf(round % 2), named);
          if (!named.empty() && named.size() != kDevices) ++torn;
        } else {
          Device found;
          const long id = 2 + round % kDevices;
          if (cache().getDeviceByID(id, found) == 1) {
            ++hits;
            if (found.id != id || !isWhole(found) || found.subType != id) ++torn;
          }
        }
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(torn, 0);
  EXPECT_GT(hits, 0);
}

TEST_F(DeviceCacheThreads, FirstUseMakesOneCache) {
  std::vector<DeviceInfo*> instances(kThreads);
  std::vector<std::thread> threads;
  for (int i = 0; i < kThreads; ++i) {
    threads.emplace_back([&instances, i] { instances[i] = DeviceInfo::Instance(); });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_THAT(instances, ::testing::Each(DeviceInfo::Instance()));
}

TEST_F(DeviceCacheThreads, ThreadsThatMissAtOnceEachRead) {
  std::atomic<int> reading{0};
  platform().rest.duringDeviceRead([&reading] {
    ++reading;
    while (reading < kThreads) std::this_thread::yield();
  });
  network({deviceObject("NE=12", "core-1")});
  std::vector<int> results(kThreads);
  std::vector<std::thread> threads;
  for (int i = 0; i < kThreads; ++i) {
    threads.emplace_back([&results, i] {
      Device found;
      results[i] = cache().getDeviceByID(12, found);
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(platform().rest.deviceReads(), kThreads);
  EXPECT_THAT(results, ::testing::Each(1));
}

}  // namespace
}  // namespace emf::test
