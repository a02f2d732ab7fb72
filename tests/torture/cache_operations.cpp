// DeviceInfo and the other singletons.
#include "device_objects.h"
#include "deviceinfo.h"
#include "operation.h"
#include "platform.h"
#include "transmitassistant.h"

namespace emf::torture {
namespace {

using doubles::platform;

const std::string kOldName = "an old name that takes memory of its own";
const std::string kNewName = "a new name that takes memory of its own";

void deviceNamed(const std::string& name) {
  platform().rest.devices({test::deviceObject("NE=2", name), test::deviceObject("NE=3", name)});
}

void scriptEmptyCache() {
  deviceNamed(kNewName);
  DeviceInfo::Instance();
}

void scriptFullCache() {
  deviceNamed(kOldName);
  DeviceInfo::Instance()->setDeviceMap();
  deviceNamed(kNewName);
}

const Device kLeftOver = test::device(77, "left over", 8, 9, "left over");
const std::list<Device> kDevices = {test::device(2, kNewName), test::device(3, kNewName)};
const std::list<Device> kOldDevices = {test::device(2, kOldName), test::device(3, kOldName)};

// What the cache holds behind a refresh: the old network or the new one, and no half of either.
Outcome refresh(const Fault& fault) {
  scriptFullCache();
  DeviceInfo& cache = *DeviceInfo::Instance();
  Outcome outcome;
  outcome.result = resultOf(fault, outcome.struck, [&cache] { return cache.setDeviceMap(); });
  platform().rest.devicesFail();
  // Of an empty cache the second look-up finds nothing, too.
  for (const long id : {2L, 3L}) {
    Device device;
    if (cache.getDeviceByID(id, device) == 1) outcome.records.push_back(textOf(device));
  }
  return outcome;
}

template <class Singleton>
Operation made(const char* name, Singleton* (*instance)()) {
  return {name,
          calling(scriptNothing, [instance] { return instance() != nullptr ? 1 : 0; }),
          {"1", {}, {}},
          Left::kStart,
          {{"mutex", {"0"}}}};
}

template <class Singleton>
Operation destroyed(const char* name) {
  return {
      name, calling([] { Singleton::Instance(); }, [] { Singleton::Destroy(); }), {"done", {}, {}}};
}

}  // namespace

const std::vector<Operation>& cacheOperations() {
  static const std::vector<Operation> rows = {
      {"DeviceInfo::getDeviceByID",
       calling(scriptEmptyCache, kLeftOver,
               [](auto& out) { return DeviceInfo::Instance()->getDeviceByID(3, out); }),
       {"1", textsOf(kDevices.back()), {}},
       Left::kAnything,
       {{"device listing", {"0", kNoMemory}}}},
      {"DeviceInfo::getDeviceByID of a full cache",
       calling(scriptFullCache, kLeftOver,
               [](auto& out) { return DeviceInfo::Instance()->getDeviceByID(3, out); }),
       {"1", textsOf(kOldDevices.back()), {}},
       Left::kAnything},
      {"DeviceInfo::getDeviceByName",
       calling(scriptEmptyCache, std::list<Device>{kLeftOver},
               [](auto& out) { return DeviceInfo::Instance()->getDeviceByName(kNewName, out); }),
       {"1", textsOf(kDevices), {}},
       Left::kStart,
       {{"device listing", {"0", kNoMemory}}}},
      {"DeviceInfo::setDeviceMap",
       refresh,
       {"1", textsOf(kDevices), {}},
       Left::kWhole,
       {{"device listing", {"1", kNoMemory}}},
       {},
       {{textOf(kDevices.front()), textsOf(kOldDevices.front())},
        {textOf(kDevices.back()), textsOf(kOldDevices.back())}}},
      made("DeviceInfo::Instance", DeviceInfo::Instance),
      made("DeviceInfo::getInstance", DeviceInfo::getInstance),
      destroyed<DeviceInfo>("DeviceInfo::Destroy"),
      made("TransmitAssistant::Instance", TransmitAssistant::Instance),
      made("TransmitAssistant::getInstance", TransmitAssistant::getInstance),
      destroyed<TransmitAssistant>("TransmitAssistant::Destroy"),
  };
  return rows;
}

}  // namespace emf::torture
