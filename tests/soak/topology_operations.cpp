// Devices, from the listing, the cache and the database.
#include <algorithm>
#include <iterator>
#include <list>

#include "deviceinfo.h"
#include "emftopointerface.h"
#include "operation.h"

namespace soak {

namespace {

constexpr std::int64_t kNoSuchDevice = 0x411800CC;
constexpr long kUnknownDevice = 90'000'000;

Verdict getAllDevices(Context& context) {
  std::list<Device> devices;
  Expected expected(0, context.network.devices);
  expected.orElse("result 0", Part::kNothing).orSpoilt(Part::kBeginning);
  return context.check([&] { return EMFTopoI::getAllDevices(devices); },
                       [&] { return rowsOf(devices); }, expected);
}

Verdict getDevice(Context& context) {
  if (context.oneIn(20)) {
    Device device;
    const std::string untouched = rowOf(device);
    return context.check([&] { return EMFTopoI::getDevice(kUnknownDevice, device); },
                         [&] { return Rows{rowOf(device)}; },
                         Expected(kNoSuchDevice, Rows{untouched}));
  }
  const Element& element = context.pick(context.network.elements);
  Device device;
  return context.check([&] { return EMFTopoI::getDevice(element.id, device); },
                       [&] { return Rows{rowOf(device)}; }, Expected(0, Rows{element.device}));
}

Verdict getVersionOfDev(Context& context) {
  const Element& element = context.pick(context.network.elements);
  std::string version;
  return context.check(
      [&] { return EMFTopoI::getVersionOfDev(static_cast<int>(element.id), version); },
      [&] { return Rows{version}; }, Expected(0, Rows{element.version}));
}

Verdict getLocationOfDev(Context& context) {
  const Element& element = context.pick(context.network.elements);
  std::string location;
  return context.check([&] { return EMFTopoI::getLocationOfDev(element.id, location); },
                       [&] { return Rows{location}; }, Expected(0, Rows{element.location}));
}

Verdict getDeviceIdByNodeId(Context& context) {
  const Element& element = context.pick(context.network.elements);
  const bool unknown = context.oneIn(20);
  long id = 0;
  return context.check(
      [&] { return EMFTopoI::getDeviceIDbyNodeID(unknown ? "none" : element.nodeId, id); },
      [&] { return Rows{std::to_string(id)}; },
      Expected(unknown ? -1 : 0, Rows{std::to_string(unknown ? 0 : element.id)}));
}

// The cache is empty once a listing has failed: what is looked for next has it read anew.
Verdict cacheGetDeviceById(Context& context) {
  const Element& element = context.pick(context.network.elements);
  std::list<Device> found;
  Expected expected(1, Rows{element.device});
  expected.orElse("result 0", Part::kNothing).orSpoilt(Part::kNothing);
  const auto call = [&] {
    Device device;
    const int result = DeviceInfo::Instance()->getDeviceByID(element.id, device);
    if (result == 1) found.push_back(device);
    return result;
  };
  return context.check(
      call, [&] { return rowsOf(found); }, expected);
}

// Reads every device in vain.
Verdict cacheGetUnknownDevice(Context& context) {
  Device device;
  Expected expected(0, Rows{rowOf(device)});
  expected.orSpoilt(Part::kBeginning);
  return context.check(
      [&] { return DeviceInfo::getInstance()->getDeviceByID(kUnknownDevice, device); },
      [&] { return Rows{rowOf(device)}; }, expected);
}

Verdict cacheGetDeviceByName(Context& context) {
  const Element& element = context.pick(context.network.elements);
  Rows namesakes;
  for (const Element& other : context.network.elements) {
    if (other.name == element.name) namesakes.push_back(other.device);
  }
  std::list<Device> found;
  Expected expected(1, std::move(namesakes));
  expected.orElse("result 0", Part::kNothing).orSpoilt(Part::kNothing);
  return context.check([&] { return DeviceInfo::Instance()->getDeviceByName(element.name, found); },
                       [&] { return rowsOf(found); }, expected);
}

Verdict cacheSetDeviceMap(Context& context) {
  Expected expected(1, Rows{});
  expected.orSpoilt(Part::kNothing);
  return context.check([] { return DeviceInfo::Instance()->setDeviceMap(); }, [] { return Rows{}; },
                       expected);
}

// A subnet whose parent a refresh did not get is at the top of its chain; without subnets there is
// no name.
Verdict getSubmapName(Context& context) {
  const Element& element = context.pick(context.network.elements);
  std::string name;
  EMFTopoI::getSubmapName(name, static_cast<unsigned long>(element.id));
  const std::string& whole = element.subnetName;
  if (name == whole) return {};
  const bool isEnd = name.size() < whole.size() &&
                     whole.compare(whole.size() - name.size(), name.size(), name) == 0;
  if (name.empty() || (isEnd && whole[whole.size() - name.size() - 1] == '/')) {
    return {Verdict::kFailed, ""};
  }
  return wrong("device " + std::to_string(element.id) + ": expected \"" + whole +
               "\" or its end, got \"" + name + "\"");
}

}  // namespace

void addTopologyOperations(std::vector<Operation>& all) {
  all.insert(all.end(), {{"EMFTopoI::getAllDevices", 1, getAllDevices},
                         {"EMFTopoI::getDevice", 20, getDevice},
                         {"EMFTopoI::getVersionOfDev", 10, getVersionOfDev},
                         {"EMFTopoI::getLocationOfDev", 10, getLocationOfDev},
                         {"EMFTopoI::getDeviceIDbyNodeID", 10, getDeviceIdByNodeId},
                         {"EMFTopoI::getSubmapName", 20, getSubmapName},
                         {"DeviceInfo::getDeviceByID", 20, cacheGetDeviceById},
                         {"DeviceInfo::getDeviceByID (none)", 1, cacheGetUnknownDevice},
                         {"DeviceInfo::getDeviceByName", 3, cacheGetDeviceByName},
                         {"DeviceInfo::setDeviceMap", 1, cacheSetDeviceMap}});
}

}  // namespace soak
