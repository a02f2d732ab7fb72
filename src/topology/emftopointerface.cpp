#include "emftopointerface.h"

#include <json/value.h>

#include <utility>
#include <vector>

#include "emfglobal.h"
#include "orma/dao/emf_comm_db_engine.h"
#include "orma/rest/nbi_http_proxy.h"
#include "resourcenames.h"
#include "watchedcall.h"

namespace {

constexpr char kSourceName[] = "emftopointerface";

constexpr std::int64_t kSuccess = 0;
constexpr std::int64_t kReadFailed = 0x411800BA;
constexpr std::int64_t kNoSuchDevice = 0x411800CC;
constexpr std::int64_t kNoSuchNode = -1;

// 0 names nothing and 1 the management system; neither is a device.
constexpr long kFirstDeviceId = 2;

// The two blanks behind each part of a location, the last one too: meant so.
constexpr char kPartEnd[] = "  ";

CEmfCommDBEngine& engine() {
  return *CEmfCommDBEngine::Instance(CEmfCommDBEngine::GetModuleName());
}

// The text behind the first "="; empty when there is none, which no number can be read from.
std::string idText(const std::string& nativeId) {
  const std::size_t equals = nativeId.find('=');
  return equals == std::string::npos ? std::string() : nativeId.substr(equals + 1);
}

// Whether the object is a device; fills `device` if so.
bool parseDevice(const Json::Value& object, Device& device) {
  const std::string nativeId = object["nativeId"].asString();
  if (nativeId.find(',') != std::string::npos) return false;
  device.id = std::stol(idText(nativeId), nullptr, 10);
  if (device.id < kFirstDeviceId) return false;
  const auto typeId = static_cast<std::uint32_t>(object["typeId"].asInt());
  device.mainType = static_cast<std::int32_t>(typeId >> 16);
  device.subType = static_cast<std::int32_t>(typeId & 0xFFFF);
  device.ipAddress = object["ipAddress"].asString();
  device.name = ToNorthCharset(object["name"].asString().c_str());
  return true;
}

}  // namespace

std::int64_t EMFTopoI::getAllDevices(std::list<Device>& out) {
  emf::WatchedCall call("EMFTopoI::getAllDevices");
  std::vector<Json::Value> objects;
  // Meant so: a listing that fails reads as an empty one. To a host that watches it has failed.
  if (!NS_UTIL::NBIHTTPProxy::GetAllDevProperty(objects)) call.fail();
  for (Json::Value& object : objects) {
    Device device;
    if (parseDevice(object, device)) out.push_back(std::move(device));
    Json::Value().swap(object);  // freed while the processor's caches still hold it
  }
  return kSuccess;
}

std::int64_t EMFTopoI::getDevice(long id, Device& out) {
  emf::WatchedCall call("EMFTopoI::getDevice");
  const std::list<unsigned int> ids = {static_cast<unsigned int>(id)};
  std::list<stDevProperty> records;
  if (engine().GetDevProperty(ids, records) == -1) {
    EMF_TRACE(kSourceName, TaDebugWithPara(1, "[EMFTopoI::getDevice] Get device property failed."));
    return call.result(kReadFailed);
  }
  if (records.size() != 1) return call.result(kNoSuchDevice);
  stDevProperty& record = records.front();
  out.id = record.devId;
  out.mainType = record.devType;
  out.subType = record.subType;
  out.ipAddress = std::move(record.ipAddress);
  out.name = std::move(record.devName);
  return kSuccess;
}

std::int64_t EMFTopoI::getVersionOfDev(int id, std::string& out) {
  emf::WatchedCall call("EMFTopoI::getVersionOfDev");
  const int result = engine().GetDevVersionName(static_cast<unsigned int>(id), out);
  return call.result(result == -1 ? kNoSuchDevice : kSuccess);
}

std::int64_t EMFTopoI::getLocationOfDev(long id, std::string& out) {
  emf::WatchedCall call("EMFTopoI::getLocationOfDev");
  std::list<std::string> parts;
  if (engine().GetDevLocationByDevID(static_cast<unsigned int>(id), parts) == -1) {
    return call.result(kNoSuchDevice);
  }
  std::string location;
  for (const std::string& part : parts) location.append(part).append(kPartEnd);
  out = std::move(location);
  return kSuccess;
}

std::int64_t EMFTopoI::getDeviceIDbyNodeID(const std::string& nodeId, long& out) {
  emf::WatchedCall call("EMFTopoI::getDeviceIDbyNodeID");
  std::list<NodeStruct> nodes;
  if (engine().GetBaseNode(TOPO_QUERY_BY_NODE, nodeId, nodes) < 1 || nodes.empty()) {
    return call.result(kNoSuchNode);
  }
  out = nodes.front().devId;
  return kSuccess;
}
