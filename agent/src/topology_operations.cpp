#include <list>
#include <string>

#include "deviceinfo.h"
#include "emftopointerface.h"
#include "operations.h"

namespace ormaagent {

namespace {

constexpr Column<Device> kDevice[] = {
    {"id", [](const Device& device) -> Value { return device.id; }},
    {"mainType", [](const Device& device) -> Value { return std::int64_t{device.mainType}; }},
    {"subType", [](const Device& device) -> Value { return std::int64_t{device.subType}; }},
    {"ipAddress", [](const Device& device) -> Value { return device.ipAddress; }},
    {"name", [](const Device& device) -> Value { return device.name; }},
};

// What the operations with one output of their own hand out, beside what was asked.
struct DeviceText {
  std::int64_t id;
  std::string text;
};

constexpr Column<DeviceText> kVersion[] = {
    {"id", [](const DeviceText& row) -> Value { return row.id; }},
    {"version", [](const DeviceText& row) -> Value { return row.text; }},
};

constexpr Column<DeviceText> kLocation[] = {
    {"id", [](const DeviceText& row) -> Value { return row.id; }},
    {"location", [](const DeviceText& row) -> Value { return row.text; }},
};

struct NodeDevice {
  std::string nodeId;
  std::int64_t id;
};

constexpr Column<NodeDevice> kNodeDevice[] = {
    {"nodeId", [](const NodeDevice& row) -> Value { return row.nodeId; }},
    {"id", [](const NodeDevice& row) -> Value { return row.id; }},
};

template <class Record>
std::list<Record> oneIf(bool present, Record record) {
  return present ? std::list<Record>{std::move(record)} : std::list<Record>{};
}

}  // namespace

Answer topoDevices(const Arguments&) {
  std::list<Device> devices;
  const std::int64_t result = EMFTopoI::getAllDevices(devices);
  return answerOf(result, kDevice, devices);
}

Answer topoDevice(const Arguments& arguments) {
  Device device;
  const std::int64_t result = EMFTopoI::getDevice(arguments.number<long>(0), device);
  return answerOf(result, kDevice, oneIf(result == 0, device));
}

Answer topoVersion(const Arguments& arguments) {
  const int id = arguments.number<int>(0);
  std::string version;
  const std::int64_t result = EMFTopoI::getVersionOfDev(id, version);
  return answerOf(result, kVersion, oneIf(result == 0, DeviceText{id, version}));
}

Answer topoLocation(const Arguments& arguments) {
  const long id = arguments.number<long>(0);
  std::string location;
  const std::int64_t result = EMFTopoI::getLocationOfDev(id, location);
  return answerOf(result, kLocation, oneIf(result == 0, DeviceText{id, location}));
}

Answer topoDeviceOfNode(const Arguments& arguments) {
  long id = 0;
  const std::int64_t result = EMFTopoI::getDeviceIDbyNodeID(arguments.text(0), id);
  return answerOf(result, kNodeDevice, oneIf(result == 0, NodeDevice{arguments.text(0), id}));
}

Answer cacheDevice(const Arguments& arguments) {
  Device device;
  const int result = DeviceInfo::Instance()->getDeviceByID(arguments.number<long>(0), device);
  return answerOf(result, kDevice, oneIf(result == 1, device));
}

Answer cacheName(const Arguments& arguments) {
  std::list<Device> devices;
  const int result = DeviceInfo::Instance()->getDeviceByName(arguments.text(0), devices);
  return answerOf(result, kDevice, devices);
}

}  // namespace ormaagent
