#include "deviceinfo.h"

#include <utility>

#include "emfglobal.h"
#include "emftopointerface.h"
#include "rwlockguard.h"
#include "singleton.h"
#include "watchedcall.h"

namespace {

constexpr char kSourceName[] = "deviceinfo";
constexpr int kLevel = 3;

// Texts as objects, and names as well: the log object takes references, and a message above the
// threshold then costs no allocation.
const std::string kSource = kSourceName;
const std::string kFunction = emf::kUnknownFunction;
const std::string kSetEntering = "DeviceInfo:: setDeviceMap entering!";
const std::string kSetOuting = "DeviceInfo:: setDeviceMap outing!";
const std::string kSetFailed =
    "EMFTopoI::getAllDevices( lstDev)) occur error when get device list!";
const std::string kByIdEntering = "DeviceInfo:: getDeviceByID entering!";
const std::string kByIdOuting = "DeviceInfo:: getDeviceByID outing!";
const std::string kByIdUpdating = "Updating the deviceMap ";
const std::string kByNameUpdating = "Are updating the deviceMap ";

void logText(const std::string& text, int line) {
  if (NS_LOG_SERVICE1::LogObject* log = GetEmfLog()) {
    log->LogText(kSource, kFunction, line, kLevel, text);
  }
}

}  // namespace

DeviceInfo* DeviceInfo::m_pInstance = nullptr;

DeviceInfo::DeviceInfo() = default;

DeviceInfo::~DeviceInfo() = default;

DeviceInfo* DeviceInfo::Instance() {
  return emf::singletonInstance(m_pInstance, [] { return new DeviceInfo; });
}

DeviceInfo* DeviceInfo::getInstance() { return Instance(); }

void DeviceInfo::Destroy() {
  emf::destroySingleton(m_pInstance, [](DeviceInfo* instance) { delete instance; });
}

int DeviceInfo::setDeviceMap() {
  emf::WatchedCall call("DeviceInfo::setDeviceMap");
  logText(kSetEntering, __LINE__);
  std::list<Device> devices;
  if (EMFTopoI::getAllDevices(devices) != 0) {
    call.fail();
    logText(kSetFailed, __LINE__);
    return 0;
  }
  // Built beside the old map and swapped in, so that readers wait for two pointers, not for a
  // hundred thousand records. The first record with an id wins.
  std::map<long, Device> fresh;
  for (Device& device : devices) {
    const long id = device.id;
    fresh.emplace_hint(fresh.end(), id, std::move(device));
  }
  const std::size_t entries = fresh.size();
  {
    emf::WriteGuard guard(rwLock);
    deviceMap.swap(fresh);
  }
  emf::tellCacheFilled("devices", entries);
  logText(kSetOuting, __LINE__);
  return 1;
}

bool DeviceInfo::findById(long id, Device& out) {
  emf::ReadGuard guard(rwLock);
  const auto entry = deviceMap.find(id);
  if (entry == deviceMap.end()) return false;
  out = entry->second;
  return true;
}

int DeviceInfo::getDeviceByID(long id, Device& out) {
  const emf::WatchedCall call("DeviceInfo::getDeviceByID");
  logText(kByIdEntering, __LINE__);
  bool found = findById(id, out);
  if (!found) {
    setDeviceMap();
    // Meant so: the message comes after the refresh.
    logText(kByIdUpdating, __LINE__);
    found = findById(id, out);
  }
  logText(kByIdOuting, __LINE__);
  return found ? 1 : 0;
}

void DeviceInfo::findByName(const std::string& name, std::list<Device>& out) {
  emf::ReadGuard guard(rwLock);
  for (const auto& entry : deviceMap) {
    if (entry.second.name.compare(name.c_str()) == 0) out.push_back(entry.second);
  }
}

// No entering or outing message here, unlike the lookup by id: meant so.
int DeviceInfo::getDeviceByName(const std::string& name, std::list<Device>& out) {
  const emf::WatchedCall call("DeviceInfo::getDeviceByName");
  out.clear();
  findByName(name, out);
  if (out.empty()) {
    setDeviceMap();
    logText(kByNameUpdating, __LINE__);
    findByName(name, out);
  }
  return out.empty() ? 0 : 1;
}
